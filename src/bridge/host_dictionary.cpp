#include "bridge/host_dictionary.h"

#include "bridge/host_ids.h"
#include "util/debug_print.h"

namespace {

VALUE g_serialDataKey = Qnil;
VALUE g_guid = Qnil;
VALUE g_lightDataKey = Qnil;
VALUE g_lightTypeKey = Qnil;

// An object freed behind our back shows a zero flags word in its header.
bool looksFreed(VALUE value) { return !SPECIAL_CONST_P(value) && RBASIC(value)->flags == 0; }

}  // namespace

RubyValueHolder sharedKeyString(VALUE& global, const char* text, const char* warning) {
    if (NIL_P(global)) {
        // Registered before the string exists, so no allocation can collect it unpinned.
        rb_gc_register_address(&global);
        narrowToRuby(text, global);
        protectValue(global);
    }
    if (warning && looksFreed(global)) debugPrint("%s", warning);
    return RubyValueHolder(global);
}

RubyValueHolder SerialDataKeyValue() {
    return sharedKeyString(g_serialDataKey, "serial_data",
                           "about to go boom in SerialDataKeyValue\n");
}

RubyValueHolder GuidValue() {
    return sharedKeyString(g_guid, "{DD17A615-9867-4806-8F46-B37031D7F153}",
                           "about to go boom in GuidValue\n");
}

RubyValueHolder LightDataKeyValue() {
    return sharedKeyString(g_lightDataKey, "light_data", nullptr);
}

RubyValueHolder LightTypeKeyValue() {
    return sharedKeyString(g_lightTypeKey, "light_type", nullptr);
}

namespace {

void resetAll(RubyValueHolder& a, RubyValueHolder& b, RubyValueHolder& c) {
    a.reset();
    b.reset();
    c.reset();
}

}  // namespace

bool GetDictionaryValue(RubyValueHolder& owner, RubyValueHolder& name, RubyValueHolder& key,
                        RubyValueHolder& out) {
    out.reset();
    if (!owner.isTruthy()) {
        resetAll(owner, name, key);
        return false;
    }
    RubyValueHolder dictionary;
    protectedCall(dictionary, owner.get(), hostMethod(kAttributeDictionary), name.get(), Qfalse);
    if (!dictionary.isTruthy()) {
        resetAll(owner, name, key);
        return false;
    }
    protectedCall(out, dictionary.get(), hostMethod(kIndex), key.get());
    resetAll(owner, name, key);
    return out.isTruthy();
}

bool SetDictionaryValue(RubyValueHolder& owner, RubyValueHolder& name, RubyValueHolder& key,
                        RubyValueHolder& value, bool create) {
    RubyValueHolder dictionary;
    protectedCall(dictionary, owner.get(), hostMethod(kAttributeDictionary), name.get(),
                  create ? Qtrue : Qfalse);
    bool stored = false;
    if (dictionary.isTruthy()) {
        RubyValueHolder answer;
        protectedCall(answer, dictionary.get(), hostMethod(kIndexSet), key.get(), value.get());
        // The answer is tested against the dictionary itself, by identity.
        stored = answer.get() == dictionary.get();
    }
    resetAll(owner, name, key);
    value.reset();
    return stored;
}

void DeleteDictionaryKey(RubyValueHolder& out, RubyValueHolder& owner, RubyValueHolder& name,
                         RubyValueHolder& key) {
    RubyValueHolder dictionary;
    protectedCall(dictionary, owner.get(), hostMethod(kAttributeDictionary), name.get(), Qfalse);
    if (dictionary.isTruthy()) {
        RubyValueHolder ignored;
        protectedCall(ignored, dictionary.get(), hostMethod(kDeleteKey), key.get());
        out = Qtrue;
    } else {
        out = Qfalse;
    }
    resetAll(owner, name, key);
}

void ShowMessage(const std::string& rubyExpression) {
    protectedEval("UI.messagebox " + rubyExpression);
}

bool AskYesNo(const std::string& rubyExpression) {
    long answer = 7;  // "no"
    const bool evaluated = protectedEval("UI.messagebox " + rubyExpression + ", MB_YESNO");
    // The success flag is what reaches the number: success gives 0, failure leaves 7.
    if (evaluated) answer = 0;
    return answer == 6;
}
