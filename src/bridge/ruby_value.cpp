#include "bridge/ruby_value.h"

#include <ruby/encoding.h>

#include <cmath>
#include <limits>

#include "xml/text.h"

namespace {

VALUE g_keepAlive = Qnil;

void ensureKeepAlive() {
    if (!NIL_P(g_keepAlive)) return;
    // Registering allocates and may collect: the address is registered before the array exists.
    rb_gc_register_address(&g_keepAlive);
    g_keepAlive = rb_ary_new();
}

}  // namespace

// ---------------------------------------------------------------- pinning

void protectValue(VALUE value) {
    if (!RTEST(value)) return;
    ensureKeepAlive();
    rb_ary_push(g_keepAlive, value);
}

void unprotectValue(VALUE value) {
    if (!RTEST(value) || NIL_P(g_keepAlive)) return;
    // Searching from the end finds the usual short-lived value at once.
    for (long i = RARRAY_LEN(g_keepAlive) - 1; i >= 0; --i) {
        if (RARRAY_AREF(g_keepAlive, i) == value) {
            rb_ary_delete_at(g_keepAlive, i);
            return;
        }
    }
}

long keepAliveCount() { return NIL_P(g_keepAlive) ? 0 : RARRAY_LEN(g_keepAlive); }

RubyValueHolder::RubyValueHolder(VALUE value) : value_(value) { protectValue(value_); }

RubyValueHolder::RubyValueHolder(const RubyValueHolder& other) : value_(other.value_) {
    protectValue(value_);
}

RubyValueHolder& RubyValueHolder::operator=(const RubyValueHolder& other) {
    return *this = other.value_;
}

RubyValueHolder& RubyValueHolder::operator=(VALUE value) {
    if (value == value_) return *this;
    protectValue(value);
    unprotectValue(value_);
    value_ = value;
    return *this;
}

RubyValueHolder::~RubyValueHolder() { reset(); }

void RubyValueHolder::reset() {
    if (NIL_P(value_)) return;
    unprotectValue(value_);
    value_ = Qnil;
}

VALUE RubyValueHolder::release() {
    const VALUE value = value_;
    reset();
    return value;
}

// ---------------------------------------------------------------- classes and numbers

VALUE classOf(VALUE value) {
    // Immediates are answered without touching memory.
    if (FIXNUM_P(value)) return rb_cInteger;
    if (FLONUM_P(value)) return rb_cFloat;
    if (value == Qtrue) return rb_cTrueClass;
    if (value == Qfalse) return rb_cFalseClass;
    if (NIL_P(value)) return rb_cNilClass;
    if (STATIC_SYM_P(value)) return rb_cSymbol;
    return rb_obj_class(value);
}

bool isClass(VALUE value, VALUE klass) { return classOf(value) == klass; }

namespace {

VALUE num2long(VALUE v) { return LONG2NUM(rb_num2long(v)); }
VALUE num2ulong(VALUE v) { return ULONG2NUM(rb_num2ulong(v)); }
VALUE num2ll(VALUE v) { return LL2NUM(rb_num2ll(v)); }
VALUE num2ull(VALUE v) { return ULL2NUM(rb_num2ull(v)); }

bool isInteger(VALUE v) { return RTEST(rb_obj_is_kind_of(v, rb_cInteger)); }

template <class T>
bool integerVia(VALUE value, T& out, VALUE (*convert)(VALUE), T (*unwrap)(VALUE)) {
    if (!isInteger(value)) return false;
    if (FIXNUM_P(value)) {
        out = static_cast<T>(FIX2LONG(value));
        return true;
    }
    const VALUE converted = callRaising(convert, value);
    if (NIL_P(converted)) return false;  // it raised: the entry call has the error
    out = unwrap(converted);
    return true;
}

long unwrapLong(VALUE v) { return NUM2LONG(v); }
unsigned long unwrapULong(VALUE v) { return NUM2ULONG(v); }
long long unwrapLL(VALUE v) { return NUM2LL(v); }
unsigned long long unwrapULL(VALUE v) { return NUM2ULL(v); }

}  // namespace

bool toDouble(VALUE value, double& out) {
    if (!RTEST(rb_obj_is_kind_of(value, rb_cFloat))) return false;
    out = rb_num2dbl(value);  // a Float never raises here
    return true;
}

bool toFloat(VALUE value, float& out) {
    double d = 0.0;
    if (!toDouble(value, d)) return false;
    out = static_cast<float>(d);
    return true;
}

bool toLong(VALUE value, long& out) { return integerVia<long>(value, out, num2long, unwrapLong); }

bool toULong(VALUE value, unsigned long& out) {
    return integerVia<unsigned long>(value, out, num2ulong, unwrapULong);
}

bool toInt(VALUE value, int& out) {
    long l = 0;
    if (!toLong(value, l)) return false;
    out = static_cast<int>(l);
    return true;
}

bool toUInt(VALUE value, unsigned int& out) {
    unsigned long l = 0;
    if (!toULong(value, l)) return false;
    out = static_cast<unsigned int>(l);
    return true;
}

bool toLongLong(VALUE value, long long& out) {
    return integerVia<long long>(value, out, num2ll, unwrapLL);
}

bool toULongLong(VALUE value, unsigned long long& out) {
    return integerVia<unsigned long long>(value, out, num2ull, unwrapULL);
}

bool toBool(VALUE value, bool& out) {
    if (value == Qtrue) {
        out = true;
        return true;
    }
    if (value == Qfalse) {
        out = false;
        return true;
    }
    return false;
}

