#include "bridge/ruby_archive.h"

namespace {

struct CopyJob {
    VALUE array;
    VALUE bytes;  // a String the copy grows as the array grows
};

// Runs under rb_protect, and its frame holds no object with a destructor: rb_num2ulong raises
// for a non-number, and growing the String may raise NoMemoryError. Fixnums, the usual case,
// are copied in a tight loop over the array's memory; any other element goes through
// rb_num2ulong, which may run Ruby code that changes the array, so its length and memory are
// fetched again after each such element.
VALUE copyElements(VALUE data) {
    auto* job = reinterpret_cast<CopyJob*>(data);
    long i = 0;
    for (;;) {
        const long length = RARRAY_LEN(job->array);
        if (i >= length) break;
        if (RSTRING_LEN(job->bytes) < length) rb_str_resize(job->bytes, length);
        const VALUE* elements = RARRAY_CONST_PTR(job->array);
        char* out = RSTRING_PTR(job->bytes);
        while (i < length && FIXNUM_P(elements[i])) {
            out[i] = static_cast<char>(FIX2LONG(elements[i]) & 0xFF);
            ++i;
        }
        if (i < length) {
            const unsigned long value = rb_num2ulong(elements[i]);
            RSTRING_PTR(job->bytes)[i] = static_cast<char>(value & 0xFF);
            ++i;
        }
    }
    rb_str_set_len(job->bytes, i);
    return Qtrue;
}

}  // namespace

VALUE RubyArrayToBytes(VALUE value) {
    if (!isClass(value, rb_cArray)) return Qnil;
    const long length = RARRAY_LEN(value);
    if (length == 0) return Qnil;
    CopyJob job{value, rb_str_new(nullptr, length)};
    const VALUE copied = callRaising(copyElements, reinterpret_cast<VALUE>(&job));
    RB_GC_GUARD(value);
    RB_GC_GUARD(job.bytes);
    return copied == Qtrue ? job.bytes : Qnil;
}

bool RubyArrayToArchive(VALUE value, CorvaneCore::QuickArchive& archive) {
    VALUE bytes = RubyArrayToBytes(value);
    if (NIL_P(bytes)) return false;
    archive.writeBytes(RSTRING_PTR(bytes), static_cast<size_t>(RSTRING_LEN(bytes)));
    RB_GC_GUARD(bytes);
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
