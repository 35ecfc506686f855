// The extension's entry: the Ruby module Quillonbin2xml and its four functions. Every function
// catches C++ exceptions here and re-raises a Ruby exception only after its C++ objects are gone.
#include <ruby.h>
#include <ruby/encoding.h>

#include <optional>
#include <string>

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

// Runs one entry's body. Nothing C++ is alive here when a pending Ruby exception is raised.
template <class Body>
VALUE guardedEntry(const Body& body) {
    VALUE result = Qnil;
    try {
        result = body();
    } catch (...) {
        result = Qnil;
    }
    raisePendingException();
    return result;
}

VALUE num2long(VALUE v) { return LONG2NUM(rb_num2long(v)); }

// The plain Ruby integer conversion, cut to 32 bits; a non-number raises (pending).
int32_t typeId(VALUE type) {
    if (FIXNUM_P(type)) return static_cast<int32_t>(FIX2LONG(type));
    const VALUE converted = callRaising(num2long, type);
    if (hasPendingException()) return -1;
    return static_cast<int32_t>(NUM2LONG(converted));
}

using Converter = std::optional<std::string> (*)(QuickArchive&, int32_t, CorvaneCore::ReadTrace*);

VALUE convertRecord(VALUE bytes, VALUE type, Converter convert) {
    QuickArchive archive(1);
    if (!RubyArrayToArchive(bytes, archive)) return Qnil;
    const int32_t id = typeId(type);
    if (hasPendingException()) return Qnil;
    return optionalResult(convert(archive, id, nullptr));
}

VALUE oldDeserialize(VALUE model) {
    if (!RTEST(model)) return Qnil;
    RubyValueHolder owner(model);
    RubyValueHolder name = GuidValue();
    RubyValueHolder key = SerialDataKeyValue();
    RubyValueHolder value;
    if (!GetDictionaryValue(owner, name, key, value)) return Qfalse;
    QuickArchive archive(1);
    if (!RubyArrayToArchive(value.get(), archive)) return Qfalse;
    return CorvaneCore::readSceneRecord(archive) ? Qtrue : Qfalse;
}

VALUE rb_old_deserialize(VALUE, VALUE model) {
    return guardedEntry([&] { return oldDeserialize(model); });
}

VALUE rb_serialize_to_xml(VALUE, VALUE) {
    return guardedEntry([] { return utf8Result(CorvaneCore::optionsDocument()); });
}

VALUE rb_convert_material(VALUE, VALUE bytes, VALUE type) {
    return guardedEntry([&] { return convertRecord(bytes, type, CorvaneCore::convertMaterial); });
}

VALUE rb_convert_light(VALUE, VALUE bytes, VALUE type) {
    return guardedEntry([&] { return convertRecord(bytes, type, CorvaneCore::convertLight); });
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
