#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "archive/read_helpers.h"
#include "archive/read_trace.h"
#include "convert/conversions.h"
#include "options/all_options.h"
#include "options/cameras.h"
#include "options/options_file.h"
#include "options_stream_builder.h"
#include "xml/asset_xml_writer.h"
#include "xml/text.h"

using namespace CorvaneCore;
using namespace options_test;

namespace {

// Whether a record of type T accepts a stream holding nothing but `word`.
template <class T>
bool acceptsWord(uint32_t word) {
    QuickArchive archive(1);
    archive.write(word);
    T record;
    return record.deserialize(archive);
}

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

std::string tempPath(const char* name) {
    return ::testing::TempDir() + name + std::to_string(::getpid());
}

long fileSize(const std::string& path) {
    std::ifstream in(path, std::ios::binary | std::ios::ate);
    return in ? static_cast<long>(in.tellg()) : -1;
}

}  // namespace

// A row added with major `since` holds its stored value from that major on, its default before.
#define EXPECT_SINCE(field, stored, since) \
    EXPECT_EQ(o.field, major >= (since) ? (stored) : defaults.field) << #field

TEST(AllOptionsBinary, EveryMajorReadsToItsEndWithTheRowsItHas) {
    const AllOptions defaults;
    for (uint32_t major = 0; major <= 0x17; major = major == 9 ? 0x10 : major + 1) {
        SCOPED_TRACE(major);
        AllOptions o;  // used before: nothing of the newest record may stay
        ASSERT_TRUE(readAll(o, buildOptions({0x17})));
        ASSERT_TRUE(readAll(o, buildOptions({major})));
        EXPECT_EQ(o.environment.gi_color, Color(0.4f, 0.5f, 0.6f));  // rows every major has
        EXPECT_FLOAT_EQ(o.output.img_imageAspect, rowFloat(31));
        EXPECT_EQ(o.path(OptionPath::CausticsAutoSaveFile), u"p45");
        EXPECT_SINCE(options.batch_render, 47, 1);
        EXPECT_SINCE(view.override_focal_dist, 20, 2);
        EXPECT_SINCE(renderChannels.zdepth_clamp, 34, 4);
        EXPECT_SINCE(view.physical_on, 22, 5);
        EXPECT_SINCE(camera.subdivs, 9, 5);
        EXPECT_SINCE(view.override_focal_length, 23, 6);
        EXPECT_SINCE(environment.use_refract, 60, 9);
        EXPECT_SINCE(dr.on, 63, 0x10);
        EXPECT_SINCE(carried18, rowFloat(65), 0x11);
        EXPECT_SINCE(carried19, 67, 0x13);
        EXPECT_SINCE(dr.folder, std::u16string(u"p70"), 0x14);
        EXPECT_SINCE(carried20, 71, 0x16);
        EXPECT_SINCE(view.specify_film_width, 72, 0x17);
        if (major == 5) {  // rows of majors 7 and 8 are not there yet
            EXPECT_FLOAT_EQ(o.carried17, 0.0f);
            EXPECT_FLOAT_EQ(o.colorMapping.input_gamma, 2.2f);
        }
    }
}

TEST(AllOptionsBinary, CurrentMajorRoundTrips) {
    AllOptions o;
    ASSERT_TRUE(readAll(o, buildOptions({0x17})));

    // The camera was stored in its old form, so rewrite it the way the reader holds it.
    QuickArchive out(1);
    ASSERT_TRUE(o.serialize(out));
    AllOptions again;
    out.setReadPos(0);
    ASSERT_TRUE(again.deserialize(out));
    EXPECT_EQ(out.readPos(), out.writePos());
    EXPECT_EQ(again.carried18, o.carried18);
    EXPECT_EQ(again.channels, o.channels);
    EXPECT_EQ(again.params.carried.carried16, 173);
    EXPECT_FLOAT_EQ(again.camera.focus_distance.getValue(0.0), 300.0f);
}

TEST(AllOptionsBinary, EveryRecordRefusesTheWordsItDoesNotKnow) {
    // AllOptions: minor 0 of any major; majors 10 to 15 and past 0x17 (the known ones read above).
    for (uint32_t major = 0; major <= 0x18; ++major) {
        SCOPED_TRACE(major);
        EXPECT_FALSE(acceptsWord<AllOptions>(major << 16));
        const bool known = major <= 9 || (major >= 0x10 && major <= 0x17);
        if (!known) {
            EXPECT_FALSE(acceptsWord<AllOptions>((major << 16) | 1));
        }
    }
    for (uint32_t word : {0x50001u, 0x60000u, 0x0u}) {
        EXPECT_FALSE(acceptsWord<CorvaneParams>(word)) << std::hex << word;
    }
    EXPECT_FALSE(acceptsWord<CorvaneOFBStampInfo>(0x30000));
    EXPECT_FALSE(acceptsWord<CorvaneFrameData>(0x20000));
    EXPECT_FALSE(acceptsWord<PhysicalCamera>(0x30000));
    EXPECT_FALSE(acceptsWord<PhysicalCamera>(0x20001));
    EXPECT_FALSE(acceptsWord<RenderView>(0x40000));
}

