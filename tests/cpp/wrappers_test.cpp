// Wrapper materials: every stored version of each class assembled from its field table, the
// refused version words, failing children, which classes reset before reading, duplication
// and comparison, and each class's own XML.
#include "materials/wrappers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "material_bytes.h"
#include "materials/material.h"
#include "materials/scene_materials.h"
#include "texture_bytes.h"
#include "textures/texture.h"
#include "xml/text.h"

using namespace CorvaneCore;
using namespace material_test;

namespace {

class WrappersTest : public MaterialSetTest {};

using F = std::vector<float>;
using B = std::vector<bool>;

bool readFails(BaseMaterial& material, const RecordBuilder& record) {
    return !deserializeFrom(material, record);
}

// A record of the newest version reads, and the object writes exactly those bytes again.
void expectRoundTrip(BaseMaterial& material, const RecordBuilder& record) {
    ASSERT_TRUE(readAll(material, record));
    expectWritesBack(material, record);
}

std::string nameOf(const MaterialPtr& material) {
    return material ? wideToUtf8(material->name) : "(none)";
}

Outline ownOutline(BaseMaterial& material, const std::u16string& url = u"") {
    return outline(xmlOf(material, url));
}

// The asset urls of a bitmap texture written under `url`.
Names bitmapUrls(const std::string& url) {
    return {url + "/uvwgen/UVWGenChannel", url + "/buffer/BitmapBuffer", url};
}

}  // namespace

TEST_F(WrappersTest, FactoryMakesEveryClassWithItsId) {
    Names types;
    for (int id = 0; id <= 14; ++id) {
        // A reference (13) has no plugin type: asking ends the process.
        const std::string type = id == 13 ? "?" : wideToUtf8(createMaterial(id)->pluginType());
        types.push_back(type.empty() ? "-" : type);
    }
    EXPECT_EQ(types, words("MtlSingleBRDF MtlCORVANE MtlMulti MtlBump - Mtl2Sided - MtlSkp2Sided "
                           "MtlOverrideEnvironment MtlDisplaced MtlObjectExclusion "
                           "MtlAlphaContribution MtlAngleBlend ? MtlToon"));
    EXPECT_FALSE(createMaterial(15));
    EXPECT_FALSE(createMaterial(-3));
}

TEST_F(WrappersTest, EveryClassRefusesAnUnknownMajorAndANonZeroMinor) {
    const uint32_t newest[] = {2, 4, 2, 3, 1, 3, 1, 1, 1, 2, 3, 1, 1, 2, 2};
    for (int id = 0; id <= 14; ++id) {
        for (uint32_t word : {(newest[id] + 1) << 16, (newest[id] << 16) | 1u, 0u}) {
            EXPECT_TRUE(readFails(*createMaterial(id), section(RecordBuilder().u32(word), "X")))
                << id << " " << std::hex << word;
        }
    }
}

// The one-child wrappers, up to their first child slot: an unknown id there fails the read.
TEST_F(WrappersTest, AnUnknownChildIdFailsTheRead) {
    auto sectioned = [](uint32_t v) { return section(RecordBuilder().version(v), "X"); };
    std::pair<int, RecordBuilder> cases[] = {
        {MaterialSkp2Sided::kType, sectioned(1)},
        {MaterialOverrideEnvironment::kType, sectioned(1)},
        {MaterialDisplaced::kType, sectioned(2)},
        {MaterialObjectExclusion::kType, RecordBuilder().version(3).i32(0)},
        {MaterialAlphaContribution::kType, sectioned(1)},
        {MaterialAngleBlend::kType, sectioned(1)},
        {MaterialToon::kType, RecordBuilder().version(2)}};
    for (auto& [id, record] : cases) {
        EXPECT_TRUE(readFails(*createMaterial(id), unknownSlot(record))) << id;
    }
}

