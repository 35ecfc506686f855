// A test-only extension that exposes the bridge's helpers to Ruby tests. It links the same
// bridge code as the shipped module, which exposes none of this.
#include <ruby.h>

#include "archive/quick_archive.h"
#include "bridge/entry_guard.h"
#include "bridge/host_classes.h"
#include "bridge/host_dictionary.h"
#include "bridge/host_ids.h"
#include "bridge/ruby_archive.h"
#include "bridge/ruby_value.h"
#include "upgrade/skp_material_editor.h"
#include "xml/text.h"

namespace {

VALUE pair(bool ok, VALUE value) { return rb_ary_new_from_args(2, ok ? Qtrue : Qfalse, value); }

VALUE keep_alive_count(VALUE) { return LONG2NUM(keepAliveCount()); }

// Counts in the keep-alive array: after one holder, after a copy, after dropping the copy.
VALUE holder_counts(VALUE, VALUE value) {
    return rubyEntry([&] {
        const long base = keepAliveCount();
        RubyValueHolder first(value);
        const long one = keepAliveCount() - base;
        long two = 0, back = 0;
        {
            RubyValueHolder second(first);
            two = keepAliveCount() - base;
        }
        back = keepAliveCount() - base;
        return rb_ary_new_from_args(3, LONG2NUM(one), LONG2NUM(two), LONG2NUM(back));
    });
}

// A converter's answer and its output, which starts as `start` and stays so when refused.
template <class T, class ToRuby>
VALUE converted(VALUE v, bool (*convert)(VALUE, T&), T start, ToRuby toRuby) {
    return rubyEntry([&] {
        T out = start;
        const bool ok = convert(v, out);
        return pair(ok, toRuby(out));
    });
}

VALUE to_float(VALUE, VALUE v) {
    return converted<float>(v, toFloat, -1.0f, [](float f) { return DBL2NUM(f); });
}
VALUE to_long(VALUE, VALUE v) {
    return converted<long>(v, toLong, -1, [](long l) { return LONG2NUM(l); });
}
// The output starts as `start` (true unless given), so that a store of either value shows.
VALUE to_bool(int argc, VALUE* argv, VALUE) {
    if (argc < 1 || argc > 2) rb_raise(rb_eArgError, "value and optional start needed");
    const bool start = argc < 2 || RTEST(argv[1]);
    return converted<bool>(argv[0], toBool, start, [](bool b) { return b ? Qtrue : Qfalse; });
}

VALUE protected_call(int argc, VALUE* argv, VALUE) {
    if (argc < 2) rb_raise(rb_eArgError, "receiver and method name needed");
    const VALUE receiver = argv[0];
    const ID method = rb_intern_str(rb_String(argv[1]));
    return rubyEntry([&] {
        RubyValueHolder out;
        protectedCall(out, receiver, method, argc - 2, argv + 2);
        return out.release();
    });
}

VALUE ruby_to_wide(VALUE, VALUE v) {
    return rubyEntry([&] {
        std::u16string text = u"unchanged";
        const bool ok = rubyToWide(v, text);
        VALUE back = Qnil;
        wideToRuby(text, back);
        return pair(ok, back);
    });
}

VALUE color_to_ruby(VALUE, VALUE r, VALUE g, VALUE b) {
    return rubyEntry([&] {
        VALUE out = Qnil;
        colorToRuby(
            CorvaneCore::Color(static_cast<float>(NUM2DBL(r)), static_cast<float>(NUM2DBL(g)),
                               static_cast<float>(NUM2DBL(b))),
            out);
        return out;
    });
}

VALUE serial_data(VALUE, VALUE owner) {
    return rubyEntry([&] {
        RubyValueHolder o(owner), name = GuidValue(), key = SerialDataKeyValue(), out;
        const bool ok = GetDictionaryValue(o, name, key, out);
        const bool consumed = !o.isTruthy() && !name.isTruthy() && !key.isTruthy();
        return rb_ary_new_from_args(3, ok ? Qtrue : Qfalse, out.get(), consumed ? Qtrue : Qfalse);
    });
}

// The answer, and whether the call emptied every holder it was given.
VALUE set_dictionary_value(VALUE, VALUE owner, VALUE dict, VALUE key, VALUE value, VALUE create) {
    return rubyEntry([&] {
        RubyValueHolder o(owner), n(dict), k(key), v(value);
        const bool stored = SetDictionaryValue(o, n, k, v, RTEST(create));
        const bool consumed = !o.isTruthy() && !n.isTruthy() && !k.isTruthy() && !v.isTruthy();
        return pair(stored, consumed ? Qtrue : Qfalse);
    });
}

VALUE delete_dictionary_key(VALUE, VALUE owner, VALUE dict, VALUE key) {
    return rubyEntry([&] {
        RubyValueHolder out, o(owner), n(dict), k(key);
        DeleteDictionaryKey(out, o, n, k);
        const bool consumed = !o.isTruthy() && !n.isTruthy() && !k.isTruthy();
        return rb_ary_new_from_args(2, out.get(), consumed ? Qtrue : Qfalse);
    });
}

VALUE ask_yes_no(VALUE, VALUE text) {
    return rubyEntry([&] { return AskYesNo(StringValueCStr(text)) ? Qtrue : Qfalse; });
}

VALUE protected_eval(VALUE, VALUE text) {
    return rubyEntry([&] {
        RubyValueHolder out;
        const bool ok = protectedEval(StringValueCStr(text), &out);
        return pair(ok, out.get());
    });
}

// Bytes in through the attribute form and out again, whole blocks.
VALUE archive_round_trip(VALUE, VALUE array) {
    return rubyEntry([&] {
        CorvaneCore::QuickArchive archive(1);
        if (!RubyArrayToArchive(array, archive)) return Qnil;
        VALUE out = Qnil;
        if (!ArchiveToRubyArray(archive, out)) return Qnil;
        return out;
    });
}

// Only the copy into an archive: the byte count, or nil when the array is refused.
VALUE copy_to_archive(VALUE, VALUE array) {
    return rubyEntry([&] {
        CorvaneCore::QuickArchive archive(1);
        if (!RubyArrayToArchive(array, archive)) return Qnil;
        return ULL2NUM(archive.writePos());
    });
}

// The value classes and the upgrade pass's Ruby host, which the shipped module never sets up.
VALUE register_host_classes(VALUE, VALUE module) {
    return rubyEntry([&] {
        RegisterHostClasses(module);
        return Qtrue;
    });
}

// The upgrade pass's entry, as a record older than the upgraded layout reaches it.
VALUE offer_upgrade(VALUE) {
    return rubyEntry([] {
        SkpMaterialEditor::instance().offerUpgrade();
        return Qnil;
    });
}

}  // namespace

