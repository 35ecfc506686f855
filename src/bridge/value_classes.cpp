#include "bridge/value_classes.h"

#include <locale>
#include <new>
#include <sstream>
#include <string>

#include "bridge/entry_guard.h"
#include "bridge/host_ids.h"
#include "bridge/ruby_value.h"
#include "xml/text.h"

using CorvaneCore::Color;
using CorvaneCore::Matrix;
using CorvaneCore::Transform;
using CorvaneCore::Vector;

// ---------------------------------------------------------------- handles

namespace {

constexpr int kHostClassCount = static_cast<int>(HostClass::Count);
const char* const kHostClassPaths[kHostClassCount] = {"Sketchup::ComponentDefinition",
                                                      "Sketchup::ComponentInstance",
                                                      "Sketchup::Material",
                                                      "Sketchup::Group",
                                                      "Sketchup::Face",
                                                      "Sketchup::Vertex",
                                                      "Sketchup::Drawingelement",
                                                      "Sketchup::Image",
                                                      "Sketchup::Entity",
                                                      "Sketchup::Model",
                                                      "Sketchup::Color",
                                                      "Sketchup::Texture",
                                                      "Geom::Vector3d",
                                                      "Geom::Point3d",
                                                      "Geom::Transformation",
                                                      "Geom::PolygonMesh"};

struct Handles {
    VALUE registeredModule = Qnil;
    VALUE quillon = Qnil;
    VALUE sketchup = Qnil;
    VALUE hostClasses[kHostClassCount];
    VALUE vectorClass = Qnil;
    VALUE colorClass = Qnil;
    VALUE transformClass = Qnil;
    VALUE materialClass = Qnil;
    Handles() {
        for (VALUE& v : hostClasses) v = Qnil;
    }
};

Handles& handles() {
    static Handles* h = new Handles();  // never destroyed; every value in it is pinned
    return *h;
}

VALUE pathToClass(VALUE path) { return rb_path2class(StringValueCStr(path)); }

// A pinned handle, or nil with a pending ArgumentError when the path names nothing.
VALUE lookUp(const char* path) {
    const VALUE found = callRaising(pathToClass, rb_str_new_cstr(path));
    if (!NIL_P(found)) rb_gc_register_mark_object(found);
    return found;
}

bool isA(VALUE value, VALUE klass) {
    return !NIL_P(klass) && RTEST(rb_obj_is_kind_of(value, klass));
}

bool isHost(VALUE value, HostClass which) { return isA(value, hostClass(which)); }

}  // namespace

VALUE quillonModule() { return handles().quillon; }
VALUE sketchupModule() { return handles().sketchup; }
VALUE hostClass(HostClass which) { return handles().hostClasses[static_cast<int>(which)]; }

// ---------------------------------------------------------------- wrapped records

