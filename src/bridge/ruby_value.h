// The thin layer between Ruby values and the system's own types: pinning, converters with a
// true/false result, and the only ways into Ruby methods.
#pragma once

#include <ruby.h>

#include <string>

#include "archive/value_types.h"
#include "bridge/entry_guard.h"

// Pins a Ruby value in the keep-alive array for as long as the holder holds it.
class RubyValueHolder {
public:
    RubyValueHolder() = default;
    RubyValueHolder(VALUE value);  // NOLINT(google-explicit-constructor): holders stand for values
    RubyValueHolder(const RubyValueHolder& other);
    RubyValueHolder& operator=(const RubyValueHolder& other);
    RubyValueHolder& operator=(VALUE value);
    ~RubyValueHolder();

    VALUE get() const { return value_; }
    bool isTruthy() const { return RTEST(value_); }
    void reset();
    // Gives the value out unpinned: it must go back to Ruby at once.
    VALUE release();

private:
    VALUE value_ = Qnil;
};

void protectValue(VALUE value);
void unprotectValue(VALUE value);
// Number of entries in the keep-alive array (0 before first use).
long keepAliveCount();

VALUE classOf(VALUE value);
bool isClass(VALUE value, VALUE klass);

// Converters: false when the value is of the wrong kind. A value of the right kind that Ruby
// cannot convert (a bignum out of range) raises: the current entry call keeps the error
// (entry_guard.h).
bool toFloat(VALUE value, float& out);
bool toDouble(VALUE value, double& out);
bool toInt(VALUE value, int& out);
bool toUInt(VALUE value, unsigned int& out);
bool toLong(VALUE value, long& out);
bool toULong(VALUE value, unsigned long& out);
bool toLongLong(VALUE value, long long& out);
bool toULongLong(VALUE value, unsigned long long& out);
bool toBool(VALUE value, bool& out);

bool rubyToWide(VALUE value, std::u16string& out);
bool wideToRuby(const std::u16string& text, VALUE& out);
bool wideToRuby(const std::u16string& text, RubyValueHolder& out);
bool narrowToRuby(const std::string& text, VALUE& out);
bool narrowToRuby(const std::string& text, RubyValueHolder& out);
// Each channel times 255, rounded half up; NaN gives 0 and values beyond the 64-bit range
// stop at its ends. Channels outside 0 to 255 are not clamped.
bool colorToRuby(const CorvaneCore::Color& color, VALUE& out);
bool colorToRuby(const CorvaneCore::Color& color, RubyValueHolder& out);

// Calls a method by id; a receiver that is nil, false or does not answer the method gives nil,
// and so does a raise or jump out of the method, which is then forgotten (but a thread kill,
// which the entry call resumes). Once the entry call has kept a jump, no method is called.
void protectedCall(RubyValueHolder& out, VALUE receiver, ID method, int count, const VALUE* args);
void protectedCall(RubyValueHolder& out, VALUE receiver, ID method);
void protectedCall(RubyValueHolder& out, VALUE receiver, ID method, VALUE a);
void protectedCall(RubyValueHolder& out, VALUE receiver, ID method, VALUE a, VALUE b);
bool protectedEval(const std::string& utf8Source, RubyValueHolder* out = nullptr);
