#include "bridge/wrapped_records.h"

#include <new>

using CorvaneCore::Color;
using CorvaneCore::Transform;
using CorvaneCore::Vector;

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

// The object exists before its record, so a failed allocation of either leaks nothing.
template <class Record>
VALUE allocRecord(VALUE klass, const rb_data_type_t* type) {
    const VALUE object = TypedData_Wrap_Struct(klass, type, nullptr);
    DATA_PTR(object) = new (std::nothrow) Record();
    if (!DATA_PTR(object)) rb_memerror();
    return object;
}

template <class Record>
Record* recordOf(VALUE value, const rb_data_type_t& type) {
    if (SPECIAL_CONST_P(value) || !rb_typeddata_is_kind_of(value, &type)) return nullptr;
    return static_cast<Record*>(DATA_PTR(value));
}

}  // namespace

extern const rb_data_type_t kVectorType = recordType<Vector>("Quillon::Vector");
extern const rb_data_type_t kColorType = recordType<Color>("Quillon::Color");
extern const rb_data_type_t kTransformType = recordType<Transform>("Quillon::Transform");
extern const rb_data_type_t kMaterialType = recordType<BasicMaterialRecord>("Quillon::Material");

ValueClasses& valueClasses() {
    static ValueClasses classes;  // each class is a constant under Quillon, so never collected
    return classes;
}

VALUE defineRecordClass(VALUE under, const char* name, VALUE (*alloc)(VALUE),
                        VALUE (*set)(int, VALUE*, VALUE), VALUE (*toS)(VALUE)) {
    const VALUE c = rb_define_class_under(under, name, rb_cObject);
    rb_define_alloc_func(c, alloc);
    rb_define_method(c, "initialize", RUBY_METHOD_FUNC(set), -1);
    rb_define_method(c, "set", RUBY_METHOD_FUNC(set), -1);
    rb_define_method(c, "to_s", RUBY_METHOD_FUNC(toS), 0);
    rb_define_method(c, "to_str", RUBY_METHOD_FUNC(toS), 0);
    return c;
}

VALUE allocVector(VALUE klass) { return allocRecord<Vector>(klass, &kVectorType); }
VALUE allocColor(VALUE klass) { return allocRecord<Color>(klass, &kColorType); }
VALUE allocTransform(VALUE klass) { return allocRecord<Transform>(klass, &kTransformType); }
VALUE allocMaterial(VALUE klass) { return allocRecord<BasicMaterialRecord>(klass, &kMaterialType); }

Vector* vectorOf(VALUE v) { return recordOf<Vector>(v, kVectorType); }
Color* colorOf(VALUE v) { return recordOf<Color>(v, kColorType); }
Transform* transformOf(VALUE v) { return recordOf<Transform>(v, kTransformType); }
BasicMaterialRecord* materialOf(VALUE v) { return recordOf<BasicMaterialRecord>(v, kMaterialType); }
