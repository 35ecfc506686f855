#include "bridge/entry_guard.h"
#include "bridge/host_classes.h"
#include "bridge/host_ids.h"
#include "bridge/ruby_value.h"
#include "bridge/transform_math.h"
#include "bridge/value_arguments.h"
#include "bridge/value_classes.h"
#include "bridge/wrapped_records.h"

using CorvaneCore::Matrix;
using CorvaneCore::Transform;
using CorvaneCore::Vector;

namespace {

// A 4 × 4 matrix of 16 numbers in column order: three axes and the origin.
bool transformFromSixteen(VALUE array, Transform& out) {
    float n[16];
    if (!RB_TYPE_P(array, T_ARRAY) || RARRAY_LEN(array) != 16 || !numbersOf(array, 16, n)) {
        return false;
    }
    for (int column = 0; column < 3; ++column) {
        out.m.v[column] = Vector(n[column * 4], n[column * 4 + 1], n[column * 4 + 2]);
    }
    out.offset = Vector(n[12], n[13], n[14]);
    return true;
}

bool transformFromFour(VALUE* argv, Transform& out) {
    Vector parts[4];
    const bool hostForm =
        isHost(argv[0], HostClass::Vector3d) && isHost(argv[1], HostClass::Vector3d) &&
        isHost(argv[2], HostClass::Vector3d) && isHost(argv[3], HostClass::Point3d);
    for (int i = 0; i < 4; ++i) {
        if (hostForm) {
            if (!coordinatesOf(argv[i], parts[i])) return false;
        } else {
            const Vector* v = vectorOf(argv[i]);
            if (!v) return false;
            parts[i] = *v;
        }
    }
    out.m.v = {parts[0], parts[1], parts[2]};
    out.offset = parts[3];
    return true;
}

VALUE transformInitialize(int argc, VALUE* argv, VALUE self) {
    return rubyEntry([&](EntryCall& error) -> VALUE {
        Transform* record = transformOf(self);
        if (!record)
            return error.fail(rb_eArgError,
                              "Quillon::Transform#initialize - invalid argument count");
        if (argc == 4) {
            if (!transformFromFour(argv, *record)) {
                return error.fail(rb_eArgError,
                                  "Quillon::Transform#initialize - 4 argument version should be 3 "
                                  "Sketchup::Vector3d / 1 Sketchup::Point3d or 4 Quillon::Vector");
            }
            return self;
        }
        if (argc != 1) {
            return error.fail(rb_eArgError,
                              "Quillon::Transform#initialize - invalid argument count");
        }
        const VALUE arg = argv[0];
        if (isHost(arg, HostClass::Transformation)) {
            RubyValueHolder numbers;
            protectedCall(numbers, arg, hostMethod(kToA));
            if (!transformFromSixteen(numbers.get(), *record)) {
                return error.fail(
                    rb_eArgError,
                    "Quillon::Transform#initialize - Geom::Transformation#to_a failed");
            }
        } else if (rb_typeddata_is_kind_of(arg, &kTransformType)) {
            const Transform* other = transformOf(arg);
            if (!other) {
                return error.fail(rb_eArgError,
                                  "Quillon::Transform#initialize - invalid Quillon::Transform");
            }
            *record = *other;
        } else if (RB_TYPE_P(arg, T_ARRAY) && RARRAY_LEN(arg) != 16) {
            return error.fail(
                rb_eArgError,
                "Quillon::Transform#initialize - invalid ruby array length - should be 16");
        } else if (!transformFromSixteen(arg, *record)) {
            return error.fail(
                rb_eArgError,
                "Quillon::Transform#initialize - 1 arg version should be a "
                "Geom::Transformation / Quillon::Transform / an array with 16 doubles");
        }
        return self;
    });
}

VALUE transformToS(VALUE self) {
    return rubyEntry([&](EntryCall&) -> VALUE {
        const Transform* t = transformOf(self);
        if (!t) return Qnil;
        std::string text;
        for (const Vector& v : {t->m.v[0], t->m.v[1], t->m.v[2], t->offset}) {
            text += "{ " + numbersText({v.x, v.y, v.z}, ", ") + " }\n";
        }
        return textValue(text);
    });
}

VALUE transformTimes(VALUE self, VALUE other) {
    return rubyEntry([&](EntryCall&) -> VALUE {
        const Transform* a = transformOf(self);
        const Transform* b = transformOf(other);
        if (!a || !b) return Qnil;
        const Transform product = multiplyTransforms(*a, *b);
        const VALUE result = allocTransform(valueClasses().transform);
        *transformOf(result) = product;
        return result;
    });
}

VALUE transformTimesAssign(VALUE self, VALUE other) {
    return rubyEntry([&](EntryCall&) -> VALUE {
        Transform* a = transformOf(self);
        const Transform* b = transformOf(other);
        if (!a || !b) return Qnil;
        *a = multiplyTransforms(*a, *b);
        return self;
    });
}

VALUE transformToA(VALUE self) {
    return rubyEntry([&](EntryCall& error) -> VALUE {
        if (!rb_typeddata_is_kind_of(self, &kTransformType)) {
            return error.fail(rb_eArgError, "invalid self - Quillon::Transform#to_a");
        }
        const Transform* t = transformOf(self);
        if (!t) return error.fail(rb_eRuntimeError, "invalid transform - Quillon::Transform#to_a");
        const Matrix& m = t->m;
        return floatArray({m.v[0].x, m.v[0].y, m.v[0].z, m.v[1].x, m.v[1].y, m.v[1].z, m.v[2].x,
                           m.v[2].y, m.v[2].z, t->offset.x, t->offset.y, t->offset.z});
    });
}

}  // namespace

void defineTransform(VALUE under) {
    const VALUE c =
        defineRecordClass(under, "Transform", allocTransform, transformInitialize, transformToS);
    valueClasses().transform = c;
    rb_define_method(c, "*", RUBY_METHOD_FUNC(transformTimes), 1);
    rb_define_method(c, "*=", RUBY_METHOD_FUNC(transformTimesAssign), 1);
    rb_define_method(c, "to_a", RUBY_METHOD_FUNC(transformToA), 0);
}