TEST_F(WrappersTest, MultiReadsBothVersionsAndSharesItsEntries) {
    RecordBuilder v1;
    plainLayered(v1.version(1).u32(2).u32(1), "A", "L");
    MaterialMulti m1;
    ASSERT_TRUE(readAll(m1, plainLayered(v1.u32(1), "B", "L").text("")));
    EXPECT_EQ(nameOf(m1.materials.at(1)), "B");
    EXPECT_EQ(m1.name, u"DefaultMaterial");
    RecordBuilder v2;
    section(plainLayered(v2.version(2).u32(1).u32(1), "A", "L"), "Multi", "u");
    MaterialMulti m2;
    expectRoundTrip(m2, v2);
    sceneMaterials()->addMaterial(std::make_shared<MaterialMulti>(m2));
    auto clone = std::static_pointer_cast<MaterialMulti>(m2.clone());
    EXPECT_EQ(clone->materials[0], m2.materials[0]);
    EXPECT_EQ(clone->name, u"Multi1");
    EXPECT_TRUE(clone->isEqual(std::make_shared<MaterialMulti>(m2)));
    EXPECT_FALSE(clone->isEqual(std::make_shared<MaterialMulti>(m1)));  // two entries, not one
    // An unknown id fails the read and keeps the entries before it; a count beyond the data
    // ends with the data.
    MaterialMulti m3;
    EXPECT_TRUE(
        readFails(m3, plainLayered(RecordBuilder().version(2).u32(3).u32(1), "Kept", "L").u32(15)));
    EXPECT_EQ(m3.materials.size(), 1u);
    RecordBuilder unknownBeforeSection;  // a whole section behind the unknown id does not save it
    section(plainLayered(unknownBeforeSection.version(2).u32(2).u32(1), "Kept", "L").u32(15),
            "Multi", "u");
    EXPECT_TRUE(readFails(m3, unknownBeforeSection));
    EXPECT_TRUE(readFails(
        m3, plainLayered(RecordBuilder().version(2).u32(0xFFFFFFFFu).u32(1), "Only", "L")));
    EXPECT_EQ(m3.materials.size(), 1u);
}

TEST_F(WrappersTest, BumpReadsEveryVersionAndWritesItsBaseAndTextureFirst) {
    // Version 1: bare name, a file path, the multiplier, then the base material.
    const auto b1 = readAs<MaterialBump>(plainLayered(
        RecordBuilder().version(1).text("Old").text("C:/bump.png").f32(0.5f).i32(1), "Base", "L"));
    EXPECT_EQ(b1.name, u"Old");
    auto bitmap = std::dynamic_pointer_cast<BitmapTexture>(b1.bump_tex);
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(std::static_pointer_cast<BitmapBuffer>(bitmap->bitmap)->file, u"C:/bump.png");
    EXPECT_EQ(nameOf(b1.base_mtl), "Base");
    // An empty path gives no texture; a base material that fails is not kept.
    MaterialBump b2;
    EXPECT_TRUE(
        readFails(b2, RecordBuilder().version(1).text("").text("").f32(1).i32(1).version(9)));
    EXPECT_FALSE(b2.base_mtl);
    EXPECT_FALSE(b2.bump_tex);
    // Version 2 holds no section: a uuid set before the read survives it, as the bump does
    // not reset before reading.
    RecordBuilder v2;
    plainLayered(bitmapSlot(v2.version(2).text("Two").f32(2), "C:/b.png").i32(1), "Base", "L");
    MaterialBump b3;
    b3.uuid = u"old";
    ASSERT_TRUE(readAll(b3, v2));
    EXPECT_EQ(b3.name, u"Two");
    EXPECT_EQ(b3.uuid, u"old");
    RecordBuilder v3;
    section(plainLayered(bitmapSlot(v3.version(3).f32(2), "C:/b.png").i32(1), "Base", "L"), "B1",
            "u1");
    MaterialBump b4;
    expectRoundTrip(b4, v3);
    const Outline own = ownOutline(b4, u"/Set");
    Names urls{"/Set/B1/Base/L", "/Set/B1/Base"};
    for (const std::string& url : bitmapUrls("/Set/B1/bump_tex/TexBitmap")) urls.push_back(url);
    urls.push_back("/Set/B1");
    EXPECT_EQ(own.urls, urls);
    EXPECT_EQ(own.parameters, words("bump_tex_mult base_mtl bump_tex"));
    EXPECT_TRUE(readFails(b4, RecordBuilder().version(3).f32(1).absent().i32(15)));
    QuickArchive out;
    EXPECT_FALSE(MaterialBump().serialize(out));  // no base material
}

