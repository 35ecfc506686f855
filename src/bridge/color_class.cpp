#include "bridge/entry_guard.h"
#include "bridge/host_classes.h"
#include "bridge/host_ids.h"
#include "bridge/ruby_value.h"
#include "bridge/value_arguments.h"
#include "bridge/value_classes.h"
#include "bridge/wrapped_records.h"

using CorvaneCore::Color;

namespace {

constexpr float kByteToUnit = 0.003921569f;

VALUE colorInitialize(int argc, VALUE* argv, VALUE self) {
    return rubyEntry([&](EntryCall& error) -> VALUE {
        Color* record = colorOf(self);
        if (!record) return error.fail(rb_eArgError, "invalid self in Quillon::Color#initialize");
        if (argc == 1) {
            const VALUE arg = argv[0];
            if (isHost(arg, HostClass::Color)) {
                RubyValueHolder bytes;
                protectedCall(bytes, arg, hostMethod(kToA));
                float rgb[3];
                if (!numbersOf(bytes.get(), 3, rgb)) {
                    return error.fail(
                        rb_eArgError,
                        "Quillon::Color#initialize - invalid to_a in 1 argc color init");
                }
                *record = Color(rgb[0] * kByteToUnit, rgb[1] * kByteToUnit, rgb[2] * kByteToUnit);
                return self;
            }
            if (rb_typeddata_is_kind_of(arg, &kColorType) || isKindOf(arg, valueClasses().color)) {
                const Color* other = colorOf(arg);
                if (!other) {
                    return error.fail(rb_eArgError,
                                      "Quillon::Color#initialize - invalid Quillon::Color to copy");
                }
                *record = *other;
                return self;
            }
            return error.fail(rb_eArgError,
                              "Quillon::Color#initialize - invalid single argument: must be "
                              "Sketchup::Color or Quillon::Color");
        }
        float rgb[3];
        const bool three = argc == 3 && fixnumOrFloatOf(argv[0], rgb[0]) &&
                           fixnumOrFloatOf(argv[1], rgb[1]) && fixnumOrFloatOf(argv[2], rgb[2]);
        if (!three) {
            return error.fail(rb_eArgError,
                              "Quillon::Color#initialize - invalid arguments: when passing 3 they "
                              "must be fixnum / floats");
        }
        *record = Color(rgb[0], rgb[1], rgb[2]);
        return self;
    });
}

VALUE colorToS(VALUE self) {
    return rubyEntry([&](EntryCall&) -> VALUE {
        const Color* c = colorOf(self);
        if (!c) return Qnil;
        return textValue("(" + numbersText({c->r, c->g, c->b}, ", ") + ")");
    });
}

}  // namespace

void defineColor(VALUE under) {
    valueClasses().color = defineRecordClass(under, "Color", allocColor, colorInitialize, colorToS);
}
