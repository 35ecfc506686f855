// Numbers and text between Ruby values and the value classes' records.
#pragma once

#include <ruby.h>

#include <initializer_list>
#include <string>

#include "archive/value_types.h"

// Integers and floats both count as numbers here, as the host hands out either.
bool numberOf(VALUE value, float& out);
// The narrower form a colour's three components take: no bignum.
bool fixnumOrFloatOf(VALUE value, float& out);
// x, y and z of a host point or vector through its "[]".
bool coordinatesOf(VALUE value, CorvaneCore::Vector& out);
// `count` numbers of an Array into `out`.
bool numbersOf(VALUE array, long count, float* out);
// The numbers in the classic locale, joined by `separator`.
std::string numbersText(std::initializer_list<float> values, const char* separator);
VALUE floatArray(std::initializer_list<float> values);
VALUE textValue(const std::string& utf8);
