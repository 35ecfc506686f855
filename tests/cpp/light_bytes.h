// A small little-endian byte builder for hand-made light and curve records.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "archive/quick_archive.h"
#include "archive/value_types.h"

namespace light_test {

class Bytes {
public:
    Bytes& u32(uint32_t v) {
        for (int i = 0; i < 4; ++i) data.push_back(static_cast<uint8_t>(v >> (8 * i)));
        return *this;
    }
    Bytes& i32(int32_t v) { return u32(static_cast<uint32_t>(v)); }
    Bytes& f32(float v) {
        uint32_t bits;
        std::memcpy(&bits, &v, 4);
        return u32(bits);
    }
    Bytes& f64(double v) {
        uint64_t bits;
        std::memcpy(&bits, &v, 8);
        u32(static_cast<uint32_t>(bits));
        return u32(static_cast<uint32_t>(bits >> 32));
    }
    Bytes& boolean(bool v) {
        data.push_back(v ? 1 : 0);
        return *this;
    }
    Bytes& color(const CorvaneCore::Color& c) { return f32(c.r).f32(c.g).f32(c.b); }
    Bytes& vec(const CorvaneCore::Vector& v) { return f32(v.x).f32(v.y).f32(v.z); }
    Bytes& transform(const CorvaneCore::Transform& t) {
        for (const auto& column : t.m.v) vec(column);
        return vec(t.offset);
    }
    // A wide string as stored: UTF-8 byte count, then the bytes.
    Bytes& text(const std::string& utf8) {
        u32(static_cast<uint32_t>(utf8.size()));
        data.insert(data.end(), utf8.begin(), utf8.end());
        return *this;
    }
    CorvaneCore::QuickArchive archive() const {
        return CorvaneCore::QuickArchive(data.data(), data.size());
    }

    std::vector<uint8_t> data;
};

// A transform whose twelve numbers are `base`, `base` + 1, ... in stored order.
inline CorvaneCore::Transform countingTransform(float base) {
    CorvaneCore::Transform t;
    float n = base;
    for (auto& column : t.m.v) column = CorvaneCore::Vector(n, n + 1, n + 2), n += 3;
    t.offset = CorvaneCore::Vector(n, n + 1, n + 2);
    return t;
}

}  // namespace light_test
