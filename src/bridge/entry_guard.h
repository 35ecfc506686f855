// The boundary between Ruby's non-local exits and C++ frames.
//
// Ruby leaves a C function by longjmp: an exception, but also `throw`, `break`, a proc's
// `return`, `next`, `retry` and a thread kill. None of these may pass a C++ frame that owns
// objects, and no C++ exception may reach Ruby. So every function Ruby calls runs its body
// through `rubyEntry`; every call into Ruby that can raise or jump runs under `callRaising`.
// The first raise or jump inside one entry call is kept by that call alone, stops every later
// call into Ruby within it, and is resumed unchanged by `rubyEntry` after the body's C++
// objects are gone. Nothing is kept past the call.
#pragma once

#include <ruby.h>

#include <type_traits>

class EntryCall {
public:
    EntryCall();
    ~EntryCall();
    EntryCall(const EntryCall&) = delete;
    EntryCall& operator=(const EntryCall&) = delete;

    // Asks for a Ruby error with a literal message, raised once the body has returned.
    VALUE fail(VALUE errorClass, const char* message);

    bool jumped() const { return state_ != 0; }
    // Keeps the first raise or jump; the interpreter's error info is left as it stands.
    void keep(int state, VALUE errorInfo);

    // Raises or resumes what the call kept, if anything. Call with no C++ object alive.
    static void finish(int state, VALUE errorInfo, VALUE errorClass, const char* message);

    int state() const { return state_; }
    VALUE errorInfo() const { return errorInfo_; }
    VALUE errorClass() const { return errorClass_; }
    const char* message() const { return message_; }

private:
    int state_ = 0;
    VALUE errorInfo_ = Qnil;
    VALUE errorClass_ = Qnil;
    const char* message_ = nullptr;
};

// The innermost entry call of the running fiber, or null outside every entry call.
EntryCall* currentEntryCall();

// Runs one Ruby-facing function: the outermost frame of every function Ruby calls, and never
// inside another entry call's body, since what it resumes leaves by longjmp. `body` is
// `VALUE()` or `VALUE(EntryCall&)`; a C++ exception out of it gives nil.
template <class Body>
VALUE rubyEntry(const Body& body) {
    VALUE result = Qnil;
    int state = 0;
    VALUE errorInfo = Qnil;
    VALUE errorClass = Qnil;
    const char* message = nullptr;
    {
        EntryCall call;
        try {
            if constexpr (std::is_invocable_v<const Body&, EntryCall&>) {
                result = body(call);
            } else {
                result = body();
            }
        } catch (...) {
            result = Qnil;
        }
        state = call.state();
        errorInfo = call.errorInfo();
        errorClass = call.errorClass();
        message = call.message();
    }
    EntryCall::finish(state, errorInfo, errorClass, message);
    RB_GC_GUARD(errorInfo);
    return result;
}

// Runs fn(arg) under rb_protect. A raise or jump is kept by the current entry call and gives
// Qnil; once one is kept, fn is not run at all.
VALUE callRaising(VALUE (*fn)(VALUE), VALUE arg);
// True once the current entry call has kept a raise or jump.
bool hasPendingException();
// After an rb_protect whose failure is to be swallowed: clears the error info, so the
// interpreter goes on cleanly. A thread kill alone is kept, to be resumed at the end of the call.
void forgetFailure(int state);