TEST(AllOptionsBinary, ChannelListExtendsBeforeMajor15AndReplacesFrom15) {
    AllOptions older;
    ASSERT_TRUE(readAll(older, buildOptions({0x14})));
    EXPECT_EQ(older.channels, (std::vector<int32_t>{126, 125, 1, 2}));
    AllOptions newer;
    ASSERT_TRUE(readAll(newer, buildOptions({0x15})));
    EXPECT_EQ(newer.channels, (std::vector<int32_t>{1, 2}));
    OptionsStream none{0x15};
    none.channels.clear();
    ASSERT_TRUE(readAll(newer, buildOptions(none)));
    EXPECT_TRUE(newer.channels.empty());
}

TEST(AllOptionsBinary, HugeChannelCountStopsAtTheEndOfTheData) {
    OptionsStream s;
    s.channelCount = 0xFFFFFFFFu;  // then one id, and the data ends
    s.channels = {7};
    AllOptions o;
    deserializeFrom(o, buildOptions(s));
    ASSERT_FALSE(o.channels.empty());
    EXPECT_EQ(o.channels.front(), 7);
    EXPECT_LE(o.channels.size(), QuickArchive::kBlockSize / 4);
}

TEST(AllOptionsBinary, LongPathIsCutAndFullyConsumed) {
    OptionsStream s;
    s.firstPath = std::string(3000, 'x');
    AllOptions o;
    ASSERT_TRUE(readAll(o, buildOptions(s)));
    EXPECT_EQ(o.path(OptionPath::ImageFile), std::u16string(2047, u'x'));
    EXPECT_EQ(o.path(OptionPath::OmImageFile), u"p37");
}

// The cut counts 16-bit units, so a path of surrogate pairs loses the low half of its last
// pair, which the XML shows as U+FFFD.
TEST(AllOptionsBinary, PathOfSurrogatePairsIsCutAt2047Units) {
    const std::string grin = "\xF0\x9F\x98\x80";  // U+1F600, two units
    OptionsStream s;
    s.firstPath.clear();
    for (int i = 0; i < 1024; ++i) s.firstPath += grin;
    AllOptions o;
    ASSERT_TRUE(readAll(o, buildOptions(s)));
    const std::u16string& path = o.path(OptionPath::ImageFile);
    ASSERT_EQ(path.size(), 2047u);
    EXPECT_EQ(path[2045], u'\xDE00');
    EXPECT_EQ(path[2046], u'\xD83D');
    std::string expected;
    for (int i = 0; i < 1023; ++i) expected += grin;
    EXPECT_EQ(valueOf(optionsDocument(o).value(), "SettingsOutput", "img_file"),
              expected + "\xEF\xBF\xBD");
}

TEST(AllOptionsBinary, UnknownTextureTypeEndsTheRead) {
    OptionsStream s;
    s.bgTexturePresent = true;
    AllOptions o;
    EXPECT_FALSE(deserializeFrom(o, buildOptions(s)));
}

// The overrides themselves show in the default document: options_xml_test.cpp.
TEST(AllOptionsBinary, SetDefaultsPutsBackWhatTheConstructorSets) {
    AllOptions o;
    o.params.options.mtl_maxDepth = 9;
    o.params.files.lightCacheFile = "cache.lc";
    o.channels = {3};
    o.setDefaults();
    EXPECT_FALSE(o.params.files.lightCacheFile.has_value());
    AllOptions fresh;
    EXPECT_EQ(optionsDocument(o), optionsDocument(fresh));
    float threshold = o.params.dmcSampler.adaptive_threshold;
    uint32_t bits = 0;
    std::memcpy(&bits, &threshold, 4);
    EXPECT_EQ(bits, 0x3C23D70Au);  // the float nearest 0.01, which the document shows rounded
}

// ---------------------------------------------------------------- groups

