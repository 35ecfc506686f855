// The extension's entry: the Ruby module Quillonbin2xml and its four functions, each run
// through rubyEntry (entry_guard.h).
#include <ruby.h>
#include <ruby/encoding.h>

#include <optional>
#include <string>

#include "bridge/entry_guard.h"
#include "bridge/host_dictionary.h"
#include "bridge/host_ids.h"
#include "bridge/ruby_archive.h"
#include "bridge/ruby_value.h"
#include "convert/conversions.h"
#include "platform/export.h"

using CorvaneCore::QuickArchive;

namespace {

VALUE g_module = Qnil;
VALUE g_stringClass = Qnil;

VALUE utf8Result(const std::string& text) {
    return rb_enc_str_new(text.data(), static_cast<long>(text.size()), rb_utf8_encoding());
}

VALUE optionalResult(const std::optional<std::string>& text) {
    return text ? utf8Result(*text) : Qnil;
}

VALUE num2long(VALUE v) { return LONG2NUM(rb_num2long(v)); }

// The plain Ruby integer conversion, cut to 32 bits; a non-number raises (kept by the call).
bool typeId(VALUE type, int32_t& out) {
    if (FIXNUM_P(type)) {
        out = static_cast<int32_t>(FIX2LONG(type));
        return true;
    }
    const VALUE converted = callRaising(num2long, type);
    if (NIL_P(converted)) return false;
    out = static_cast<int32_t>(NUM2LONG(converted));
    return true;
}

using Converter = std::optional<std::string> (*)(QuickArchive&, int32_t, CorvaneCore::ReadTrace*);

// The Ruby side is done before any C++ object exists: a call that never returns (a fiber
// abandoned in an element's to_int) then leaves nothing behind but garbage-collected memory.
VALUE convertRecord(VALUE bytes, VALUE type, Converter convert) {
    VALUE copied = RubyArrayToBytes(bytes);
    if (NIL_P(copied)) return Qnil;
    int32_t id = 0;
    if (!typeId(type, id)) return Qnil;
    VALUE result = Qnil;
    {
        QuickArchive archive(RSTRING_PTR(copied), static_cast<size_t>(RSTRING_LEN(copied)));
        result = optionalResult(convert(archive, id, nullptr));
    }
    RB_GC_GUARD(copied);
    return result;
}

// The stored record, or nil when the model holds none.
VALUE storedRecord(VALUE model) {
    RubyValueHolder owner(model);
    RubyValueHolder name = GuidValue();
    RubyValueHolder key = SerialDataKeyValue();
    RubyValueHolder value;
    if (!GetDictionaryValue(owner, name, key, value)) return Qnil;
    return value.release();  // stays on this thread's stack, where the collector sees it
}

VALUE oldDeserialize(VALUE model) {
    if (!RTEST(model)) return Qnil;
    VALUE record = storedRecord(model);
    if (NIL_P(record)) return Qfalse;
    VALUE copied = RubyArrayToBytes(record);
    RB_GC_GUARD(record);
    if (NIL_P(copied)) return Qfalse;
    bool read = false;
    {
        QuickArchive archive(RSTRING_PTR(copied), static_cast<size_t>(RSTRING_LEN(copied)));
        read = CorvaneCore::readSceneRecord(archive);
    }
    RB_GC_GUARD(copied);
    return read ? Qtrue : Qfalse;
}

VALUE rb_old_deserialize(VALUE, VALUE model) {
    return rubyEntry([&] { return oldDeserialize(model); });
}

VALUE rb_serialize_to_xml(VALUE, VALUE) {
    return rubyEntry([] { return optionalResult(CorvaneCore::optionsDocument()); });
}

VALUE rb_convert_material(VALUE, VALUE bytes, VALUE type) {
    return rubyEntry([&] { return convertRecord(bytes, type, CorvaneCore::convertMaterial); });
}

VALUE rb_convert_light(VALUE, VALUE bytes, VALUE type) {
    return rubyEntry([&] { return convertRecord(bytes, type, CorvaneCore::convertLight); });
}

}  // namespace

extern "C" QUILLON_EXPORT void Init_Quillonbin2xml() {
    g_module = rb_define_module("Quillonbin2xml");
    rb_define_module_function(g_module, "old_deserialize", RUBY_METHOD_FUNC(rb_old_deserialize), 1);
    rb_define_module_function(g_module, "serialize_to_xml", RUBY_METHOD_FUNC(rb_serialize_to_xml),
                              1);
    rb_define_module_function(g_module, "convert_material", RUBY_METHOD_FUNC(rb_convert_material),
                              2);
    rb_define_module_function(g_module, "convert_light", RUBY_METHOD_FUNC(rb_convert_light), 2);
    g_stringClass = rb_path2class("String");
    internHostMethods();
}