extern "C" __attribute__((visibility("default"))) void Init_QuillonProbe() {
    const VALUE m = rb_define_module("QuillonProbe");
    internHostMethods();
    rb_define_module_function(m, "keep_alive_count", RUBY_METHOD_FUNC(keep_alive_count), 0);
    rb_define_module_function(m, "holder_counts", RUBY_METHOD_FUNC(holder_counts), 1);
    rb_define_module_function(m, "to_float", RUBY_METHOD_FUNC(to_float), 1);
    rb_define_module_function(m, "to_long", RUBY_METHOD_FUNC(to_long), 1);
    rb_define_module_function(m, "to_bool", RUBY_METHOD_FUNC(to_bool), -1);
    rb_define_module_function(m, "protected_call", RUBY_METHOD_FUNC(protected_call), -1);
    rb_define_module_function(m, "ruby_to_wide", RUBY_METHOD_FUNC(ruby_to_wide), 1);
    rb_define_module_function(m, "color_to_ruby", RUBY_METHOD_FUNC(color_to_ruby), 3);
    rb_define_module_function(m, "serial_data", RUBY_METHOD_FUNC(serial_data), 1);
    rb_define_module_function(m, "set_dictionary_value", RUBY_METHOD_FUNC(set_dictionary_value), 5);
    rb_define_module_function(m, "delete_dictionary_key", RUBY_METHOD_FUNC(delete_dictionary_key),
                              3);
    rb_define_module_function(m, "ask_yes_no", RUBY_METHOD_FUNC(ask_yes_no), 1);
    rb_define_module_function(m, "protected_eval", RUBY_METHOD_FUNC(protected_eval), 1);
    rb_define_module_function(m, "archive_round_trip", RUBY_METHOD_FUNC(archive_round_trip), 1);
    rb_define_module_function(m, "copy_to_archive", RUBY_METHOD_FUNC(copy_to_archive), 1);
    rb_define_module_function(m, "register_host_classes", RUBY_METHOD_FUNC(register_host_classes),
                              1);
    rb_define_module_function(m, "offer_upgrade", RUBY_METHOD_FUNC(offer_upgrade), 0);
}