TEST_F(WrappersTest, InstanceHoldsOnlyItsSectionAndIsNeverEqual) {
    auto instance = std::make_shared<MaterialInstance>();
    expectRoundTrip(*instance, section(RecordBuilder().version(1), "Inst", "u"));
    EXPECT_FALSE(instance->isEqual(instance));
    instance->instanceOf = std::make_shared<MaterialLayeredBRDF>();
    EXPECT_EQ(std::static_pointer_cast<MaterialInstance>(instance->clone())->instanceOf,
              instance->instanceOf);
    EXPECT_TRUE(ownOutline(*instance).urls.empty());
}

TEST_F(WrappersTest, TwoSidedReadsEveryVersionAndKeepsWhatOldVersionsLack) {
    Material2Sided sided;
    const std::u16string constructed = sided.name;
    sided.transparency = Color(0.25f, 0.25f, 0.25f);
    RecordBuilder v1;
    layeredSlot(layeredSlot(v1.version(1), "F"), "B").absent().color(0.1f, 0.2f, 0.3f).f32(2);
    ASSERT_TRUE(readAll(sided, v1.boolean(true)));
    EXPECT_EQ((Names{nameOf(sided.front), nameOf(sided.back)}), (Names{"F", "B"}));
    EXPECT_TRUE(sided.force_1sided);
    EXPECT_FLOAT_EQ(sided.transparency.r, 0.25f);  // not in version 1, not reset
    EXPECT_EQ(sided.name, constructed);            // no section before version 3
    RecordBuilder v2;
    layeredSlot(v2.version(2).absent(), "B").absent().color(0, 0, 0).f32(1).boolean(false);
    bitmapSlot(v2, "C:/t.png").color(0.5f, 0.5f, 0.5f).f32(3);
    Material2Sided s2;
    ASSERT_TRUE(readAll(s2, v2));
    EXPECT_TRUE(s2.transparency_tex);
    EXPECT_FLOAT_EQ(s2.transparency_tex_mult, 3);
    RecordBuilder v3;
    layeredSlot(layeredSlot(v3.version(3), "F"), "B");
    bitmapSlot(v3, "C:/a.png").color(0.1f, 0.1f, 0.1f).f32(1).boolean(false);
    section(bitmapSlot(v3, "C:/b.png").color(0.2f, 0.2f, 0.2f).f32(1), "Sign", "s");
    Material2Sided s3;
    expectRoundTrip(s3, v3);
    const Outline own = ownOutline(s3);
    Names urls = words("/Sign/F/Layer /Sign/F /Sign/B/Layer /Sign/B");
    for (const char* tex : {"translucency_tex", "transparency_tex"}) {
        for (const std::string& url : bitmapUrls("/Sign/" + std::string(tex) + "/TexBitmap")) {
            urls.push_back(url);
        }
    }
    urls.push_back("/Sign");
    EXPECT_EQ(own.urls, urls);
    EXPECT_EQ(own.parameters, words("front back translucency_tex transparency_tex translucency "
                                    "transparency translucency_tex_mult transparency_tex_mult "
                                    "force_1sided"));
    Material2Sided s4;
    EXPECT_TRUE(readFails(s4, unknownSlot(layeredSlot(RecordBuilder().version(3), "F"))));
    EXPECT_EQ(nameOf(s4.front), "F");  // children read so far stay
}