// ---------------------------------------------------------------- text

namespace {

VALUE stringValue(VALUE value) { return rb_string_value(&value); }

VALUE utf8String(const std::string& bytes) {
    return rb_enc_str_new(bytes.empty() ? "" : bytes.data(), static_cast<long>(bytes.size()),
                          rb_utf8_encoding());
}

}  // namespace

bool rubyToWide(VALUE value, std::u16string& out) {
    out.clear();
    if (NIL_P(value)) return false;
    VALUE str = callRaising(stringValue, value);
    if (NIL_P(str)) return false;
    if (!isClass(value, rb_cString)) return false;
    out = CorvaneCore::utf8ToWide(RSTRING_PTR(str), static_cast<size_t>(RSTRING_LEN(str)));
    RB_GC_GUARD(str);
    return true;
}

bool narrowToRuby(const std::string& text, VALUE& out) {
    out = utf8String(text);
    return true;
}

bool narrowToRuby(const std::string& text, RubyValueHolder& out) {
    out = utf8String(text);
    return true;
}

bool wideToRuby(const std::u16string& text, VALUE& out) {
    return narrowToRuby(CorvaneCore::wideToUtf8(text), out);
}

bool wideToRuby(const std::u16string& text, RubyValueHolder& out) {
    return narrowToRuby(CorvaneCore::wideToUtf8(text), out);
}

namespace {

long long colorChannel(float value) {
    const double scaled = static_cast<double>(value) * 255.0;
    if (std::isnan(scaled)) return 0;
    double f = std::floor(scaled);
    if (scaled - f >= 0.5) f += 1.0;
    // 2^63 is exact in a double; everything from there on is beyond the range.
    constexpr double kLimit = 9223372036854775808.0;
    if (f >= kLimit) return std::numeric_limits<long long>::max();
    if (f < -kLimit) return std::numeric_limits<long long>::min();
    return static_cast<long long>(f);
}

}  // namespace

bool colorToRuby(const CorvaneCore::Color& color, VALUE& out) {
    out = rb_ary_new_capa(3);
    rb_ary_push(out, LL2NUM(colorChannel(color.r)));
    rb_ary_push(out, LL2NUM(colorChannel(color.g)));
    rb_ary_push(out, LL2NUM(colorChannel(color.b)));
    return true;
}

bool colorToRuby(const CorvaneCore::Color& color, RubyValueHolder& out) {
    VALUE array = Qnil;
    colorToRuby(color, array);
    out = array;
    return true;
}

// ---------------------------------------------------------------- calls into Ruby

namespace {

struct RespondQuery {
    VALUE receiver;
    ID method;
};

VALUE respondTrampoline(VALUE data) {
    const auto* query = reinterpret_cast<const RespondQuery*>(data);
    return rb_respond_to(query->receiver, query->method) ? Qtrue : Qfalse;
}

// respond_to? may be redefined by the object and raise; that counts as "does not answer".
bool respondsTo(VALUE receiver, ID method) {
    RespondQuery query{receiver, method};
    int state = 0;
    const VALUE answer = rb_protect(respondTrampoline, reinterpret_cast<VALUE>(&query), &state);
    forgetFailure(state);
    return state == 0 && answer == Qtrue;
}

VALUE callTrampoline(VALUE data) {
    if (!RB_TYPE_P(data, T_ARRAY) || RARRAY_LEN(data) < 2) return Qnil;
    const VALUE receiver = RARRAY_AREF(data, 0);
    const ID method = static_cast<ID>(NUM2ULL(RARRAY_AREF(data, 1)));
    const long argc = RARRAY_LEN(data) - 2;
    return rb_funcall2(receiver, method, static_cast<int>(argc), RARRAY_CONST_PTR(data) + 2);
}

}  // namespace

void protectedCall(RubyValueHolder& out, VALUE receiver, ID method, int count, const VALUE* args) {
    if (!RTEST(receiver) || hasPendingException() || !respondsTo(receiver, method)) {
        out = Qnil;
        return;
    }
    RubyValueHolder call(rb_ary_new_capa(count + 2));
    rb_ary_push(call.get(), receiver);
    rb_ary_push(call.get(), ULL2NUM(method));
    for (int i = 0; i < count; ++i) rb_ary_push(call.get(), args[i]);
    int state = 0;
    const VALUE result = rb_protect(callTrampoline, call.get(), &state);
    forgetFailure(state);  // a failure becomes a nil result
    out = state == 0 ? result : Qnil;
}

void protectedCall(RubyValueHolder& out, VALUE receiver, ID method) {
    protectedCall(out, receiver, method, 0, nullptr);
}

void protectedCall(RubyValueHolder& out, VALUE receiver, ID method, VALUE a) {
    protectedCall(out, receiver, method, 1, &a);
}

void protectedCall(RubyValueHolder& out, VALUE receiver, ID method, VALUE a, VALUE b) {
    const VALUE args[2] = {a, b};
    protectedCall(out, receiver, method, 2, args);
}

bool protectedEval(const std::string& utf8Source, RubyValueHolder* out) {
    if (out) out->reset();
    if (hasPendingException()) return false;
    int state = 0;
    const VALUE result = rb_eval_string_protect(utf8Source.c_str(), &state);
    if (state != 0) {
        forgetFailure(state);
        return false;
    }
    if (out) *out = result;
    return true;
}
