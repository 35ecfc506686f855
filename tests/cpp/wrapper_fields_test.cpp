// The wrappers' declared field lists: every object a wrapper record holds names its version in
// the read trace, a used wrapper read again or reset holds the table's defaults, and refused
// reads stop and reset where the class says.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "archive/read_helpers.h"
#include "archive/read_trace.h"
#include "material_bytes.h"
#include "materials/wrappers.h"
#include "xml/text.h"

using namespace CorvaneCore;
using namespace material_test;

namespace {

class WrapperFieldsTest : public MaterialSetTest {};

constexpr uint32_t kSectionWord = 0x20000;

// The newest record of each wrapper class, from its field table, with a layered material in
// the first material slot and a bitmap in the first texture slot where the class has them.
std::vector<std::pair<int, RecordBuilder>> newestRecords() {
    std::vector<std::pair<int, RecordBuilder>> records;
    auto add = [&](int type) -> RecordBuilder& {
        return records.emplace_back(type, RecordBuilder()).second;
    };
    RecordBuilder& multi = add(MaterialMulti::kType);
    section(plainLayered(multi.version(2).u32(1).u32(1), "Entry", "L"), "Multi");
    RecordBuilder& bump = add(MaterialBump::kType);
    section(plainLayered(bitmapSlot(bump.version(3).f32(0.5f), "C:/b.png").i32(1), "Base", "L"),
            "Bump");
    section(add(MaterialInstance::kType).version(1), "Instance");
    RecordBuilder& sided = add(Material2Sided::kType);
    layeredSlot(sided.version(3), "Front").absent();
    bitmapSlot(sided, "C:/t.png").color(0.1f, 0.2f, 0.3f).f32(2).boolean(true);
    section(sided.absent().color(0.4f, 0.5f, 0.6f).f32(3), "Sided");
    RecordBuilder& host = add(MaterialSkp2Sided::kType);
    layeredSlot(section(host.version(1), "Host"), "Front").absent().boolean(true);
    RecordBuilder& env = add(MaterialOverrideEnvironment::kType);
    bitmapSlot(layeredSlot(section(env.version(1), "Env"), "Base"), "C:/bg.png");
    env.absent().absent().absent();
    env.color(1, 0, 0).color(0, 1, 0).color(0, 0, 1).color(1, 1, 1).floats({2, 3, 4, 5});
    env.boolean(true).boolean(false).boolean(true).boolean(false);
    RecordBuilder& displaced = add(MaterialDisplaced::kType);
    bitmapSlot(layeredSlot(section(displaced.version(2), "Disp"), "Base"), "C:/d.png");
    displaced.floats({2, 0.5f, 8}).ints({64, 0, 0, 0});
    RecordBuilder& exclusion = add(MaterialObjectExclusion::kType);
    layeredSlot(exclusion.version(3).i32(1), "Base").u32(2).text("a").text("b");
    section(exclusion, "Excl").boolean(false);
    RecordBuilder& alpha = add(MaterialAlphaContribution::kType);
    bitmapSlot(layeredSlot(section(alpha.version(1), "Alpha"), "Base"), "C:/a.png");
    alpha.f32(2).f32(0.5f);
    RecordBuilder& blend = add(MaterialAngleBlend::kType);
    layeredSlot(section(blend.version(1), "Blend"), "One").absent().f32(10).f32(20);
    RecordBuilder& toon = add(MaterialToon::kType);
    bitmapSlot(layeredSlot(toon.version(2), "Base").f32(2).f32(3), "C:/w.png");
    toon.f32(0.5f).f32(1).absent().f32(0.25f).f32(1).absent();
    toon.color(1, 0, 0).f32(1).absent().floats({0.9f, 0.01f, 0.6f, 2}).boolean(false);
    section(toon.boolean(true), "Toon").boolean(true).f32(3);
    return records;
}

// Reads `record` into a fresh object of `type` with a trace attached.
bool readTraced(int type, const RecordBuilder& record, ReadTrace& trace, MaterialPtr& out) {
    out = createMaterial(type);
    QuickArchive archive = record.archive();
    archive.setTrace(&trace);
    const bool ok = readTracedObject(archive, *out);
    EXPECT_EQ(archive.readPos(), record.size()) << "type " << type;
    return ok;
}

// A toon whose every field differs from the table's default.
RecordBuilder usedToonRecord() {
    RecordBuilder r;
    layeredSlot(r.version(2), "Base").f32(2).f32(3);
    bitmapSlot(r, "C:/w.png").f32(0.5f).f32(2).absent().f32(0.25f).f32(2).absent();
    r.color(1, 0, 0).f32(2).absent().floats({0.9f, 0.01f, 0.6f, 2}).boolean(false);
    return section(r.boolean(true), "Used", "u").boolean(true).f32(3);
}

}  // namespace