TEST_F(WrappersTest, HostTwoSidedHasOneVersionWithItsSectionFirst) {
    RecordBuilder v1;
    layeredSlot(section(v1.version(1), "Skp"), "F").absent().boolean(true);
    MaterialSkp2Sided skp;
    expectRoundTrip(skp, v1);
    EXPECT_EQ(ownOutline(skp).urls, words("/Skp/F/Layer /Skp/F /Skp"));
    MaterialSkp2Sided refused;
    EXPECT_TRUE(readFails(
        refused, layeredSlot(RecordBuilder().version(1).version(3).text("Skp").text(""), "F")));
    EXPECT_FALSE(refused.front);  // the read ends at the section
}

TEST_F(WrappersTest, OverrideEnvironmentResetsAndStoresBgBeforeGi) {
    MaterialOverrideEnvironment env;
    env.override_gi = true;
    RecordBuilder v1;
    layeredSlot(section(v1.version(1), "Env"), "Base");
    bitmapSlot(v1, "C:/bg.png").absent().absent().absent();
    v1.color(0.1f, 0.1f, 0.1f).color(0.2f, 0.2f, 0.2f).color(0.3f, 0.3f, 0.3f);
    v1.color(0.4f, 0.4f, 0.4f).floats({1, 2, 3, 4});
    v1.boolean(true).boolean(false).boolean(false).boolean(true);
    expectRoundTrip(env, v1);
    EXPECT_TRUE(env.bg_tex);
    EXPECT_FALSE(env.gi_tex);
    EXPECT_EQ((F{env.gi_color.r, env.gi_tex_mult}), (F{0.2f, 2}));
    // override_gi is reset before reading, then read as false.
    EXPECT_EQ((B{env.override_bg, env.override_gi, env.override_refract}), (B{true, false, true}));
    // Its own XML is only the base material's, under the url it was given.
    EXPECT_EQ(ownOutline(env, u"/Up").urls, words("/Up/Base/Layer /Up/Base"));
}

TEST_F(WrappersTest, DisplacedResetsBeforeReadingAndWritesOnlyItsBase) {
    MaterialDisplaced displaced;
    displaced.displace_shift = 9;
    RecordBuilder v1;
    layeredSlot(section(v1.version(1), "Disp"), "Base").absent().f32(2);
    ASSERT_TRUE(readAll(displaced, v1));
    EXPECT_EQ((F{displaced.displace_tex_mult, displaced.displace_shift}), (F{2, 0}));
    RecordBuilder v2;
    layeredSlot(section(v2.version(2), "Disp"), "Base");
    bitmapSlot(v2, "C:/d.png").floats({2, 0.5f, 8}).ints({64, 2, 3, 4});
    MaterialDisplaced d2;
    expectRoundTrip(d2, v2);
    EXPECT_EQ((std::vector<int32_t>{d2.displace_max_subdivs, d2.displace_continuity,
                                    d2.displace_view_dependent, d2.displace_use_globals}),
              (std::vector<int32_t>{64, 2, 3, 4}));
    EXPECT_EQ(ownOutline(d2, u"/Up").urls, words("/Up/Disp/Base/Layer /Up/Disp/Base"));
}

TEST_F(WrappersTest, ObjectExclusionReadsEveryVersion) {
    MaterialObjectExclusion e1;
    const std::u16string constructed = e1.name;
    RecordBuilder v1;
    layeredSlot(v1.version(1).i32(1), "Base").u32(2).text("Wall").text("Roof");
    ASSERT_TRUE(readAll(e1, v1));
    EXPECT_EQ(e1.objects, (std::vector<std::u16string>{u"Wall", u"Roof"}));
    EXPECT_EQ(e1.name, constructed);  // version 1 has no section
    MaterialObjectExclusion e2;
    e2.short_circuit = false;
    ASSERT_TRUE(readAll(e2, section(RecordBuilder().version(2).i32(0).absent().u32(0), "Ex")));
    EXPECT_EQ(e2.name, u"Ex");
    EXPECT_TRUE(e2.short_circuit);  // reset before reading
    RecordBuilder v3;
    section(layeredSlot(v3.version(3).i32(1), "Base").u32(1).text("a<b"), "Ex").boolean(false);
    MaterialObjectExclusion e3;
    expectRoundTrip(e3, v3);
    const std::u16string text = xmlOf(e3);
    EXPECT_EQ(outline(text).parameters, words("base_mtl mode short_circuit objects"));
    EXPECT_NE(text.find(u"listType=\"\" label=\"objects\">"), std::u16string::npos);
    EXPECT_NE(text.find(u"<string>\"a<b\"</string>"), std::u16string::npos);
}