namespace {

template <class Record>
void freeRecord(void* record) {
    delete static_cast<Record*>(record);
}

template <class Record>
size_t recordSize(const void*) {
    return sizeof(Record);
}

// Set field by field: the layout of the function table differs between interpreter versions.
template <class Record>
rb_data_type_t recordType(const char* name) {
    rb_data_type_t type{};
    type.wrap_struct_name = name;
    type.function.dfree = freeRecord<Record>;
    type.function.dsize = recordSize<Record>;
    type.flags = RUBY_TYPED_FREE_IMMEDIATELY;
    return type;
}

const rb_data_type_t kVectorType = recordType<Vector>("Quillon::Vector");
const rb_data_type_t kColorType = recordType<Color>("Quillon::Color");
const rb_data_type_t kTransformType = recordType<Transform>("Quillon::Transform");
const rb_data_type_t kMaterialType = recordType<BasicMaterialRecord>("Quillon::Material");

// The object exists before its record, so a failed allocation of either leaks nothing.
template <class Record>
VALUE allocRecord(VALUE klass, const rb_data_type_t* type) {
    const VALUE object = TypedData_Wrap_Struct(klass, type, nullptr);
    DATA_PTR(object) = new (std::nothrow) Record();
    if (!DATA_PTR(object)) rb_memerror();
    return object;
}

VALUE allocVector(VALUE klass) { return allocRecord<Vector>(klass, &kVectorType); }
VALUE allocColor(VALUE klass) { return allocRecord<Color>(klass, &kColorType); }
VALUE allocTransform(VALUE klass) { return allocRecord<Transform>(klass, &kTransformType); }
VALUE allocMaterial(VALUE klass) { return allocRecord<BasicMaterialRecord>(klass, &kMaterialType); }

template <class Record>
Record* recordOf(VALUE value, const rb_data_type_t& type) {
    if (SPECIAL_CONST_P(value) || !rb_typeddata_is_kind_of(value, &type)) return nullptr;
    return static_cast<Record*>(DATA_PTR(value));
}

Vector* vectorOf(VALUE v) { return recordOf<Vector>(v, kVectorType); }
Color* colorOf(VALUE v) { return recordOf<Color>(v, kColorType); }
Transform* transformOf(VALUE v) { return recordOf<Transform>(v, kTransformType); }
BasicMaterialRecord* materialOf(VALUE v) { return recordOf<BasicMaterialRecord>(v, kMaterialType); }

// ---------------------------------------------------------------- method entries

VALUE bignumToFloat(VALUE value) { return DBL2NUM(rb_big2dbl(value)); }

// Integers and floats both count as numbers here, as the host hands out either. A bignum
// beyond a double's range warns, and a warning runs Ruby code, which may raise or jump.
bool numberOf(VALUE value, float& out) {
    if (FIXNUM_P(value) || RB_FLOAT_TYPE_P(value)) {
        out = static_cast<float>(NUM2DBL(value));
        return true;
    }
    if (!RB_TYPE_P(value, T_BIGNUM)) return false;
    const VALUE converted = callRaising(bignumToFloat, value);
    if (NIL_P(converted)) return false;
    out = static_cast<float>(RFLOAT_VALUE(converted));
    return true;
}

// The narrower form a colour's three components take: no bignum.
bool fixnumOrFloatOf(VALUE value, float& out) {
    return !RB_TYPE_P(value, T_BIGNUM) && numberOf(value, out);
}

// x, y and z of a host point or vector through its "[]".
bool coordinatesOf(VALUE value, Vector& out) {
    float xyz[3];
    for (int i = 0; i < 3; ++i) {
        RubyValueHolder item;
        protectedCall(item, value, hostMethod(kIndex), INT2FIX(i));
        if (!numberOf(item.get(), xyz[i])) return false;
    }
    out = Vector(xyz[0], xyz[1], xyz[2]);
    return true;
}

// `count` numbers of an Array into `out`.
bool numbersOf(VALUE array, long count, float* out) {
    if (!RB_TYPE_P(array, T_ARRAY) || RARRAY_LEN(array) < count) return false;
    for (long i = 0; i < count; ++i) {
        if (!numberOf(RARRAY_AREF(array, i), out[i])) return false;
    }
    return true;
}

std::string numbersText(std::initializer_list<float> values, const char* separator) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    const char* between = "";
    for (float v : values) {
        out << between << v;
        between = separator;
    }
    return out.str();
}

VALUE floatArray(std::initializer_list<float> values) {
    const VALUE array = rb_ary_new_capa(static_cast<long>(values.size()));
    for (float v : values) rb_ary_push(array, DBL2NUM(v));
    return array;
}

VALUE textValue(const std::string& utf8) {
    VALUE out = Qnil;
    narrowToRuby(utf8, out);
    return out;
}

// ---------------------------------------------------------------- Vector

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

