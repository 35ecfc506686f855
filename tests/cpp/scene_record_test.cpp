#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "convert/conversions.h"
#include "fake_host.h"
#include "lights/sun_light.h"
#include "materials/scene_materials.h"
#include "options_stream_builder.h"
#include "upgrade/skp_module.h"

using namespace CorvaneCore;
using options_test::StreamBuilder;
using options_test::valueOf;

namespace {

// Stored scene records assembled byte by byte from the field tables of the scene record, the
// options record, the material set, the sun and the sky.

// An options record of the newest layout (0x17, minor 1). Numeric rows hold their row number,
// so img_width (row 13) is 13 and the image filter type (row 11) is 11.
void appendOptions(StreamBuilder& b) {
    options_test::OptionsStream options;
    options.channels = {101, 102};  // Diffuse, Reflection
    b.append(options_test::buildOptions(options));
}

// A layered material of version 4 without layers: list, double_sided, options A to C, the
// base section (version 2: name, uuid), option D.
void appendLayeredMaterial(StreamBuilder& b, const std::string& name, const std::string& uuid) {
    b.u32(0x40000).u32(0).i32(0).i32(0).i32(1).i32(1);
    b.u32(0x20000).text(name).text(uuid);
    b.i32(0);
}

// Material set version 2: the materials (type id, stream), then the uuid table.
void appendMaterialSet(StreamBuilder& b, const std::string& name, const std::string& uuid) {
    b.u32(0x20000).u32(1);
    b.i32(1);
    appendLayeredMaterial(b, name, uuid);
    b.u32(1).text(uuid).text(name);
}

// A sun light of version 3: plain transform, the fields of version 1, id and name, the two flags.
void appendSunV3(StreamBuilder& b, const std::string& id, const std::string& name,
                 float turbidity) {
    b.u32(0x30000);
    options_test::appendDoubleTransform(b, 1.0f);  // twelve floats, as a transform is stored
    b.f32(0).f32(0).f32(1);                        // up_vector
    b.f32(0.0f).f32(turbidity).f32(2.0f).f32(1.0f).f32(1.0f).f32(50.0f).f32(150.0f).f32(0.35f);
    b.i32(500).i32(1000).i32(8).boolean(true);
    b.text(id).text(name);
    b.boolean(true).boolean(false);
}

// A sky of version 1 without a sun of its own.
void appendSkyV1(StreamBuilder& b) { b.u32(0x10000).boolean(false); }

// The objects of each major, in the order the scene record holds them.
StreamBuilder sceneRecord(uint32_t major, float sunTurbidity = 7.5f) {
    StreamBuilder b;
    b.u32(major << 16);
    appendOptions(b);
    if (major >= 2) appendMaterialSet(b, "Brick", "uuid-brick");
    if (major == 3 || major == 4) appendSunV3(b, "{stored-sun-id}", "Stored", sunTurbidity);
    if (major == 4) appendSkyV1(b);
    return b;
}

// Reads a record into the scene; also tells whether the read stopped at the record's end.
bool readScene(const StreamBuilder& b, bool* consumedAll = nullptr) {
    QuickArchive archive = b.archive();
    const bool ok = readSceneRecord(archive);
    if (consumedAll) *consumedAll = archive.readPos() == b.size();
    return ok;
}

// Watches for the upgrade check: the pass's first host call is the active model. A record
// changes the shared default sun and the module's options; both are put back afterwards so no
// other test sees them.
class SceneRecordTest : public ::testing::Test {
protected:
    void SetUp() override {
        host.model = nullptr;  // the check stops at once, as with no model open
        SkpMaterialEditor::instance().setHost(&host);
    }
    void TearDown() override {
        SkpMaterialEditor::instance().setHost(nullptr);
        *defaultSunLight() = savedSun;
        SkpModule::instance().options = savedOptions;
    }

    upgrade_test::FakeHost host;
    const SunLight savedSun = *defaultSunLight();
    const AllOptions savedOptions = SkpModule::instance().options;
};

}  // namespace

TEST_F(SceneRecordTest, EveryMajorReadsItsObjectsToTheEnd) {
    for (uint32_t major = 1; major <= 6; ++major) {
        SCOPED_TRACE(major);
        sceneMaterials()->clear();
        SkpModule::instance().options.setDefaults();
        host.activeModelCalls = 0;
        bool consumedAll = false;
        ASSERT_TRUE(readScene(sceneRecord(major), &consumedAll));
        EXPECT_TRUE(consumedAll);
        EXPECT_EQ(SkpModule::instance().options.output.img_width, 13);
        if (major == 1) {
            EXPECT_TRUE(sceneMaterials()->materials().empty());  // only the options
        } else {
            ASSERT_TRUE(sceneMaterials()->findByName(u"brick"));
            EXPECT_EQ(sceneMaterials()->findByUuid(u"uuid-brick"),
                      sceneMaterials()->findByName(u"Brick"));
        }
        // Only the upgraded layout skips the upgrade check.
        EXPECT_EQ(host.activeModelCalls, major == 6 ? 0 : 1);
    }
}