TEST_F(WrapperFieldsTest, EveryObjectOfEveryWrapperRecordShowsItsVersionWord) {
    for (auto& [type, record] : newestRecords()) {
        ReadTrace trace;
        MaterialPtr material;
        ASSERT_TRUE(readTraced(type, record, trace, material)) << type;
        // Children under every class but the instance, which holds only its section.
        ASSERT_GT(trace.nodes().size(), type == MaterialInstance::kType ? 0u : 1u) << type;
        for (const ReadTrace::Node& node : trace.nodes()) {
            EXPECT_FALSE(node.versionWords.empty()) << type << " " << node.className;
        }
        // The wrapper's own word, then its Base section's, wherever the section stands.
        const uint32_t own = record.data[0] | record.data[1] << 8 | record.data[2] << 16 |
                             uint32_t(record.data[3]) << 24;
        EXPECT_EQ(trace.nodes()[0].versionWords, (std::vector<uint32_t>{own, kSectionWord}))
            << type;
        expectWritesBack(*material, record);
    }
}

// The walk goes on into base_mtl of a one-child wrapper and both children of a two-child one,
// empty slots included; a multi-material and an instance end it.
TEST_F(WrapperFieldsTest, TheWalkEntersEveryChildMaterialSlot) {
    std::vector<std::string> walked;
    for (auto& [type, record] : newestRecords()) {
        MaterialPtr material = createMaterial(type);
        ASSERT_TRUE(readAll(*material, record)) << type;
        std::string names;
        for (const MaterialPtr& child : material->walkedMaterials()) {
            names += child ? wideToUtf8(child->name) + " " : "- ";
        }
        walked.push_back(names);
    }
    EXPECT_EQ(walked, (std::vector<std::string>{"", "Base ", "", "Front - ", "Front - ", "Base ",
                                                "Base ", "Base ", "Base ", "One - ", "Base "}));
}

TEST_F(WrapperFieldsTest, AUsedToonReadAgainOrResetHoldsTheTableDefaults) {
    MaterialToon toon;
    ASSERT_TRUE(readAll(toon, usedToonRecord()));
    ASSERT_TRUE(toon.doSilhouetteMult);
    // Version 1 ends with the section: the two fields behind it go back to their defaults.
    RecordBuilder v1;
    layeredSlot(v1.version(1), "Base").f32(2).f32(3).absent().f32(0.5f).f32(2).absent();
    v1.f32(0.25f).f32(2).absent().color(1, 0, 0).f32(2).absent();
    section(v1.floats({0.9f, 0.01f, 0.6f, 2}).boolean(false).boolean(true), "Old");
    ASSERT_TRUE(readAll(toon, v1));
    EXPECT_FALSE(toon.doSilhouetteMult);
    EXPECT_FLOAT_EQ(toon.silhouetteMult, 1.5f);
    EXPECT_FALSE(toon.lineWidthTex);

    toon.setDefaults();
    EXPECT_EQ(toon.name, u"Old");  // setDefaults leaves the name alone
    EXPECT_TRUE(toon.isEqual(std::make_shared<MaterialToon>()));
    EXPECT_FALSE(toon.base_mtl);
    const std::vector<float> floats = {
        toon.lineWidth, toon.lineWidthTexMult, toon.opacity,          toon.opacityTexMult,
        toon.distort,   toon.distortTexMult,   toon.lineColorTexMult, toon.zThreshold,
        toon.traceBias, toon.normalThreshold,  toon.line_units,       toon.silhouetteMult};
    EXPECT_EQ(floats, (std::vector<float>{1.5f, 1, 1, 1, 0, 1, 1, 0.95f, 0.02f, 0.7f, 1, 1.5f}));
    EXPECT_TRUE(toon.doSecondary);
    EXPECT_FALSE(toon.divideByDist);
}

