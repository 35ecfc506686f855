// Assembles archive records byte by byte, in the order of a class's field table, so that old
// layouts can be tested without the classes' own writers.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "archive/quick_archive.h"

class RecordBuilder {
  public:
    RecordBuilder& u32(uint32_t v) {
        for (int i = 0; i < 4; ++i) bytes_.push_back(static_cast<uint8_t>(v >> (8 * i)));
        return *this;
    }
    RecordBuilder& i32(int32_t v) { return u32(static_cast<uint32_t>(v)); }
    RecordBuilder& f32(float v) {
        uint32_t bits = 0;
        std::memcpy(&bits, &v, 4);
        return u32(bits);
    }
    RecordBuilder& boolean(bool v) {
        bytes_.push_back(v ? 1 : 0);
        return *this;
    }
    RecordBuilder& color(float r, float g, float b) { return f32(r).f32(g).f32(b); }
    // A wide string as the archive holds it: byte count, then UTF-8.
    RecordBuilder& text(const std::string& utf8) {
        u32(static_cast<uint32_t>(utf8.size()));
        bytes_.insert(bytes_.end(), utf8.begin(), utf8.end());
        return *this;
    }
    RecordBuilder& version(uint32_t major) { return u32(major << 16); }
    RecordBuilder& absent() { return boolean(false); }
    RecordBuilder& append(const RecordBuilder& other) {
        bytes_.insert(bytes_.end(), other.bytes_.begin(), other.bytes_.end());
        return *this;
    }
    // The layer section behind the fields: version 4, name and the three flags.
    RecordBuilder& brdfSection(const std::string& name, bool a = true, bool b = false,
                               bool c = false) {
        return version(4).text(name).boolean(a).boolean(b).boolean(c);
    }

    const std::vector<uint8_t>& bytes() const { return bytes_; }
    size_t size() const { return bytes_.size(); }
    CorvaneCore::QuickArchive archive() const {
        return CorvaneCore::QuickArchive(bytes_.data(), bytes_.size());
    }

  private:
    std::vector<uint8_t> bytes_;
};
