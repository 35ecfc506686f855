#include "bridge/ruby_archive.h"

#include <string>

namespace {

struct CopyJob {
    VALUE array;
    std::string* bytes;
};

// Runs under rb_protect: rb_num2ulong raises for a non-number, so this frame holds no object
// with a destructor. The length is read on every step, since a conversion may run Ruby code.
VALUE copyElements(VALUE data) {
    auto* job = reinterpret_cast<CopyJob*>(data);
    for (long i = 0; i < RARRAY_LEN(job->array); ++i) {
        const VALUE element = RARRAY_AREF(job->array, i);
        const unsigned long value =
            FIXNUM_P(element) ? static_cast<unsigned long>(FIX2LONG(element)) : rb_num2ulong(element);
        job->bytes->push_back(static_cast<char>(value & 0xFF));
    }
    return Qnil;
}

}  // namespace

bool RubyArrayToArchive(VALUE value, CorvaneCore::QuickArchive& archive) {
    if (!isClass(value, rb_cArray)) return false;
    const long length = RARRAY_LEN(value);
    if (length == 0) return false;
    std::string bytes;
    bytes.reserve(static_cast<size_t>(length));
    CopyJob job{value, &bytes};
    callRaising(copyElements, reinterpret_cast<VALUE>(&job));
    RB_GC_GUARD(value);
    if (hasPendingException()) return false;
    archive.writeBytes(bytes.data(), bytes.size());
    return true;
}

bool ArchiveToRubyArray(CorvaneCore::QuickArchive& archive, VALUE& out) {
    const uint32_t n = static_cast<uint32_t>(archive.blockCount() * CorvaneCore::QuickArchive::kBlockSize);
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
