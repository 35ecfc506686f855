// A test-only extension that exposes the bridge's helpers to Ruby tests. It links the same
// bridge code as the shipped module, which exposes none of this.
#include <ruby.h>

#include "archive/quick_archive.h"
#include "bridge/host_dictionary.h"
#include "bridge/host_ids.h"
#include "bridge/ruby_archive.h"
#include "bridge/ruby_value.h"
#include "bridge/value_classes.h"
#include "upgrade/skp_material_editor.h"

namespace {

template <class Body>
VALUE guarded(const Body& body) {
    VALUE result = Qnil;
    try {
        result = body();
    } catch (...) {
        result = Qnil;
    }
    raisePendingException();
    return result;
}

VALUE keep_alive_count(VALUE) { return LONG2NUM(keepAliveCount()); }

// Counts in the keep-alive array: after one holder, after a copy, after dropping the copy.
VALUE holder_counts(VALUE, VALUE value) {
    return guarded([&] {
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

VALUE protected_call(int argc, VALUE* argv, VALUE) {
    if (argc < 2) rb_raise(rb_eArgError, "receiver and method name needed");
    const VALUE receiver = argv[0];
    const ID method = rb_intern_str(rb_String(argv[1]));
    return guarded([&] {
        RubyValueHolder out;
        protectedCall(out, receiver, method, argc - 2, argv + 2);
        return out.release();
    });
}

VALUE color_to_ruby(VALUE, VALUE r, VALUE g, VALUE b) {
    return guarded([&] {
        VALUE out = Qnil;
        colorToRuby(
            CorvaneCore::Color(static_cast<float>(NUM2DBL(r)), static_cast<float>(NUM2DBL(g)),
                               static_cast<float>(NUM2DBL(b))),
            out);
        return out;
    });
}

VALUE set_dictionary_value(VALUE, VALUE owner, VALUE dict, VALUE key, VALUE value, VALUE create) {
    return guarded([&] {
        RubyValueHolder o(owner), n(dict), k(key), v(value);
        return SetDictionaryValue(o, n, k, v, RTEST(create)) ? Qtrue : Qfalse;
    });
}

VALUE delete_dictionary_key(VALUE, VALUE owner, VALUE dict, VALUE key) {
    return guarded([&] {
        RubyValueHolder out, o(owner), n(dict), k(key);
        DeleteDictionaryKey(out, o, n, k);
        return out.get();
    });
}

// Bytes in through the attribute form and out again, whole blocks.
VALUE archive_round_trip(VALUE, VALUE array) {
    return guarded([&] {
        CorvaneCore::QuickArchive archive(1);
        if (!RubyArrayToArchive(array, archive)) return Qnil;
        VALUE out = Qnil;
        if (!ArchiveToRubyArray(archive, out)) return Qnil;
        return out;
    });
}

// The value classes and the upgrade pass's Ruby host, which the shipped module never sets up.
// Only the copy into an archive, for the copy benchmark: the byte count, or nil when the array
// is refused.
VALUE copy_to_archive(VALUE, VALUE array) {
    return guarded([&] {
        CorvaneCore::QuickArchive archive(1);
        if (!RubyArrayToArchive(array, archive)) return Qnil;
        return ULL2NUM(archive.writePos());
    });
}

VALUE register_host_classes(VALUE, VALUE module) {
    return guarded([&] {
        RegisterHostClasses(module);
        return Qtrue;
    });
}

// The upgrade pass's entry, as a record older than the upgraded layout reaches it.
VALUE offer_upgrade(VALUE) {
    return guarded([] {
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
    rb_define_module_function(m, "protected_call", RUBY_METHOD_FUNC(protected_call), -1);
    rb_define_module_function(m, "color_to_ruby", RUBY_METHOD_FUNC(color_to_ruby), 3);
    rb_define_module_function(m, "set_dictionary_value", RUBY_METHOD_FUNC(set_dictionary_value), 5);
    rb_define_module_function(m, "delete_dictionary_key", RUBY_METHOD_FUNC(delete_dictionary_key),
                              3);
    rb_define_module_function(m, "archive_round_trip", RUBY_METHOD_FUNC(archive_round_trip), 1);
    rb_define_module_function(m, "copy_to_archive", RUBY_METHOD_FUNC(copy_to_archive), 1);
    rb_define_module_function(m, "register_host_classes", RUBY_METHOD_FUNC(register_host_classes),
                              1);
    rb_define_module_function(m, "offer_upgrade", RUBY_METHOD_FUNC(offer_upgrade), 0);
}
