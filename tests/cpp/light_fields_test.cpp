// Every light's newest record assembled from its field table with each field distinct from its
// neighbours and from its default, so that two reads or writes exchanged show. The same records,
// cut by the end of the archive at every byte, must leave each missing field as a read past the
// end leaves it: scalars at their table defaults, colours, vectors and matrices at zero, text
// empty.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "lights/ies_light.h"
#include "lights/maya_direct_light.h"
#include "lights/omni_light.h"
#include "lights/rectangle_light.h"
#include "lights/sphere_light.h"
#include "lights/spot_light.h"
#include "lights/sun_light.h"
#include "record_builder.h"
#include "xml/asset_xml_writer.h"

using namespace CorvaneCore;

namespace {

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
bool readAtBlockEnd(BaseLight& light, const std::vector<uint8_t>& bytes) {
    std::vector<uint8_t> block(QuickArchive::kBlockSize - bytes.size(), 0xEE);
    block.insert(block.end(), bytes.begin(), bytes.end());
    QuickArchive archive(block.data(), block.size());
    archive.setReadPos(QuickArchive::kBlockSize - bytes.size());
    return light.deserialize(archive);
}

bool readInBlock(BaseLight& light, const std::vector<uint8_t>& bytes) {
    QuickArchive archive(bytes.data(), bytes.size());
    return light.deserialize(archive);
}

std::vector<uint8_t> written(BaseLight& light) {
    QuickArchive out(1);
    EXPECT_TRUE(light.serialize(out));
    std::vector<uint8_t> bytes(static_cast<size_t>(out.writePos()));
    out.setReadPos(0);
    out.readBytes(bytes.data(), bytes.size());
    return bytes;
}

std::string xmlOf(BaseLight& light) {
    std::string text;
    AssetXmlWriter writer(text);
    light.writeXML(writer, {});
    return writer.stream();
}

using Make = std::function<std::shared_ptr<BaseLight>()>;

template <class Light>
Make maker() {
    return [] { return std::make_shared<Light>(); };
}

void expectWritesBackDistinctRecord(const Make& make, const Fields& fields) {
    auto light = make();
    const std::vector<uint8_t> record = fields.stored();
    ASSERT_TRUE(readInBlock(*light, record));
    EXPECT_EQ(written(*light), record);
}

// Each cut is read into a light that has just read the whole record, so that a field not reset
// by the read keeps the stored value and shows.
void expectEveryCutLeavesPastEndValues(const Make& make, const Fields& fields) {
    const std::vector<uint8_t> whole = fields.stored();
    for (size_t cut : fields.cuts()) {
        SCOPED_TRACE("cut at byte " + std::to_string(cut));
        auto read = make();
        ASSERT_TRUE(readInBlock(*read, whole));
        const std::vector<uint8_t> prefix(whole.begin(), whole.begin() + long(cut));
        ASSERT_TRUE(readAtBlockEnd(*read, prefix));
        auto expected = make();
        ASSERT_TRUE(readInBlock(*expected, fields.asCutAt(cut)));
        EXPECT_TRUE(read->isEqual(expected));
        EXPECT_EQ(written(*read), written(*expected));
        EXPECT_EQ(xmlOf(*read), xmlOf(*expected));
        if (::testing::Test::HasFailure()) return;  // the first cut that differs says enough
    }
}

// Values: colours 0.1 apart, floats and counts unlike their neighbours and their defaults,
// flags alternating.
Fields omniFields() {
    Fields s(4);
    s.color(0.1f, 0.2f, 0.3f).color(0.4f, 0.5f, 0.6f);
    s.f(0.25f, 0.005f).f(0.125f, 0).f(2.5f, 0).f(42, 30).f(3, 1);  // cutoff .. carriedScale
    s.i(2, 0).i(111, 500).i(222, 1000).i(5, 3);  // units, photon, caustic, carriedMode
    s.b(false, true).b(true, true).i(33, 8).f(1.5f, 0).transform(1);
    return s.b(false, true).b(true, true);
}

Fields spotFields() {
    Fields s(4);
    s.color(0.1f, 0.2f, 0.3f).color(0.4f, 0.5f, 0.6f).f(0.25f, 0.005f);
    s.f(11, 20).f(12, 20).f(13, 20).f(14, 20);       // barn doors
    s.f(0.125f, 0).f(2.5f, 0).f(42, 50).f(3, 1);     // bias, decay, intensity, carriedScale
    s.i(2, 0).i(111, 500).i(222, 1000).i(5, 3);      // units .. carriedMode
    s.b(false, true).b(true, false).b(false, true);  // enabled, barnDoor, shadows
    s.i(33, 8).f(1.5f, 0).transform(1).f(0.75f, 1).f(0.2f, 0);
    return s.b(false, true).b(true, true);
}

Fields rectangleFields() {
    Fields s(4);
    s.color(0.1f, 0.2f, 0.3f).color(0.4f, 0.5f, 0.6f).f(0.25f, 0.005f);
    s.f(0.125f, 0).f(42, 30).f(3, 1).i(2, 0);         // bias, intensity, scale, units
    s.i(44, 8).i(222, 1000).i(111, 500).i(5, 3);      // subdivs .. carriedMode
    s.b(true, false).b(false, false).b(true, false);  // doubleSided, invisible, lightPortal
    s.b(false, false).b(true, true).b(false, false);  // noDecay, enabled, storeWith..
    s.b(true, true).b(false, true).transform(1).f(2.5f, 1).f(3.5f, 1);
    return s.b(true, true).b(false, true).b(true, true);
}

Fields iesFields() {
    Fields s(3);
    s.transform(1).color(0.1f, 0.2f, 0.3f).color(0.4f, 0.5f, 0.6f).color(0.7f, 0.8f, 0.9f);
    s.f(0.125f, 0).f(0.25f, 0.005f).i(111, 8).i(222, 1000).i(33, 8);
    s.b(false, true).b(true, true).b(false, false).text("C:\\ies\\lamp.ies");
    return s.b(false, true).b(true, true).f(7, 1);
}

Fields sphereFields() {
    Fields s(2);
    s.transform(1).color(0.1f, 0.2f, 0.3f).color(0.4f, 0.5f, 0.6f);
    s.f(0.5f, 0).f(0.25f, 0.005f).f(2, 1).f(3, 1).i(111, 500).i(222, 1000).i(1, 0).i(33, 8);
    s.b(false, true).b(true, true).b(false, false).b(true, false).b(false, false);
    return s.b(true, true).b(false, true).b(true, true);
}

// The two lights whose transform curve ends their record: a curve of one key at time 0.
void appendCurve(Fields& s) { s.i(0x10000, 0).i(1, 0).i(8, 0).f(0, 0).f(0, 0).transform(1); }

Fields mayaFields() {
    Fields s(4);
    s.color(0.1f, 0.2f, 0.3f).color(0.4f, 0.5f, 0.6f);
    s.f(0.125f, 0).f(42, 1).f(3, 1).i(222, 1000).i(111, 500).i(5, 3);
    s.b(false, true).b(true, true).i(33, 8).f(1.5f, 0);
    appendCurve(s);
    return s;
}

Fields sunFields() {
    Fields s(4);
    s.vec(0.1f, 0.2f, 0.9f).f(0.125f, 0).f(4, 3).f(2.5f, 2).f(1.25f, 1).f(2, 1).f(60, 50);
    s.f(170, 150).f(0.5f, 0.35f).i(111, 500).i(222, 1000).i(33, 8).b(false, true);
    s.text("{0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0}").text("Noon").b(false, true).b(true, false);
    appendCurve(s);
    return s;
}

}  // namespace

TEST(LightFields, DistinctNewestRecordsAreWrittenBackInPlace) {
    expectWritesBackDistinctRecord(maker<OmniLight>(), omniFields());
    expectWritesBackDistinctRecord(maker<SpotLight>(), spotFields());
    expectWritesBackDistinctRecord(maker<RectangleLight>(), rectangleFields());
    expectWritesBackDistinctRecord(maker<IESLight>(), iesFields());
    expectWritesBackDistinctRecord(maker<SphereLight>(), sphereFields());
    expectWritesBackDistinctRecord(maker<MayaDirectLight>(), mayaFields());
    expectWritesBackDistinctRecord(maker<SunLight>(), sunFields());
}

TEST(LightFields, RecordsCutAtEveryByteLeaveWhatAReadPastTheEndGives) {
    expectEveryCutLeavesPastEndValues(maker<OmniLight>(), omniFields());
    expectEveryCutLeavesPastEndValues(maker<SpotLight>(), spotFields());
    expectEveryCutLeavesPastEndValues(maker<RectangleLight>(), rectangleFields());
    expectEveryCutLeavesPastEndValues(maker<IESLight>(), iesFields());
    expectEveryCutLeavesPastEndValues(maker<SphereLight>(), sphereFields());
}