TEST_F(WrappersTest, ObjectExclusionEntriesPastTheEndReadAsEmpty) {
    // A version 1 record of exactly one block whose last four bytes are the count 1: the base
    // material's name fills the space between the mode and the count.
    RecordBuilder probe;
    const size_t fixed = layeredSlot(probe.version(1).i32(0), "").size();
    RecordBuilder full;
    layeredSlot(full.version(1).i32(0), std::string(4092 - fixed, 'B')).u32(1);
    ASSERT_EQ(full.size(), QuickArchive::kBlockSize);
    MaterialObjectExclusion atEnd;
    ASSERT_TRUE(deserializeFrom(atEnd, full));
    EXPECT_EQ(atEnd.objects, std::vector<std::u16string>{u""});
    const std::u16string text = xmlOf(atEnd);
    const size_t entry = text.find(u"<string>\"\"</string>\n");
    ASSERT_NE(entry, std::u16string::npos);
    EXPECT_EQ(text.find(u"<string>", entry + 1), std::u16string::npos);  // one entry only

    // A count far beyond the data: the zeros behind the record in its block read as empty
    // entries, four bytes each, and the loop stops after one entry past the block's end.
    MaterialObjectExclusion huge;
    const RecordBuilder record =
        RecordBuilder().version(1).i32(0).absent().u32(0xFFFFFFFFu).text("x");
    QuickArchive archive = record.archive();
    ASSERT_TRUE(huge.deserialize(archive));
    EXPECT_EQ(archive.remaining(), 0u);
    ASSERT_EQ(huge.objects.size(), 1 + (QuickArchive::kBlockSize - record.size() + 3) / 4 + 1);
    EXPECT_EQ(huge.objects.front(), u"x");
    EXPECT_EQ(std::count(huge.objects.begin(), huge.objects.end(), u""),
              long(huge.objects.size() - 1));
}

TEST_F(WrappersTest, AlphaContributionStoresTheMultiplierFirst) {
    RecordBuilder v1;
    bitmapSlot(layeredSlot(section(v1.version(1), "Alpha"), "Base"), "C:/a.png");
    MaterialAlphaContribution alpha;
    expectRoundTrip(alpha, v1.f32(0.25f).f32(0.75f));
    EXPECT_EQ((F{alpha.alpha_tex_mult, alpha.alpha}), (F{0.25f, 0.75f}));
    EXPECT_EQ(ownOutline(alpha).parameters, words("alpha alpha_tex_mult base_mtl alpha_tex"));
}

TEST_F(WrappersTest, AngleBlendHasOneVersion) {
    MaterialAngleBlend blend;
    RecordBuilder v1;
    expectRoundTrip(blend,
                    layeredSlot(section(v1.version(1), "Blend").absent(), "Two").f32(10).f32(20));
    EXPECT_FALSE(blend.mtl_one);
}