// ---------------------------------------------------------------- Color

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
            if (rb_typeddata_is_kind_of(arg, &kColorType) || isA(arg, handles().colorClass)) {
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

// ---------------------------------------------------------------- Transform

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
        const VALUE result = allocTransform(handles().transformClass);
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

// ---------------------------------------------------------------- Material

VALUE materialInitialize(VALUE self) {
    return rubyEntry([&](EntryCall&) -> VALUE {
        BasicMaterialRecord* record = materialOf(self);
        if (record) *record = BasicMaterialRecord();
        return self;
    });
}

template <class Read>
VALUE materialGetter(VALUE self, const Read& read) {
    return rubyEntry([&](EntryCall&) -> VALUE {
        const BasicMaterialRecord* record = materialOf(self);
        return record ? read(*record) : Qnil;
    });
}

// A setter gives self, or nil when the value is of the wrong kind.
template <class Write>
VALUE materialSetter(VALUE self, const Write& write) {
    return rubyEntry([&](EntryCall&) -> VALUE {
        BasicMaterialRecord* record = materialOf(self);
        return record && write(*record) ? self : Qnil;
    });
}

VALUE materialType(VALUE self) {
    return materialGetter(self, [](const BasicMaterialRecord& r) { return INT2NUM(r.type); });
}
VALUE materialSetType(VALUE self, VALUE v) {
    return materialSetter(self, [&](BasicMaterialRecord& r) {
        int type = 0;
        if (!toInt(v, type)) return false;
        r.type = type;
        return true;
    });
}
VALUE materialColor(VALUE self) {
    return materialGetter(self, [](const BasicMaterialRecord& r) {
        const VALUE color = allocColor(handles().colorClass);
        *colorOf(color) = r.color;
        return color;
    });
}
VALUE materialSetColor(VALUE self, VALUE v) {
    return materialSetter(self, [&](BasicMaterialRecord& r) {
        const Color* color = colorOf(v);
        if (!color) return false;
        r.color = *color;
        return true;
    });
}
VALUE materialTexture(VALUE self) {
    return materialGetter(self, [](const BasicMaterialRecord& r) {
        VALUE out = Qnil;
        wideToRuby(r.texture, out);
        return out;
    });
}
// Text setters take a String only; anything else gives nil rather than a conversion error.
bool textOf(VALUE value, std::u16string& out) {
    return RB_TYPE_P(value, T_STRING) && rubyToWide(value, out);
}

VALUE materialSetTexture(VALUE self, VALUE v) {
    return materialSetter(self, [&](BasicMaterialRecord& r) {
        std::u16string texture;
        if (!textOf(v, texture)) return false;
        r.texture = texture;
        return true;
    });
}
VALUE materialName(VALUE self) {
    return materialGetter(self, [](const BasicMaterialRecord& r) {
        VALUE out = Qnil;
        wideToRuby(r.name, out);
        return out;
    });
}
VALUE materialSetName(VALUE self, VALUE v) {
    return materialSetter(self, [&](BasicMaterialRecord& r) {
        std::u16string name;
        if (!textOf(v, name)) return false;
        r.name = name;
        return true;
    });
}
VALUE materialAlpha(VALUE self) {
    return materialGetter(self, [](const BasicMaterialRecord& r) { return DBL2NUM(r.alpha); });
}
VALUE materialSetAlpha(VALUE self, VALUE v) {
    return materialSetter(self, [&](BasicMaterialRecord& r) { return toFloat(v, r.alpha); });
}
VALUE materialUseAlpha(VALUE self) {
    return materialGetter(
        self, [](const BasicMaterialRecord& r) { return r.use_alpha ? Qtrue : Qfalse; });
}
VALUE materialSetUseAlpha(VALUE self, VALUE v) {
    return materialSetter(self, [&](BasicMaterialRecord& r) { return toBool(v, r.use_alpha); });
}

VALUE materialToS(VALUE self) {
    return materialGetter(self, [](const BasicMaterialRecord& r) {
        std::ostringstream out;
        out.imbue(std::locale::classic());
        out << "Name: " << CorvaneCore::wideToUtf8(r.name)
            << "\tColor: " << numbersText({r.color.r, r.color.g, r.color.b}, ", ")
            << "\nAlpha: " << r.alpha << "\tUse Alpha: " << r.use_alpha
            << "\nTexture: " << CorvaneCore::wideToUtf8(r.texture);
        return textValue(out.str());
    });
}

bool sameMaterial(const BasicMaterialRecord& a, const BasicMaterialRecord& b) {
    return CorvaneCore::equalsIgnoreCase(a.texture, b.texture) &&
           CorvaneCore::equalsIgnoreCase(a.name, b.name) && a.color == b.color &&
           a.alpha == b.alpha && a.type == b.type && a.use_alpha == b.use_alpha;
}

struct ComparisonTexts {
    const char* invalidArgument;
    const char* wrongType;
};

VALUE compareMaterials(VALUE self, VALUE other, const ComparisonTexts& texts, bool wantEqual) {
    return rubyEntry([&](EntryCall& error) -> VALUE {
        const BasicMaterialRecord* mine = materialOf(self);
        if (!mine) return error.fail(rb_eRuntimeError, "[Quillon::Material#==] - invalid self\n");
        if (NIL_P(other)) return error.fail(rb_eRuntimeError, texts.invalidArgument);
        if (!rb_typeddata_is_kind_of(other, &kMaterialType)) {
            return error.fail(rb_eRuntimeError, texts.wrongType);
        }
        const BasicMaterialRecord* theirs = materialOf(other);
        if (!theirs) return error.fail(rb_eRuntimeError, texts.invalidArgument);
        return sameMaterial(*mine, *theirs) == wantEqual ? Qtrue : Qfalse;
    });
}

VALUE materialIsEqual(VALUE self, VALUE other) {
    static const ComparisonTexts texts{
        "[Quillon::Material#==] - invalid argument 1\n",
        "[Quillon::Material#==] - argument 1 expected to be of type Quillon::Material\n"};
    return compareMaterials(self, other, texts, true);
}

VALUE materialNotEqual(VALUE self, VALUE other) {
    static const ComparisonTexts texts{
        "[Quillon::Material#!=] - invalid argument 1\n",
        "[Quillon::Material#!=] - argument 1 expected to be of type Quillon::Material\n"};
    return compareMaterials(self, other, texts, false);
}

// ---------------------------------------------------------------- definitions

void defineVector(VALUE under) {
    const VALUE c = rb_define_class_under(under, "Vector", rb_cObject);
    handles().vectorClass = c;
    rb_define_alloc_func(c, allocVector);
    rb_define_method(c, "set", RUBY_METHOD_FUNC(vectorSet), -1);
    rb_define_method(c, "initialize", RUBY_METHOD_FUNC(vectorSet), -1);
    rb_define_method(c, "to_s", RUBY_METHOD_FUNC(vectorToS), 0);
    rb_define_method(c, "to_str", RUBY_METHOD_FUNC(vectorToS), 0);
    rb_define_method(c, "to_a", RUBY_METHOD_FUNC(vectorToA), 0);
}

void defineColor(VALUE under) {
    const VALUE c = rb_define_class_under(under, "Color", rb_cObject);
    handles().colorClass = c;
    rb_define_alloc_func(c, allocColor);
    rb_define_method(c, "initialize", RUBY_METHOD_FUNC(colorInitialize), -1);
    rb_define_method(c, "set", RUBY_METHOD_FUNC(colorInitialize), -1);
    rb_define_method(c, "to_s", RUBY_METHOD_FUNC(colorToS), 0);
    rb_define_method(c, "to_str", RUBY_METHOD_FUNC(colorToS), 0);
}

void defineTransform(VALUE under) {
    const VALUE c = rb_define_class_under(under, "Transform", rb_cObject);
    handles().transformClass = c;
    rb_define_alloc_func(c, allocTransform);
    rb_define_method(c, "initialize", RUBY_METHOD_FUNC(transformInitialize), -1);
    rb_define_method(c, "set", RUBY_METHOD_FUNC(transformInitialize), -1);
    rb_define_method(c, "to_s", RUBY_METHOD_FUNC(transformToS), 0);
    rb_define_method(c, "to_str", RUBY_METHOD_FUNC(transformToS), 0);
    rb_define_method(c, "*", RUBY_METHOD_FUNC(transformTimes), 1);
    rb_define_method(c, "*=", RUBY_METHOD_FUNC(transformTimesAssign), 1);
    rb_define_method(c, "to_a", RUBY_METHOD_FUNC(transformToA), 0);
}

void defineMaterial(VALUE under) {
    const VALUE c = rb_define_class_under(under, "Material", rb_cObject);
    handles().materialClass = c;
    rb_define_alloc_func(c, allocMaterial);
    rb_define_method(c, "initialize", RUBY_METHOD_FUNC(materialInitialize), 0);
    rb_define_method(c, "type", RUBY_METHOD_FUNC(materialType), 0);
    rb_define_method(c, "type=", RUBY_METHOD_FUNC(materialSetType), 1);
    rb_define_method(c, "color", RUBY_METHOD_FUNC(materialColor), 0);
    rb_define_method(c, "color=", RUBY_METHOD_FUNC(materialSetColor), 1);
    rb_define_method(c, "texture", RUBY_METHOD_FUNC(materialTexture), 0);
    rb_define_method(c, "texture=", RUBY_METHOD_FUNC(materialSetTexture), 1);
    rb_define_method(c, "name", RUBY_METHOD_FUNC(materialName), 0);
    rb_define_method(c, "name=", RUBY_METHOD_FUNC(materialSetName), 1);
    rb_define_method(c, "alpha", RUBY_METHOD_FUNC(materialAlpha), 0);
    rb_define_method(c, "alpha=", RUBY_METHOD_FUNC(materialSetAlpha), 1);
    rb_define_method(c, "use_alpha", RUBY_METHOD_FUNC(materialUseAlpha), 0);
    rb_define_method(c, "use_alpha=", RUBY_METHOD_FUNC(materialSetUseAlpha), 1);
    rb_define_method(c, "to_s", RUBY_METHOD_FUNC(materialToS), 0);
    rb_define_method(c, "is_equal?", RUBY_METHOD_FUNC(materialIsEqual), 1);
    rb_define_method(c, "not_equal?", RUBY_METHOD_FUNC(materialNotEqual), 1);
}

}  // namespace

