// Records cut by the end of the archive at every byte. A record is described row by row with
// its stored bytes and the bytes that a read past the end leaves (as the archive promises:
// scalars keep what the object held, colours, vectors and matrices read as zero,
// counted text as empty). A cut record placed at the end of the archive's block must read like
// the whole-record stand-in made of the stored bytes before the cut and the past-end bytes
// after it.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "record_builder.h"
#include "xml/asset_xml_writer.h"

namespace cut_records {

using namespace CorvaneCore;

// One row of a field table: its bytes as stored and as a read past the end leaves the field.
struct Field {
    std::vector<uint8_t> stored;
    std::vector<uint8_t> pastEnd;
    bool text = false;  // a counted string, cut only ahead of its count
};

class Fields {
public:
    Fields& f(float stored, float fallback) {
        return add(RecordBuilder().f32(stored), RecordBuilder().f32(fallback));
    }
    Fields& i(int32_t stored, int32_t fallback) {
        return add(RecordBuilder().i32(stored), RecordBuilder().i32(fallback));
    }
    Fields& b(bool stored, bool fallback) {
        return add(RecordBuilder().boolean(stored), RecordBuilder().boolean(fallback));
    }
    Fields& color(float r, float g, float bl) {
        return add(RecordBuilder().color(r, g, bl), RecordBuilder().color(0, 0, 0));
    }
    Fields& vec(float x, float y, float z) { return color(x, y, z); }
    Fields& transform(float base) {
        RecordBuilder zero;
        for (int n = 0; n < 12; ++n) zero.f32(0.0f);
        return add(RecordBuilder().transform(countingTransform(base)), zero);
    }
    // A version word or a child's presence flag: zero past the end.
    Fields& word(uint32_t major) { return i(int32_t(major << 16), 0); }
    Fields& absent() { return b(false, false); }
    Fields& text(const std::string& stored) {
        add(RecordBuilder().text(stored), RecordBuilder().text(""));
        rows_.back().text = true;
        return *this;
    }

    std::vector<uint8_t> stored() const {
        std::vector<uint8_t> out = word_;
        for (const Field& r : rows_) out.insert(out.end(), r.stored.begin(), r.stored.end());
        return out;
    }

    // The stored bytes up to `cut`, then what the read of the rest gives: within the row that
    // the cut splits, the stored bytes before it and the past-end bytes after it.
    std::vector<uint8_t> asCutAt(size_t cut) const {
        std::vector<uint8_t> out = word_;
        size_t at = word_.size();
        for (const Field& r : rows_) {
            for (size_t n = 0; n < r.stored.size(); ++n, ++at) {
                if (at < cut)
                    out.push_back(r.stored[n]);
                else if (n < r.pastEnd.size())
                    out.push_back(r.pastEnd[n]);
            }
        }
        return out;
    }

    // Cut positions: every byte from the end of the version word on, but inside a string.
    std::vector<size_t> cuts() const {
        std::vector<size_t> out;
        size_t at = word_.size();
        for (const Field& r : rows_) {
            for (size_t n = 0; n < r.stored.size(); ++n) {
                if (!r.text || n == 0) out.push_back(at + n);
            }
            at += r.stored.size();
        }
        out.push_back(at);
        return out;
    }

    explicit Fields(uint32_t major) : word_(RecordBuilder().version(major).data) {}

private:
    Fields& add(const RecordBuilder& stored, const RecordBuilder& pastEnd) {
        rows_.push_back({stored.data, pastEnd.data});
        return *this;
    }

    std::vector<uint8_t> word_;
    std::vector<Field> rows_;
};

// `bytes` placed so that they end exactly at the end of the archive's only block.
template <class Object>
bool readAtBlockEnd(Object& light, const std::vector<uint8_t>& bytes) {
    std::vector<uint8_t> block(QuickArchive::kBlockSize - bytes.size(), 0xEE);
    block.insert(block.end(), bytes.begin(), bytes.end());
    QuickArchive archive(block.data(), block.size());
    archive.setReadPos(QuickArchive::kBlockSize - bytes.size());
    return light.deserialize(archive);
}

template <class Object>
bool readInBlock(Object& light, const std::vector<uint8_t>& bytes) {
    QuickArchive archive(bytes.data(), bytes.size());
    return light.deserialize(archive);
}

template <class Object>
std::vector<uint8_t> written(Object& light) {
    QuickArchive out(1);
    light.serialize(out);
    std::vector<uint8_t> bytes(static_cast<size_t>(out.writePos()));
    out.setReadPos(0);
    out.readBytes(bytes.data(), bytes.size());
    return bytes;
}

template <class Object>
std::string xmlOf(Object& light) {
    std::string text;
    AssetXmlWriter writer(text);
    light.writeXML(writer, {});
    return writer.stream();
}

template <class Base>
using Make = std::function<std::shared_ptr<Base>()>;

template <class Base, class Object>
Make<Base> maker() {
    return [] { return std::make_shared<Object>(); };
}

template <class Base>
void expectWritesBackDistinctRecord(const Make<Base>& make, const Fields& fields) {
    auto light = make();
    const std::vector<uint8_t> record = fields.stored();
    ASSERT_TRUE(readInBlock(*light, record));
    EXPECT_EQ(written(*light), record);
}

enum class Start { Used, Fresh };

// Each cut is read into an object that has just read the whole record (`Start::Used`, for a
// class that resets before reading), so that a field the read does not reset keeps the stored
// value and shows; or into a fresh one. `same` makes what the record cannot set alike in both
// (a material's unique name). Version words and child flags past the end read as zero.
template <class Base>
void expectEveryCutLeavesPastEndValues(
    const Make<Base>& make, const Fields& fields, Start start = Start::Used,
    const std::function<void(Base&)>& same = [](Base&) {}) {
    const std::vector<uint8_t> whole = fields.stored();
    for (size_t cut : fields.cuts()) {
        SCOPED_TRACE("cut at byte " + std::to_string(cut));
        auto read = make();
        if (start == Start::Used) {
            ASSERT_TRUE(readInBlock(*read, whole));
        }
        const std::vector<uint8_t> prefix(whole.begin(), whole.begin() + long(cut));
        const bool readResult = readAtBlockEnd(*read, prefix);
        auto expected = make();
        EXPECT_EQ(readResult, readInBlock(*expected, fields.asCutAt(cut)));
        same(*read);
        same(*expected);
        EXPECT_TRUE(read->isEqual(expected));
        EXPECT_EQ(written(*read), written(*expected));
        EXPECT_EQ(xmlOf(*read), xmlOf(*expected));
        if (::testing::Test::HasFailure()) return;  // the first cut that differs says enough
    }
}

}  // namespace cut_records
