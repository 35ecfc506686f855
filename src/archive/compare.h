// Field comparisons shared by the isEqual operations of the scene classes.
#pragma once

#include "archive/value_types.h"

namespace CorvaneCore {

// Equal unless one is less or greater than the other, so a NaN equals anything.
inline bool sameFloat(float a, float b) { return !(a < b) && !(a > b); }
inline bool sameColor(const Color& a, const Color& b) {
    return sameFloat(a.r, b.r) && sameFloat(a.g, b.g) && sameFloat(a.b, b.b);
}
inline bool sameAColor(const AColor& a, const AColor& b) {
    return sameFloat(a.r, b.r) && sameFloat(a.g, b.g) && sameFloat(a.b, b.b) && sameFloat(a.a, b.a);
}
inline bool sameVector(const Vector& a, const Vector& b) {
    return sameFloat(a.x, b.x) && sameFloat(a.y, b.y) && sameFloat(a.z, b.z);
}
inline bool sameMatrix(const Matrix& a, const Matrix& b) {
    return sameVector(a.v[0], b.v[0]) && sameVector(a.v[1], b.v[1]) && sameVector(a.v[2], b.v[2]);
}
inline bool sameTransform(const Transform& a, const Transform& b) {
    return sameMatrix(a.m, b.m) && sameVector(a.offset, b.offset);
}

}  // namespace CorvaneCore
