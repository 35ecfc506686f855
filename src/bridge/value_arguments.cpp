#include "bridge/value_arguments.h"

#include <locale>
#include <sstream>

#include "bridge/entry_guard.h"
#include "bridge/host_ids.h"
#include "bridge/ruby_value.h"

using CorvaneCore::Vector;

namespace {

VALUE bignumToFloat(VALUE value) { return DBL2NUM(rb_big2dbl(value)); }

}  // namespace

// A bignum beyond a double's range warns, and a warning runs Ruby code, which may raise or jump.
bool numberOf(VALUE value, float& out) {
    if (FIXNUM_P(value) || RB_FLOAT_TYPE_P(value)) {
        out = static_cast<float>(NUM2DBL(value));
        return true;
    }
    if (!RB_TYPE_P(value, T_BIGNUM)) return false;
    const VALUE converted = callRaising(bignumToFloat, value);
    if (NIL_P(converted)) return false;
    out = static_cast<float>(RFLOAT_VALUE(converted));
    return true;
}

bool fixnumOrFloatOf(VALUE value, float& out) {
    return !RB_TYPE_P(value, T_BIGNUM) && numberOf(value, out);
}

bool coordinatesOf(VALUE value, Vector& out) {
    float xyz[3];
    for (int i = 0; i < 3; ++i) {
        RubyValueHolder item;
        protectedCall(item, value, hostMethod(kIndex), INT2FIX(i));
        if (!numberOf(item.get(), xyz[i])) return false;
    }
    out = Vector(xyz[0], xyz[1], xyz[2]);
    return true;
}

bool numbersOf(VALUE array, long count, float* out) {
    if (!RB_TYPE_P(array, T_ARRAY) || RARRAY_LEN(array) < count) return false;
    for (long i = 0; i < count; ++i) {
        if (!numberOf(RARRAY_AREF(array, i), out[i])) return false;
    }
    return true;
}

std::string numbersText(std::initializer_list<float> values, const char* separator) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    const char* between = "";
    for (float v : values) {
        out << between << v;
        between = separator;
    }
    return out.str();
}

VALUE floatArray(std::initializer_list<float> values) {
    const VALUE array = rb_ary_new_capa(static_cast<long>(values.size()));
    for (float v : values) rb_ary_push(array, DBL2NUM(v));
    return array;
}

VALUE textValue(const std::string& utf8) {
    VALUE out = Qnil;
    narrowToRuby(utf8, out);
    return out;
}
