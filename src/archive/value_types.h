// Plain value types stored in the archive and passed around the scene model.
#pragma once

#include <array>
#include <cstdint>

namespace CorvaneCore {

struct Color {
    float r = 0.0f, g = 0.0f, b = 0.0f;
    Color() = default;
    Color(float r_, float g_, float b_) : r(r_), g(g_), b(b_) {}
    bool operator==(const Color& o) const { return r == o.r && g == o.g && b == o.b; }
    bool operator!=(const Color& o) const { return !(*this == o); }
};

struct AColor {
    float r = 0.0f, g = 0.0f, b = 0.0f, a = 0.0f;
    AColor() = default;
    AColor(float r_, float g_, float b_, float a_) : r(r_), g(g_), b(b_), a(a_) {}
    bool operator==(const AColor& o) const { return r == o.r && g == o.g && b == o.b && a == o.a; }
    bool operator!=(const AColor& o) const { return !(*this == o); }
};

struct Vector {
    float x = 0.0f, y = 0.0f, z = 0.0f;
    Vector() = default;
    Vector(float x_, float y_, float z_) : x(x_), y(y_), z(z_) {}
    bool operator==(const Vector& o) const { return x == o.x && y == o.y && z == o.z; }
    bool operator!=(const Vector& o) const { return !(*this == o); }
};

// Three column vectors, kept in memory order.
struct Matrix {
    std::array<Vector, 3> v{Vector(1, 0, 0), Vector(0, 1, 0), Vector(0, 0, 1)};
    static Matrix identity() { return Matrix(); }
    static Matrix zero() {
        Matrix m;
        m.v = {Vector(), Vector(), Vector()};
        return m;
    }
    bool operator==(const Matrix& o) const { return v == o.v; }
    bool operator!=(const Matrix& o) const { return !(*this == o); }
};

struct Transform {
    Matrix m;
    Vector offset;
    static Transform identity() { return Transform(); }
    bool operator==(const Transform& o) const { return m == o.m && offset == o.offset; }
    bool operator!=(const Transform& o) const { return !(*this == o); }
};

// The offset is held in double precision but stored in the archive as three floats.
struct DoubleTransform {
    Matrix m;
    double offset[3] = {0.0, 0.0, 0.0};
};

// Four ints in the archive; width and height are derived after reading.
struct IntRect {
    int32_t left = 0, top = 0, right = 0, bottom = 0;
    int32_t width = 0, height = 0;
    int32_t extraA = 0, extraB = 0;
};

}  // namespace CorvaneCore