TEST_F(WrappersTest, ToonReadsBothVersionsAndNamesItsOwnParameters) {
    RecordBuilder v1;
    layeredSlot(v1.version(1), "Base").f32(2).f32(1).absent().f32(0.5f).f32(1).absent();
    v1.f32(0.1f).f32(1).absent().color(1, 0, 0).f32(1).absent();
    section(v1.floats({0.9f, 0.01f, 0.6f, 2}).boolean(false).boolean(true), "Toon");
    MaterialToon t1;
    t1.doSilhouetteMult = true;
    ASSERT_TRUE(readAll(t1, v1));
    EXPECT_EQ((F{t1.lineWidth, t1.line_units, t1.silhouetteMult}), (F{2, 2, 1.5f}));
    EXPECT_FALSE(t1.doSilhouetteMult);  // reset, and not in version 1
    RecordBuilder v2;
    layeredSlot(v2.version(2), "Base").f32(2).f32(1);
    bitmapSlot(v2, "C:/w.png").f32(0.5f).f32(1).absent().f32(0.1f).f32(1).absent();
    bitmapSlot(v2.color(1, 0, 0).f32(1), "C:/c.png");
    section(v2.floats({0.9f, 0.01f, 0.6f, 2}).boolean(false).boolean(true), "Toon");
    MaterialToon t2;
    expectRoundTrip(t2, v2.boolean(true).f32(3));
    EXPECT_FLOAT_EQ(t2.silhouetteMult, 3);
    const Outline own = ownOutline(t2);
    EXPECT_EQ(own.parameters,
              words("base_mtl color_tex distort_tex opacity_tex width_tex color color_tex_mult "
                    "distort distort_tex_mult opacity opacity_tex_mult width width_tex_mult "
                    "z_threshold trace_bias normal_threshold line_units silhouette_mult "
                    "do_secondary divide_by_distance do_silhouette_mult"));
    EXPECT_EQ(own.urls[own.urls.size() - 2], "/Toon/width_tex/TexBitmap");
    EXPECT_EQ(own.urls[own.urls.size() - 5], "/Toon/color_tex/TexBitmap");
}

TEST_F(WrappersTest, CloneDuplicatesChildrenUnderNewNamesAndCopyKeepsThem) {
    RecordBuilder v1;
    layeredSlot(layeredSlot(section(v1.version(1), "Blend"), "One"), "Two").f32(10).f32(20);
    auto blend = std::make_shared<MaterialAngleBlend>();
    ASSERT_TRUE(readAll(*blend, v1));
    sceneMaterials()->addMaterial(blend);
    sceneMaterials()->addMaterial(blend->mtl_one);
    auto clone = std::static_pointer_cast<MaterialAngleBlend>(blend->clone());
    EXPECT_EQ((Names{nameOf(clone), nameOf(clone->mtl_one), nameOf(clone->mtl_two)}),
              (Names{"Blend1", "One1", "Two"}));
    EXPECT_NE(clone->mtl_one, blend->mtl_one);
    EXPECT_TRUE(clone->isEqual(blend));
    auto copy = std::static_pointer_cast<MaterialAngleBlend>(blend->copy());
    EXPECT_EQ((Names{nameOf(copy), nameOf(copy->mtl_one)}), (Names{"Blend", "One"}));
    EXPECT_NE(copy->mtl_one, blend->mtl_one);
    copy->stop_angle = std::nanf("");
    EXPECT_TRUE(copy->isEqual(blend));  // a NaN is never unequal
    copy->mtl_two.reset();
    EXPECT_FALSE(copy->isEqual(blend));
    EXPECT_FALSE(copy->isEqual(std::make_shared<Material2Sided>()));
}

// Every wrapper with a base material: a clone or a copy holds its own duplicate of it.
TEST_F(WrappersTest, ClonesAndCopiesOfEveryWrapperOwnTheirBaseMaterial) {
    auto check = [](auto wrapper) {
        SCOPED_TRACE(wrapper->getType());
        wrapper->base_mtl = createMaterial(MaterialLayeredBRDF::kType);
        for (const MaterialPtr& twin : {wrapper->clone(), wrapper->copy()}) {
            auto& base = static_cast<decltype(*wrapper)&>(*twin).base_mtl;
            ASSERT_TRUE(base);
            EXPECT_NE(base, wrapper->base_mtl);
            EXPECT_TRUE(base->isEqual(wrapper->base_mtl));
        }
    };
    check(std::make_shared<MaterialBump>());
    check(std::make_shared<MaterialOverrideEnvironment>());
    check(std::make_shared<MaterialDisplaced>());
    check(std::make_shared<MaterialObjectExclusion>());
    check(std::make_shared<MaterialAlphaContribution>());
    check(std::make_shared<MaterialToon>());
}
