#include "bridge/entry_guard.h"
#include "bridge/host_classes.h"
#include "bridge/host_ids.h"
#include "bridge/ruby_value.h"
#include "bridge/value_arguments.h"
#include "bridge/value_classes.h"
#include "bridge/wrapped_records.h"

using CorvaneCore::Vector;

namespace {

VALUE vectorSet(int argc, VALUE* argv, VALUE self) {
    return rubyEntry([&](EntryCall& error) -> VALUE {
        Vector* record = vectorOf(self);
        if (!record) return error.fail(rb_eArgError, "invalid self - Quillon::Vector#set");
        if (argc == 3) {
            float xyz[3];
            for (int i = 0; i < 3; ++i) {
                if (!numberOf(argv[i], xyz[i])) {
                    return error.fail(rb_eArgError,
                                      "invalid Quillon::Vector argument in Vector#set");
                }
            }
            *record = Vector(xyz[0], xyz[1], xyz[2]);
            return self;
        }
        if (argc != 1)
            return error.fail(rb_eArgError, "invalid parameter count - Quillon::Vector#set");
        const VALUE arg = argv[0];
        if (const Vector* other = vectorOf(arg)) {
            *record = *other;
        } else if (isHost(arg, HostClass::Vector3d)) {
            if (!coordinatesOf(arg, *record)) {
                return error.fail(rb_eArgError,
                                  "invalid Geom::Vector3d#[] result - Quillon::Vector#set");
            }
        } else if (isHost(arg, HostClass::Point3d)) {
            if (!coordinatesOf(arg, *record)) {
                return error.fail(rb_eArgError,
                                  "invalid Geom::Point3d#[] result - Quillon::Vector#set");
            }
        } else if (isHost(arg, HostClass::Vertex)) {
            RubyValueHolder position;
            protectedCall(position, arg, hostMethod(kPosition));
            if (!isHost(position.get(), HostClass::Point3d) ||
                !coordinatesOf(position.get(), *record)) {
                return error.fail(rb_eArgError,
                                  "invalid Geom::Vertex#position result - Quillon::Vector#set");
            }
        } else {
            return error.fail(rb_eArgError, "invalid Quillon::Vector argument in Vector#set");
        }
        return self;
    });
}

VALUE vectorToS(VALUE self) {
    return rubyEntry([&](EntryCall&) -> VALUE {
        const Vector* v = vectorOf(self);
        if (!v) return Qnil;
        return textValue("(" + numbersText({v->x, v->y, v->z}, ", ") + ")");
    });
}

VALUE vectorToA(VALUE self) {
    return rubyEntry([&](EntryCall&) -> VALUE {
        const Vector* v = vectorOf(self);
        return v ? floatArray({v->x, v->y, v->z}) : Qnil;
    });
}

}  // namespace

void defineVector(VALUE under) {
    const VALUE c = defineRecordClass(under, "Vector", allocVector, vectorSet, vectorToS);
    valueClasses().vector = c;
    rb_define_method(c, "to_a", RUBY_METHOD_FUNC(vectorToA), 0);
}
