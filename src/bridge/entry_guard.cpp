#include "bridge/entry_guard.h"

#include <vector>

namespace {

// The interpreter's tag numbers for a raise and for a thread kill (stable since Ruby 1.9).
constexpr int kTagRaise = 6;
constexpr int kTagFatal = 8;

// Entry calls in progress on this thread, innermost last. Each fiber nests its own calls, and
// fibers may interleave, so a call is found by its fiber, never dereferenced otherwise: a
// call whose fiber was abandoned stays listed with a dangling pointer that nothing follows.
struct OpenCall {
    VALUE fiber;
    EntryCall* call;
};

thread_local std::vector<OpenCall> t_openCalls;

}  // namespace

EntryCall::EntryCall() {
    const VALUE fiber = rb_fiber_current();
    try {
        t_openCalls.push_back({fiber, this});
    } catch (...) {
        // Unlisted, the call's raises are dropped like those outside any call.
    }
}

EntryCall::~EntryCall() {
    for (auto it = t_openCalls.rbegin(); it != t_openCalls.rend(); ++it) {
        if (it->call == this) {
            t_openCalls.erase(std::next(it).base());
            return;
        }
    }
}

VALUE EntryCall::fail(VALUE errorClass, const char* message) {
    if (!message_) {
        errorClass_ = errorClass;
        message_ = message;
    }
    return Qnil;
}

void EntryCall::keep(int state, VALUE errorInfo) {
    if (state_ != 0) return;
    state_ = state;
    errorInfo_ = errorInfo;
}

void EntryCall::finish(int state, VALUE errorInfo, VALUE errorClass, const char* message) {
    if (state != 0) {
        // Nothing ran in Ruby since the jump was kept, so the interpreter still holds what
        // the jump needs; only a raise's exception is put back, in case a swallowed failure
        // in between cleared it.
        if (state == kTagRaise && RTEST(rb_obj_is_kind_of(errorInfo, rb_eException))) {
            rb_set_errinfo(errorInfo);
        }
        rb_jump_tag(state);
    }
    if (message) rb_raise(errorClass, "%s", message);
}

EntryCall* currentEntryCall() {
    if (t_openCalls.empty()) return nullptr;
    const VALUE fiber = rb_fiber_current();
    for (auto it = t_openCalls.rbegin(); it != t_openCalls.rend(); ++it) {
        if (it->fiber == fiber) return it->call;
    }
    return nullptr;
}

VALUE callRaising(VALUE (*fn)(VALUE), VALUE arg) {
    EntryCall* call = currentEntryCall();
    if (call && call->jumped()) return Qnil;
    int state = 0;
    const VALUE result = rb_protect(fn, arg, &state);
    if (state == 0) return result;
    if (call) {
        call->keep(state, rb_errinfo());
    } else {
        rb_set_errinfo(Qnil);  // outside every entry call nothing could resume it
    }
    return Qnil;
}

bool hasPendingException() {
    const EntryCall* call = currentEntryCall();
    return call && call->jumped();
}

void forgetFailure(int state) {
    if (state == 0) return;
    EntryCall* call = currentEntryCall();
    if (state == kTagFatal && call) {
        call->keep(state, rb_errinfo());  // a thread being killed stays killed
        return;
    }
    rb_set_errinfo(Qnil);
}
