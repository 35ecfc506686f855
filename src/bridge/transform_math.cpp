#include "bridge/transform_math.h"

using CorvaneCore::Matrix;
using CorvaneCore::Transform;
using CorvaneCore::Vector;

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
