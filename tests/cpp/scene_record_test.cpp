#include <gtest/gtest.h>

#include <string>

#include "convert/conversions.h"
#include "fake_host.h"
#include "lights/sun_light.h"
#include "materials/scene_materials.h"
#include "scene_bytes.h"
#include "upgrade/skp_module.h"

using namespace CorvaneCore;
using scene_test::sceneRecord;
using scene_test::StreamBuilder;

namespace {

// The text of the "value" element of the first parameter called `name` behind `block`.
std::string valueOf(const std::string& doc, const std::string& block, const std::string& name) {
    const size_t plugin = doc.find("<ombraplugin name=\"" + block + "\"");
    if (plugin == std::string::npos) return "<no block>";
    const size_t param = doc.find("name=\"" + name + "\"", plugin);
    if (param == std::string::npos) return "<no parameter>";
    const size_t open = doc.find("<value>", param);
    const size_t close = doc.find("</value>", open);
    if (open == std::string::npos || close == std::string::npos) return "<no value>";
    // Block values are compared without their line breaks and indentation.
    std::string text;
    for (char c : doc.substr(open + 7, close - open - 7)) {
        if (c != '\n' && c != ' ') text += c;
    }
    return text;
}

// Reads a record into the scene; also tells whether the read stopped at the record's end.
bool readScene(const StreamBuilder& b, bool* consumedAll = nullptr) {
    QuickArchive archive = b.archive();
    const bool ok = readSceneRecord(archive);
    if (consumedAll) *consumedAll = archive.readPos() == b.size();
    return ok;
}

// Watches for the upgrade check: the pass's first host call is the active model.
class SceneRecordTest : public ::testing::Test {
protected:
    void SetUp() override {
        host.model = nullptr;  // the check stops at once, as with no model open
        SkpMaterialEditor::instance().setHost(&host);
    }
    void TearDown() override { SkpMaterialEditor::instance().setHost(nullptr); }

    upgrade_test::FakeHost host;
};

}  // namespace

TEST_F(SceneRecordTest, MajorOneReadsOnlyTheOptions) {
    sceneMaterials()->materials.clear();
    bool consumedAll = false;
    ASSERT_TRUE(readScene(sceneRecord(1), &consumedAll));
    EXPECT_TRUE(consumedAll);
    EXPECT_EQ(SkpModule::instance().options.output.img_width, 13);
    EXPECT_EQ(SkpModule::instance().options.imageFilterType, 11);
    EXPECT_TRUE(sceneMaterials()->materials.empty());
    EXPECT_EQ(host.activeModelCalls, 1);
}

TEST_F(SceneRecordTest, EveryMajorReadsItsObjectsToTheEnd) {
    for (uint32_t major = 2; major <= 6; ++major) {
        SCOPED_TRACE(major);
        host.activeModelCalls = 0;
        bool consumedAll = false;
        ASSERT_TRUE(readScene(sceneRecord(major), &consumedAll));
        EXPECT_TRUE(consumedAll);
        EXPECT_EQ(SkpModule::instance().options.output.img_height, 12);
        ASSERT_TRUE(sceneMaterials()->findByName(L"brick"));
        EXPECT_EQ(sceneMaterials()->findByUuid(L"uuid-brick"),
                  sceneMaterials()->findByName(L"Brick"));
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
        StreamBuilder b = sceneRecord(2);
        StreamBuilder changed;
        changed.u32(word).raw(b.bytes().substr(4));
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
    scene_test::appendOptions(b);
    b.u32(0x30000);
    EXPECT_FALSE(readScene(b));
    EXPECT_EQ(host.activeModelCalls, 0);

    const std::string doc = optionsDocument();
    // One outer "Assets" element around the blocks.
    EXPECT_EQ(doc.substr(0, doc.find('\n') + 1), "  <Assets>\n");
    EXPECT_EQ(doc.substr(doc.rfind('\n', doc.size() - 2) + 1), "  </Assets>\n");
    EXPECT_EQ(valueOf(doc, "SettingsOutput", "img_width"), "13");
    EXPECT_EQ(valueOf(doc, "SettingsOutput", "img_height"), "12");
    EXPECT_EQ(valueOf(doc, "SettingsImageFilter", "type"), "11");
    EXPECT_EQ(valueOf(doc, "SettingsRenderChannels", "channel_names"),
              "<list><entry>Diffuse</entry><entry>Reflection</entry></list>");
}

TEST_F(SceneRecordTest, RefusedSunFailsTheRecordAfterTheMaterials) {
    StreamBuilder b;
    b.u32(0x30000);
    scene_test::appendOptions(b);
    scene_test::appendMaterialSet(b, "Stone", "uuid-stone");
    b.u32(0x50000);  // no sun version 5
    QuickArchive archive = b.archive();
    ReadTrace trace;
    EXPECT_FALSE(readSceneRecord(archive, &trace));
    EXPECT_FALSE(trace.failureText().empty());
    EXPECT_TRUE(sceneMaterials()->findByName(L"Stone"));
    EXPECT_EQ(host.activeModelCalls, 0);
}

TEST(SkpModuleTest, SerializeWritesNothing) {
    QuickArchive archive(1);
    EXPECT_FALSE(SkpModule::instance().serialize(archive));
    EXPECT_EQ(archive.writePos(), 0u);
}

TEST(SkpModuleTest, SceneOptionsAreTheModulesOptions) {
    EXPECT_EQ(&sceneOptions(), &SkpModule::instance().options);
}
