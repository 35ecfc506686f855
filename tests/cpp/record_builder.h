// Assembles archive records byte by byte, little-endian, in the order of a class's field table,
// so that old layouts can be tested without the classes' own writers. The one builder of every
// family's tests.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

#include "archive/quick_archive.h"
#include "archive/value_types.h"

class RecordBuilder {
public:
    RecordBuilder& u32(uint32_t v) {
        for (int i = 0; i < 4; ++i) data.push_back(static_cast<uint8_t>(v >> (8 * i)));
        return *this;
    }
    RecordBuilder& i32(int32_t v) { return u32(static_cast<uint32_t>(v)); }
    RecordBuilder& f32(float v) {
        uint32_t bits = 0;
        std::memcpy(&bits, &v, 4);
        return u32(bits);
    }
    RecordBuilder& f64(double v) {
        uint64_t bits = 0;
        std::memcpy(&bits, &v, 8);
        return u32(static_cast<uint32_t>(bits)).u32(static_cast<uint32_t>(bits >> 32));
    }
    RecordBuilder& boolean(bool v) {
        data.push_back(v ? 1 : 0);
        return *this;
    }
    RecordBuilder& flag(bool v) { return boolean(v); }
    RecordBuilder& absent() { return boolean(false); }
    RecordBuilder& version(uint32_t major) { return u32(major << 16); }
    RecordBuilder& floats(std::initializer_list<float> values) {
        for (float v : values) f32(v);
        return *this;
    }
    RecordBuilder& ints(std::initializer_list<int32_t> values) {
        for (int32_t v : values) i32(v);
        return *this;
    }
    RecordBuilder& color(float r, float g, float b) { return f32(r).f32(g).f32(b); }
    RecordBuilder& color(const CorvaneCore::Color& c) { return color(c.r, c.g, c.b); }
    RecordBuilder& vec(const CorvaneCore::Vector& v) { return f32(v.x).f32(v.y).f32(v.z); }
    RecordBuilder& transform(const CorvaneCore::Transform& t) {
        for (const auto& column : t.m.v) vec(column);
        return vec(t.offset);
    }
    // Twelve floats: three identity columns and a zero offset.
    RecordBuilder& identityTransform() { return floats({1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0}); }
    // A version 1 placement: nine floats, then three ints.
    RecordBuilder& components(std::initializer_list<float> nine,
                              std::initializer_list<int32_t> three) {
        return version(1).floats(nine).ints(three);
    }
    RecordBuilder& defaultComponents() {
        return components({0, 0, 0, 1, 1, 1, 0, 0, 0}, {0, 0, 0});
    }
    // A wide string as the archive holds it: byte count, then UTF-8.
    RecordBuilder& text(const std::string& utf8) {
        u32(static_cast<uint32_t>(utf8.size()));
        return raw(utf8);
    }
    RecordBuilder& raw(const std::string& bytes) {
        data.insert(data.end(), bytes.begin(), bytes.end());
        return *this;
    }
    RecordBuilder& append(const RecordBuilder& other) {
        data.insert(data.end(), other.data.begin(), other.data.end());
        return *this;
    }
    // The layer section behind the fields: version 4, name and the three flags.
    RecordBuilder& brdfSection(const std::string& name, bool a = true, bool b = false,
                               bool c = false) {
        return version(4).text(name).boolean(a).boolean(b).boolean(c);
    }
    // One primitive per character: i int, f float, s wide string. Row n holds n, n + 0.25 or
    // "p<n>", so that a misaligned read shows at once.
    RecordBuilder& rows(const std::string& types, int firstRow) {
        int row = firstRow;
        for (char t : types) {
            if (t == 'i') i32(row);
            if (t == 'f') f32(static_cast<float>(row) + 0.25f);
            if (t == 's') text("p" + std::to_string(row));
            ++row;
        }
        return *this;
    }

    const std::vector<uint8_t>& bytes() const { return data; }
    size_t size() const { return data.size(); }
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

// Reads `record` into `object` and tells whether it was read, nothing more.
template <class T>
bool deserializeFrom(T&& object, const RecordBuilder& record) {
    CorvaneCore::QuickArchive archive = record.archive();
    return object.deserialize(archive);
}

// Reads `record` into `object`; read or refused, the read must end at the record's end.
template <class T>
bool readAll(T& object, const RecordBuilder& record) {
    CorvaneCore::QuickArchive archive = record.archive();
    const bool ok = object.deserialize(archive);
    EXPECT_EQ(archive.readPos(), record.size()) << "read stopped elsewhere";
    return ok;
}

// Writes `object` and expects exactly the bytes of `record`.
template <class T>
void expectWritesBack(T& object, const RecordBuilder& record) {
    CorvaneCore::QuickArchive out(1);
    ASSERT_TRUE(object.serialize(out));
    std::vector<uint8_t> written(static_cast<size_t>(out.writePos()));
    out.setReadPos(0);
    if (!written.empty()) out.readBytes(written.data(), written.size());
    EXPECT_EQ(written, record.data);
}
