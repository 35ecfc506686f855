// The per-frame record and the stamp record as whole blocks: their default streams written out
// from the field tables, and a frame record of all-distinct values read, written back and
// written as XML parameter by parameter, so that a changed default, a dropped or swapped field
// shows wherever it lands.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "material_bytes.h"
#include "options/options_groups.h"
#include "record_builder.h"

using namespace CorvaneCore;
using namespace material_test;

namespace {

// Twelve floats from `first` on: three matrix columns, then the offset.
void countingTransform(RecordBuilder& b, float first) {
    for (int i = 0; i < 12; ++i) b.f32(first + static_cast<float>(i));
}

// The frame record with every field distinct from its neighbours, in table order.
RecordBuilder distinctFrameRecord() {
    RecordBuilder b;
    b.u32(0x10000).f64(0.5).f64(1.5).f64(2.5).i32(3);
    countingTransform(b, 10.0f);
    countingTransform(b, 30.0f);
    b.floats({4.5f, 5.5f, 6.5f});                         // fov, nearRange, farRange
    b.floats({7.5f, 8.5f, 9.5f});                         // focal_dist, aperture, rotation
    b.i32(11).floats({12.5f, 13.5f});                     // clippingPlanes, clipNear, clipFar
    b.i32(14).f32(15.5f).i32(16);                         // projType, zoomFractor, infiniteProj
    b.f32(17.5f).i32(18).floats({19.5f, 20.5f}).i32(22);  // height, auto_fit, dist, curve, ortho
    for (int i = 0; i < 6; ++i) {
        const float base = static_cast<float>(i);
        b.color(base + 0.125f, base + 0.25f, base + 0.375f);
    }
    b.floats({23.5f, 24.5f, 25.5f, 26.5f});  // region
    b.ints({27, 28, 29, 30, 31, 32, 33, 34});
    b.f32(35.5f).ints({36, 37, 38}).floats({39.5f, 40.5f});
    return b;
}

std::string transformParameter(const char* name, int first) {
    std::string s = open("transform", name);
    for (int v = first; v < first + 12; v += 3) {
        s += vectorLines(std::to_string(v).c_str(), std::to_string(v + 1).c_str(),
                         std::to_string(v + 2).c_str());
    }
    return s + kClose;
}

std::string frameDocument(CorvaneFrameData& frame) {
    std::string text;
    AssetXmlWriter writer(text);
    writer.openAssets();
    frame.writeXML(writer, {});
    writer.closeAssets();
    return writer.stream();
}

std::vector<uint8_t> written(CorvaneSerializable& object) {
    QuickArchive out(1);
    EXPECT_TRUE(object.serialize(out));
    std::vector<uint8_t> bytes(static_cast<size_t>(out.writePos()));
    out.setReadPos(0);
    if (!bytes.empty()) out.readBytes(bytes.data(), bytes.size());
    return bytes;
}

}  // namespace

TEST(FrameData, DefaultStreamHoldsTheTableDefaults) {
    RecordBuilder expected;
    expected.u32(0x10000).f64(0.0).f64(0.0).f64(1.0).i32(0);
    for (int i = 0; i < 24; ++i) expected.f32(0.0f);  // both transforms all zero
    expected.floats({0.0f, 0.0f, 0.0f});              // fov, nearRange, farRange
    expected.f32(200.0f).u32(0x3DCCCCCD).f32(0.0f);   // focal_dist, aperture, rotation
    expected.i32(0).floats({0.0f, 0.0f}).i32(0).f32(1.0f).i32(0);
    expected.f32(400.0f).i32(1).floats({2.0f, 1.0f}).i32(0);
    for (int i = 0; i < 6; ++i) expected.color(0.0f, 0.0f, 0.0f);
    expected.floats({0.0f, 0.0f, 0.0f, 0.0f}).ints({0, 0, 0, 0, 0, 0, 0, 0});
    expected.f32(1.0f).ints({3, 0, 0}).floats({1.0f, 1.0f});
    CorvaneFrameData fresh;
    EXPECT_EQ(written(fresh), expected.data);

    // setDefaults brings a read record back to the same stream.
    CorvaneFrameData used;
    ASSERT_TRUE(deserializeFrom(used, distinctFrameRecord()));
    used.setDefaults();
    EXPECT_EQ(written(used), expected.data);
}

TEST(FrameData, DistinctFieldsAreReadAndWrittenBackInPlace) {
    CorvaneFrameData frame;
    const RecordBuilder record = distinctFrameRecord();
    ASSERT_TRUE(readAll(frame, record));
    expectWritesBack(frame, record);
}

TEST(FrameData, XmlBlockListsItsParametersInOrder) {
    CorvaneFrameData frame;
    ASSERT_TRUE(deserializeFrom(frame, distinctFrameRecord()));
    const std::string expected =
        assetHead("settings", "/FrameData", "FrameData") + plain("float", "t", "0.5") +
        plain("float", "frameStart", "1.5") + plain("float", "frameEnd", "2.5") +
        plain("integer", "currentFrame", "3") + transformParameter("worldToCam", 10) +
        transformParameter("camToWorld", 30) + plain("float", "fov", "4.5") +
        plain("float", "nearRange", "5.5") + plain("float", "farRange", "6.5") +
        plain("integer", "clippingPlanes", "11") + plain("float", "clipNear", "12.5") +
        plain("float", "clipFar", "13.5") + plain("integer", "projType", "14") +
        plain("float", "zoomFractor", "15.5") + plain("integer", "infiniteProj", "16") +
        plain("integer", "orthoAdjustToScene", "22") + color("ambient", "0.125", "0.25", "0.375") +
        color("background", "1.125", "1.25", "1.375") +
        color("globalLightLevel", "2.125", "2.25", "2.375") +
        color("ombraGIBackground", "3.125", "3.25", "3.375") +
        color("ombraRRBackground", "4.125", "4.25", "4.375") +
        color("ombraRefractBackground", "5.125", "5.25", "5.375") +
        plain("float", "devAspect", "35.5") + plain("integer", "fieldMask", "36") +
        plain("integer", "fieldOrder", "37") + plain("integer", "firstField", "38") + kAssetTail;
    EXPECT_EQ(frameDocument(frame), document(expected));
}

TEST(StampInfo, DefaultStreamHoldsTheDefaultTextAndAnEmptyFont) {
    RecordBuilder expected;
    expected.u32(0x20000).ints({0, 0, 0});
    expected.text("Ombra Core %ombracore | Render Time %rendertime |");
    expected.u32(60).raw(std::string(60, '\0'));
    CorvaneOFBStampInfo fresh;
    EXPECT_EQ(written(fresh), expected.data);

    RecordBuilder stored;
    stored.u32(0x20000).ints({1, 2, 3}).text("mine").u32(60).raw(std::string(60, 'f'));
    CorvaneOFBStampInfo used;
    ASSERT_TRUE(readAll(used, stored));
    expectWritesBack(used, stored);
    used.setDefaults();
    EXPECT_EQ(written(used), expected.data);
}