TEST_F(SceneRecordTest, DefaultSunTakesTheStoredFieldsButKeepsItsIdAndName) {
    for (uint32_t major : {3u, 4u}) {
        SCOPED_TRACE(major);
        ASSERT_TRUE(readScene(sceneRecord(major, 6.25f)));
        const auto sun = defaultSunLight();
        EXPECT_EQ(sun->sunId, kDefaultSunId);
        EXPECT_EQ(sun->sunName, kDefaultSunName);
        EXPECT_FLOAT_EQ(sun->turbidity, 6.25f);
    }
}

TEST_F(SceneRecordTest, RefusedWordsLeaveTheDefaultOptions) {
    ASSERT_TRUE(readScene(sceneRecord(6)));
    ASSERT_EQ(SkpModule::instance().options.output.img_width, 13);
    for (uint32_t word : {0x70000u, 0x20001u, 0x0u}) {
        SCOPED_TRACE(word);
        StreamBuilder changed = sceneRecord(2);
        std::memcpy(changed.data.data(), &word, 4);  // little-endian hosts only
        EXPECT_FALSE(readScene(changed));
        EXPECT_EQ(SkpModule::instance().options.output.img_width, 800);
        EXPECT_EQ(SkpModule::instance().options.imageFilterType, 5);
    }
    EXPECT_EQ(host.activeModelCalls, 0);
}

TEST_F(SceneRecordTest, PartlyReadRecordLeavesWhatWasReadForTheDocument) {
    // Options in full, then a material set with a word of an unknown version.
    StreamBuilder b;
    b.u32(0x20000);
    appendOptions(b);
    b.u32(0x30000);
    EXPECT_FALSE(readScene(b));
    EXPECT_EQ(host.activeModelCalls, 0);

    // The document's frame is checked in options_xml_test.cpp.
    const std::string doc = optionsDocument().value();
    EXPECT_EQ(valueOf(doc, "SettingsOutput", "img_width"), "13");
    EXPECT_EQ(valueOf(doc, "SettingsRenderChannels", "channel_names"),
              "<list><entry>Diffuse</entry><entry>Reflection</entry></list>");
}

TEST_F(SceneRecordTest, AChildThatFailsStaysInItsSlotForTheDocument) {
    // Options of major 9 whose refract_tex is an AColorTexture of a version it does not know.
    options_test::OptionsStream options;
    options.major = 9;
    options.refractChild = StreamBuilder().i32(5).u32(0x20000);
    StreamBuilder b;
    b.u32(0x10000).append(options_test::buildOptions(options));
    EXPECT_FALSE(readScene(b));

    const std::string doc = optionsDocument().value();
    const std::string url = "/SettingsEnvironment/refract_texture/TexAColor";
    const size_t asset =
        doc.find("<Asset layout=\"\" renderer=\"ombra\" type=\"texture\" url=\"" + url + "\" >\n");
    ASSERT_NE(asset, std::string::npos) << doc;
    std::string flat;  // the texture's asset on one line, without indentation
    for (const std::string& line :
         options_test::lines(doc.substr(asset, doc.find("</Asset>", asset) - asset))) {
        const size_t text = line.find_first_not_of(' ');
        if (text != std::string::npos) flat += line.substr(text);
    }
    EXPECT_NE(flat.find("<ombraplugin name=\"TexAColor\" type=\"texture\">"), std::string::npos);
    EXPECT_NE(flat.find("name=\"texture\" handler=\"default\" listType=\"none\" "
                        "label=\"texture\"><value><r>1</r><g>1</g><b>1</b><a>1</a></value>"),
              std::string::npos)
        << flat;
    EXPECT_EQ(valueOf(doc, "SettingsEnvironment", "refract_tex"), url);
    EXPECT_EQ(valueOf(doc, "SettingsEnvironment", "refract_mult"), "58.25");  // refractTexMult
}

TEST_F(SceneRecordTest, RefusedSunFailsTheRecordAfterTheMaterials) {
    StreamBuilder b;
    b.u32(0x30000);
    appendOptions(b);
    appendMaterialSet(b, "Stone", "uuid-stone");
    b.u32(0x50000);  // no sun version 5
    QuickArchive archive = b.archive();
    ReadTrace trace;
    EXPECT_FALSE(readSceneRecord(archive, &trace));
    EXPECT_FALSE(trace.failureText().empty());
    EXPECT_TRUE(sceneMaterials()->findByName(u"Stone"));
    EXPECT_EQ(host.activeModelCalls, 0);
}

TEST(SkpModuleTest, SerializeWritesNothing) {
    QuickArchive archive(1);
    EXPECT_FALSE(SkpModule::instance().serialize(archive));
    EXPECT_EQ(archive.writePos(), 0u);
}