TEST_F(WrapperFieldsTest, UsedTwoSidedAndBumpResetEverythingTheirTablesHold) {
    Material2Sided sided;
    ASSERT_TRUE(readAll(sided, newestRecords()[3].second));
    ASSERT_TRUE(sided.front && sided.translucency_tex && sided.force_1sided);
    // An older record does not reset first: version 1 leaves the transparency fields as read.
    RecordBuilder v1;
    layeredSlot(v1.version(1).absent(), "Back").absent().color(0, 0, 0).f32(1).boolean(false);
    ASSERT_TRUE(readAll(sided, v1));
    EXPECT_FLOAT_EQ(sided.transparency_tex_mult, 3);
    EXPECT_TRUE(sided.front);  // an absent slot leaves the child in place
    sided.setDefaults();
    EXPECT_EQ(sided.name, u"Sided");
    EXPECT_TRUE(sided.isEqual(std::make_shared<Material2Sided>()));
    EXPECT_FALSE(sided.front || sided.back || sided.translucency_tex || sided.transparency_tex);
    EXPECT_FLOAT_EQ(sided.transparency_tex_mult, 1);
    EXPECT_FLOAT_EQ(sided.translucency.r, 0);

    MaterialBump bump;
    ASSERT_TRUE(readAll(bump, newestRecords()[1].second));
    bump.uuid = u"kept?";
    bump.setDefaults();  // the bump resets its name and uuid too
    EXPECT_NE(bump.name, u"Bump");
    EXPECT_TRUE(bump.uuid.empty());
    EXPECT_FALSE(bump.base_mtl || bump.bump_tex);
    EXPECT_FLOAT_EQ(bump.bump_tex_mult, 1);
}

// A failing section ends the read there: the fields behind it are not read and keep their
// defaults, those ahead of it stay as read, and the trace names the section's word.
TEST_F(WrapperFieldsTest, AToonWhoseSectionFailsStopsAtTheSection) {
    RecordBuilder r;
    layeredSlot(r.version(2), "Base").f32(2).f32(3).absent().f32(0.5f).f32(2).absent();
    r.f32(0.25f).f32(2).absent().color(1, 0, 0).f32(2).absent();
    r.floats({0.9f, 0.01f, 0.6f, 2}).boolean(false).boolean(true);
    const uint64_t sectionAt = r.size();
    r.version(3).text("Never").text("").boolean(true).f32(3);
    ReadTrace trace;
    MaterialPtr material;
    QuickArchive archive = r.archive();
    archive.setTrace(&trace);
    material = std::make_shared<MaterialToon>();
    const std::u16string constructed = material->name;
    EXPECT_FALSE(readTracedObject(archive, *material));
    EXPECT_EQ(archive.readPos(), sectionAt + 4);
    const auto& toon = static_cast<MaterialToon&>(*material);
    EXPECT_EQ(toon.base_mtl->name, u"Base");
    EXPECT_FLOAT_EQ(toon.line_units, 2);
    EXPECT_TRUE(toon.divideByDist);
    EXPECT_FALSE(toon.doSilhouetteMult);
    EXPECT_FLOAT_EQ(toon.silhouetteMult, 1.5f);
    EXPECT_EQ(toon.name, constructed);
    EXPECT_TRUE(trace.nodes()[0].refused);
    EXPECT_EQ(trace.nodes()[0].versionWords, (std::vector<uint32_t>{0x20000, 0x30000}));
    EXPECT_NE(trace.failureText().find("0x30000"), std::string::npos) << trace.failureText();
}

// Classes that reset do so ahead of the version word, so a refused word leaves defaults; the
// others keep everything.
TEST_F(WrapperFieldsTest, ARefusedVersionWordResetsOnlyTheClassesThatResetFirst) {
    const RecordBuilder refused = RecordBuilder().version(9);
    for (auto& [type, record] : newestRecords()) {
        MaterialPtr used = createMaterial(type);
        ASSERT_TRUE(readAll(*used, record)) << type;
        const MaterialPtr before = used->copy();
        EXPECT_FALSE(deserializeFrom(*used, refused)) << type;
        const bool resets = type >= MaterialOverrideEnvironment::kType;
        if (type == MaterialInstance::kType) continue;  // never equal, and holds no fields
        EXPECT_EQ(used->isEqual(createMaterial(type)), resets) << type;
        EXPECT_EQ(used->isEqual(before), !resets) << type;
    }
}