// Rows keep their table numbers, so a misaligned read shows in the rows around a version's own.
TEST(CorvaneParamsBinary, EveryVersionReadsToItsEndWithTheRowsItHas) {
    const CorvaneParams defaults;
    for (uint32_t major = 1; major <= 5; ++major) {
        SCOPED_TRACE(major);
        StreamBuilder b;
        appendParams(b, major);
        CorvaneParams o;
        ASSERT_TRUE(readAll(o, b));
        EXPECT_FLOAT_EQ(o.imageSampler.dmc_threshold, rowFloat(6));
        EXPECT_EQ(o.files.irradianceFile, std::optional<std::string>("p69"));
        EXPECT_EQ(o.photonMap.bounces, 78);
        EXPECT_EQ(o.files.causticsAutoSaveFile, std::optional<std::string>("p123"));
        EXPECT_EQ(o.carried.carried16, 173);
        EXPECT_SINCE(dmcSampler.path_sampler_type, 2, 2);  // row 140 held 140: clamped
        EXPECT_SINCE(colorMapping.subpixel_mapping, 144, 3);
        EXPECT_SINCE(colorMapping.gamma, rowFloat(145), 4);
        EXPECT_SINCE(irradianceMap.detail_radius, rowFloat(75), 5);
        EXPECT_SINCE(irradianceMap.detail_scale, 77, 5);
    }
}

TEST(CorvaneParamsBinary, EmptyStoredPathKeepsTheOldOneAndNullWritesEmpty) {
    CorvaneParams p;
    p.files.photonFile = "old.vrpmap";
    p.files.causticsFile.reset();
    QuickArchive archive(1);
    ASSERT_TRUE(p.serialize(archive));
    CorvaneParams q;
    q.files.causticsFile = "kept.caustics";
    ASSERT_TRUE(q.deserialize(archive));
    EXPECT_EQ(q.files.photonFile, std::optional<std::string>("old.vrpmap"));
    // deserialize starts from the defaults, where the path is null.
    EXPECT_FALSE(q.files.causticsFile.has_value());
}

TEST(StampInfoBinary, BothVersionsReadTheFontAndAnEmptyTextReplacesTheDefault) {
    for (uint32_t major : {1u, 2u}) {
        SCOPED_TRACE(major);
        StreamBuilder b;
        appendStamp(b, major, "");
        b.i32(77);  // whatever follows must not be eaten
        QuickArchive archive = b.archive();
        CorvaneOFBStampInfo stamp;
        ASSERT_TRUE(stamp.deserialize(archive));
        EXPECT_EQ(stamp.stampText, "");
        EXPECT_EQ(stamp.stampMode, 3);
        EXPECT_EQ(stamp.stampFont[0], 'A');
        EXPECT_EQ(stamp.stampFont[59], 'A' + 59 % 26);
        int32_t next = 0;
        archive.read(next);
        EXPECT_EQ(next, 77);
    }
}

// ---------------------------------------------------------------- cameras

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

// A version 1 view whose archive ends right after its transform: the three reals stored as
// floats read as zero past the end, whatever the view held before.
TEST(RenderView, VersionOneCutAfterItsTransformStartsItsRealsAtZero) {
    StreamBuilder b;
    b.u32(0x10000);
    appendTransform(b, 7.0f);
    QuickArchive archive;  // the record fills the block's end, nothing follows it
    const std::string filler(QuickArchive::kBlockSize - b.size(), '\0');
    archive.writeBytes(filler.data(), filler.size());
    archive.writeBytes(b.bytes().data(), b.size());
    archive.setReadPos(QuickArchive::kBlockSize - b.size());
    RenderView view;
    view.realB.resetTo(5.0f);
    ASSERT_TRUE(view.deserialize(archive));
    EXPECT_FLOAT_EQ(view.transform.getValue(0.0).offset.x, 7.0f);
    EXPECT_EQ(view.fov.getValue(0.0), 0.0f);
    EXPECT_EQ(view.realB.getValue(0.0), 0.0f);
    EXPECT_EQ(view.realC.getValue(0.0), 0.0f);
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

    std::string text;
    AssetXmlWriter writer(text);
    back.writeXML(writer, u"/views");
    const std::string xml = writer.stream();
    EXPECT_EQ(xml.rfind("  <Asset layout=\"\" renderer=\"ombra\" type=\"settings\" "
                        "url=\"/views/RenderView\" >\n",
                        0),
              0u);
    EXPECT_NE(xml.find("name=\"img_width\" handler=\"default\" listType=\"none\" "
                       "label=\"img_width\">\n            <value>1024</value>"),
              std::string::npos);
}

// ---------------------------------------------------------------- options file

