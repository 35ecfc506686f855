// Native records inside Ruby objects: the typed-data descriptions of the four value classes,
// their allocation and the way back from an object to its record.
#pragma once

#include <ruby.h>

#include "archive/value_types.h"
#include "upgrade/basic_material.h"

extern const rb_data_type_t kVectorType;
extern const rb_data_type_t kColorType;
extern const rb_data_type_t kTransformType;
extern const rb_data_type_t kMaterialType;

// The classes defined under Quillon; nil until RegisterHostClasses has defined them.
struct ValueClasses {
    VALUE vector = Qnil;
    VALUE color = Qnil;
    VALUE transform = Qnil;
    VALUE material = Qnil;
};
ValueClasses& valueClasses();

// Defines the class `name` under `under`: objects made by `alloc`, `set` as both initialize
// and set (any number of arguments), `toS` as both to_s and to_str.
VALUE defineRecordClass(VALUE under, const char* name, VALUE (*alloc)(VALUE),
                        VALUE (*set)(int, VALUE*, VALUE), VALUE (*toS)(VALUE));

VALUE allocVector(VALUE klass);
VALUE allocColor(VALUE klass);
VALUE allocTransform(VALUE klass);
VALUE allocMaterial(VALUE klass);

// The record inside `value`, or null when it is not of that class.
CorvaneCore::Vector* vectorOf(VALUE v);
CorvaneCore::Color* colorOf(VALUE v);
CorvaneCore::Transform* transformOf(VALUE v);
BasicMaterialRecord* materialOf(VALUE v);