void installRubyUpgradeHost();  // skp_material_editor_host.cpp

namespace {

void registerHostClasses(VALUE module) {
    Handles& h = handles();
    static bool pinned = false;
    if (!pinned) {
        rb_gc_register_address(&h.registeredModule);
        pinned = true;
    }
    h.registeredModule = module;
    const VALUE quillon = lookUp("Quillon");
    if (hasPendingException()) return;
    VALUE found[kHostClassCount];
    for (int i = 0; i < kHostClassCount; ++i) {
        found[i] = lookUp(kHostClassPaths[i]);
        if (hasPendingException()) return;
    }
    const VALUE sketchup = lookUp("Sketchup");
    if (hasPendingException()) return;
    h.quillon = quillon;
    for (int i = 0; i < kHostClassCount; ++i) h.hostClasses[i] = found[i];
    h.sketchup = sketchup;
    internHostMethods();
    defineVector(quillon);
    defineColor(quillon);
    defineTransform(quillon);
    defineMaterial(quillon);
    installRubyUpgradeHost();
}

}  // namespace

// Inside a Ruby-facing function the error belongs to that function's call; called on its own
// (after load), it is a call of its own. Either way a missing class raises when the call ends,
// never in a later one.
void RegisterHostClasses(VALUE module) {
    if (currentEntryCall()) return registerHostClasses(module);
    rubyEntry([&] {
        registerHostClasses(module);
        return Qnil;
    });
}

// ---------------------------------------------------------------- conversions

namespace {

Vector times(const Matrix& m, const Vector& v) {
    return Vector(m.v[0].x * v.x + m.v[1].x * v.y + m.v[2].x * v.z,
                  m.v[0].y * v.x + m.v[1].y * v.y + m.v[2].y * v.z,
                  m.v[0].z * v.x + m.v[1].z * v.y + m.v[2].z * v.z);
}

Vector plus(const Vector& a, const Vector& b) { return Vector(a.x + b.x, a.y + b.y, a.z + b.z); }

}  // namespace

Transform multiplyTransforms(const Transform& a, const Transform& b) {
    Transform result;
    for (int column = 0; column < 3; ++column) result.m.v[column] = times(a.m, b.m.v[column]);
    result.offset = plus(times(a.m, b.offset), a.offset);
    return result;
}

bool materialRecordOf(VALUE value, BasicMaterialRecord& out) {
    const BasicMaterialRecord* record = materialOf(value);
    if (!record) return false;
    out = *record;
    return true;
}

bool materialToLayered(VALUE value, LayeredPair& out) {
    BasicMaterialRecord record;
    if (!materialRecordOf(value, record)) return false;
    out = materialToLayered(record);
    return true;
}