TEST(CorOptFile, WritesWholeBlocksAndReadsThemBack) {
    const std::string path = tempPath("roundtrip.coropt");
    AllOptions options;
    options.output.img_width = 1920;
    options.channels = {126, 125, 117};
    options.dr.folder = u"\\\\server\\assets";
    // Two long paths make the stream span a block edge.
    options.path(OptionPath::OmImageFile) = std::u16string(2000, u'q');
    options.path(OptionPath::ImageFile) = std::u16string(2000, u'r');
    options.camera.focal_length.setValue(85.0f, 0.0);
    CorOptFile file;
    ASSERT_TRUE(file.write(options, utf8ToWide(path)));
    const long size = fileSize(path);
    EXPECT_GT(size, 4096);
    EXPECT_EQ(size % 4096, 0);

    AllOptions back;
    ASSERT_TRUE(file.read(back, utf8ToWide(path)));
    EXPECT_EQ(optionsDocument(back), optionsDocument(options));  // every written field
    std::remove(path.c_str());
}

TEST(CorOptFile, RefusesEmptyAndMissingFiles) {
    const std::string path = tempPath("empty.coropt");
    { std::ofstream create(path, std::ios::binary); }
    AllOptions options;
    CorOptFile file;
    EXPECT_FALSE(file.read(options, utf8ToWide(path)));
    std::remove(path.c_str());
    EXPECT_FALSE(file.read(options, utf8ToWide(path)));
    EXPECT_FALSE(file.write(options, u"/nonexistent-dir/x.coropt"));
}

TEST(CorOptFile, RefusesDirectoriesAndOtherNonRegularFiles) {
    AllOptions options;
    options.output.img_width = 1234;
    CorOptFile file;
    EXPECT_FALSE(file.read(options, utf8ToWide(::testing::TempDir())));
    EXPECT_FALSE(file.read(options, u"."));
    EXPECT_EQ(options.output.img_width, 1234);  // nothing was read
}

// ---------------------------------------------------------------- read trace

namespace {

const ReadTrace::Node& onlyNode(const ReadTrace& trace) {
    EXPECT_EQ(trace.nodes().size(), 1u);
    return trace.nodes().front();
}

template <class T>
ReadTrace traceOf(T& object, const StreamBuilder& b, bool& ok) {
    ReadTrace trace;
    QuickArchive archive = b.archive();
    archive.setTrace(&trace);
    ok = readTracedObject(archive, object);
    return trace;
}

}  // namespace

// The record's own word comes first, then those of the groups inside it in stream order.
TEST(OptionsTrace, EachRecordShowsItsOwnVersionWordFirst) {
    AllOptions options;
    bool ok = false;
    ReadTrace trace = traceOf(options, buildOptions(OptionsStream(0x17)), ok);
    ASSERT_TRUE(ok);
    const ReadTrace::Node& node = onlyNode(trace);
    EXPECT_EQ(node.className, "AllOptions");
    // options, params 5, frame data 1, stamp 2, camera 1 (its curves as plain floats)
    EXPECT_EQ(node.versionWords,
              (std::vector<uint32_t>{0x170001, 0x50000, 0x10000, 0x20000, 0x10000}));

    StreamBuilder unknown;
    unknown.u32(0xA0001);
    trace = traceOf(options, unknown, ok);
    EXPECT_FALSE(ok);
    EXPECT_EQ(onlyNode(trace).versionWords, std::vector<uint32_t>{0xA0001});
    EXPECT_EQ(trace.failureText(), "AllOptions refused the read at version word 0xA0001 (byte 0)");
}

// Cameras and their curves report their words too, so a refusal names the curve's word.
TEST(OptionsTrace, CamerasAndTheirCurvesShowTheirVersionWords) {
    StreamBuilder view;
    view.u32(0x30000).ints({1, 2, 11, 22, 3, 4, 5, 6}).ints({640, 480});
    appendRealCurve(view, 0.5f, 1.0f);
    appendRealCurve(view, 2.0f, 3.0f);
    appendRealCurve(view, 4.0f, 5.0f);
    view.u32(0x10000).u32(1).u32(8).f64(0.0).boolean(true);  // the flag
    view.u32(0x10000).u32(1).u32(8).f64(0.0);                // the transform
    appendTransform(view, 1.0f);
    RenderView renderView;
    bool ok = false;
    ReadTrace trace = traceOf(renderView, view, ok);
    ASSERT_TRUE(ok);
    EXPECT_EQ(onlyNode(trace).versionWords,
              (std::vector<uint32_t>{0x30000, 0x10000, 0x10000, 0x10000, 0x10000, 0x10000}));

    StreamBuilder camera;
    camera.u32(0x20000).i32(0).f32(36.0f).u32(0x20000);  // a curve of an unknown version
    PhysicalCamera physical;
    trace = traceOf(physical, camera, ok);
    EXPECT_FALSE(ok);
    EXPECT_EQ(onlyNode(trace).versionWords, (std::vector<uint32_t>{0x20000, 0x20000}));
    EXPECT_NE(trace.failureText().find("at version word 0x20000 (byte 12)"), std::string::npos);
}
