#include "options/cameras.h"

#include <gtest/gtest.h>

#include <string>

#include "options_stream_builder.h"
#include "xml/asset_xml_writer.h"
#include "xml/text.h"

using namespace CorvaneCore;
using options_test::appendCameraV1;
using options_test::StreamBuilder;

namespace {

void appendRealCurve(StreamBuilder& b, float atZero, float atOne) {
    b.u32(0x10000).u32(2).u32(8).boolean(true);
    b.f64(0.0).f32(atZero).f64(1.0).f32(atOne);
}

void appendTransform(StreamBuilder& b, float offsetX) {
    b.floats({2, 0, 0, 0, 2, 0, 0, 0, 2, offsetX, 0, 0});
}

// Render and crop rectangles, fov, the two reals, the image size and the flag.
void appendViewFields(StreamBuilder& b, bool flag) {
    b.ints({1, 2, 11, 22, 3, 4, 5, 6}).floats({0.5f, 2.0f, 3.0f}).ints({640, 480}).boolean(flag);
}

}  // namespace

TEST(PhysicalCamera, VersionOneStoresTheAnimatedValuesAsFloats) {
    StreamBuilder b;
    appendCameraV1(b, 55.0f, 321.0f);
    PhysicalCamera camera;
    ASSERT_TRUE(readAll(camera, b));
    EXPECT_FLOAT_EQ(camera.focal_length.getValue(0.0), 55.0f);
    EXPECT_FLOAT_EQ(camera.focus_distance.getValue(0.0), 321.0f);
    EXPECT_EQ(camera.targeted, 1);  // the row right after the second float
    EXPECT_EQ(camera.subdivs, 9);
}

TEST(PhysicalCamera, VersionTwoReadsTheCurvesAndRoundTrips) {
    StreamBuilder b;
    b.u32(0x20000).i32(0).f32(36.0f);
    appendRealCurve(b, 30.0f, 60.0f);
    b.f32(1).f32(0).f32(8).f32(0).f32(30).f32(180).f32(0).f32(0).f32(100).i32(1);
    appendRealCurve(b, 500.0f, 700.0f);
    b.i32(0).f32(200).f32(0).i32(1).color(1, 1, 1).i32(1).i32(0).i32(5).f32(0).f32(0).f32(0);
    b.i32(0).i32(1).i32(4);
    PhysicalCamera camera;
    ASSERT_TRUE(readAll(camera, b));
    EXPECT_FLOAT_EQ(camera.focal_length.getValue(0.5), 45.0f);
    EXPECT_FLOAT_EQ(camera.focus_distance.getValue(1.0), 700.0f);

    expectWritesBack(camera, b);
}

// The refused version words of both classes: options_binary_test.cpp.
TEST(PhysicalCamera, RefusesABrokenCurve) {
    PhysicalCamera camera;
    StreamBuilder b;
    b.u32(0x20000).i32(0).f32(36.0f).u32(0x10000).u32(1).u32(4);  // key size 4
    EXPECT_FALSE(deserializeFrom(camera, b));
}

// Version 1 leads with a plain transform and inverts the flag; version 2 ends with a curve.
TEST(RenderView, VersionsOneAndTwoPlaceTheTransformAtEitherEnd) {
    StreamBuilder b;
    b.u32(0x10000);
    appendTransform(b, 7.0f);
    appendViewFields(b, false);
    RenderView view;
    ASSERT_TRUE(readAll(view, b));
    EXPECT_FLOAT_EQ(view.transform.getValue(0.0).offset.x, 7.0f);
    EXPECT_EQ(view.cropRegion.bottom, 6);
    EXPECT_FLOAT_EQ(view.realC.getValue(0.0), 3.0f);
    EXPECT_EQ(view.img_height, 480);
    EXPECT_TRUE(view.flagD.getValue(0.0));  // stored false

    StreamBuilder v2;
    v2.u32(0x20000);
    appendViewFields(v2, true);
    v2.u32(0x10000).u32(1).u32(8).f64(0.0);  // a transform curve of one key
    appendTransform(v2, 9.0f);
    ASSERT_TRUE(readAll(view, v2));
    EXPECT_FALSE(view.flagD.getValue(0.0));
    EXPECT_FLOAT_EQ(view.transform.getValue(0.0).offset.x, 9.0f);
    EXPECT_FLOAT_EQ(view.transform.getValue(0.0).m.v[1].y, 2.0f);
}

TEST(RenderView, VersionThreeRoundTripsAndWritesItsSize) {
    RenderView view;
    view.img_width = 1024;
    view.img_height = 768;
    view.realB.setValue(4.0f, 1.0);
    view.flagD.setValue(true, 2.0);
    QuickArchive archive(1);
    ASSERT_TRUE(view.serialize(archive));
    RenderView back;
    ASSERT_TRUE(back.deserialize(archive));
    EXPECT_EQ(archive.readPos(), archive.writePos());
    EXPECT_EQ(back.img_width, 1024);
    EXPECT_FLOAT_EQ(back.realB.getValue(1.0), 4.0f);
    EXPECT_FALSE(back.flagD.getValue(0.0));
    EXPECT_TRUE(back.flagD.getValue(2.0));

    std::wstring text;
    AssetXmlWriter writer(text);
    back.writeXML(writer, L"/views");
    const std::string xml = wideToUtf8(text);
    EXPECT_EQ(xml.rfind("  <Asset layout=\"\" renderer=\"ombra\" type=\"settings\" "
                        "url=\"/views/RenderView\" >\n",
                        0),
              0u);
    EXPECT_NE(xml.find("name=\"img_width\" handler=\"default\" listType=\"none\" "
                       "label=\"img_width\">\n            <value>1024</value>"),
              std::string::npos);
}
