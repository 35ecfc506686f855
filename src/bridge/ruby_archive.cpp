#include "bridge/ruby_archive.h"

#include <new>
#include <string>

namespace {

struct CopyJob {
    VALUE array;
    std::string* bytes;
    bool outOfMemory;
};

// Grows the byte buffer without letting a C++ exception unwind through Ruby's frames.
bool growTo(std::string& bytes, long length) {
    if (bytes.size() >= static_cast<size_t>(length)) return true;
    try {
        bytes.resize(static_cast<size_t>(length));
        return true;
    } catch (...) {
        return false;
    }
}

// Runs under rb_protect: rb_num2ulong raises for a non-number, so this frame holds no object
// with a destructor. Fixnums, the usual case, are copied in a tight loop over the array's
// memory; any other element goes through rb_num2ulong, which may run Ruby code that changes
// the array, so its length and memory are fetched again after each such element.
VALUE copyElements(VALUE data) {
    auto* job = reinterpret_cast<CopyJob*>(data);
    std::string& bytes = *job->bytes;
    long i = 0;
    for (;;) {
        const long length = RARRAY_LEN(job->array);
        if (i >= length) break;
        if (!growTo(bytes, length)) {
            job->outOfMemory = true;
            return Qnil;
        }
        const VALUE* elements = RARRAY_CONST_PTR(job->array);
        char* out = &bytes[0];
        while (i < length && FIXNUM_P(elements[i])) {
            out[i] = static_cast<char>(FIX2LONG(elements[i]) & 0xFF);
            ++i;
        }
        if (i < length) {
            const unsigned long value = rb_num2ulong(elements[i]);
            bytes[static_cast<size_t>(i)] = static_cast<char>(value & 0xFF);
            ++i;
        }
    }
    bytes.resize(static_cast<size_t>(i));  // shrinking never allocates
    return Qnil;
}

}  // namespace

bool RubyArrayToArchive(VALUE value, CorvaneCore::QuickArchive& archive) {
    if (!isClass(value, rb_cArray)) return false;
    const long length = RARRAY_LEN(value);
    if (length == 0) return false;
    std::string bytes;
    bytes.reserve(static_cast<size_t>(length));
    CopyJob job{value, &bytes, false};
    callRaising(copyElements, reinterpret_cast<VALUE>(&job));
    RB_GC_GUARD(value);
    if (hasPendingException()) return false;
    if (job.outOfMemory) throw std::bad_alloc();
    archive.writeBytes(bytes.data(), bytes.size());
    return true;
}

bool ArchiveToRubyArray(CorvaneCore::QuickArchive& archive, VALUE& out) {
    const uint32_t n =
        static_cast<uint32_t>(archive.blockCount() * CorvaneCore::QuickArchive::kBlockSize);
    if (n == 0) return false;
    out = rb_ary_new_capa(n);
    for (uint32_t i = 0; i < n; ++i) {
        unsigned char byte = 0;
        archive.readBytes(&byte, 1);
        rb_ary_push(out, INT2FIX(byte));
    }
    return true;
}

bool ArchiveToRubyArray(CorvaneCore::QuickArchive& archive, RubyValueHolder& out) {
    out.reset();
    VALUE array = Qnil;
    if (!ArchiveToRubyArray(archive, array)) return false;
    out = array;
    return true;
}
