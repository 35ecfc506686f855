// The folded material output: wrappers merged into the block of the layered material they
// wrap, the layouts of two-sided, angle blend and toon materials, and references seen through.
// Records go in as bytes, the way a conversion gets them.
#include <gtest/gtest.h>

#include <string>

#include "convert/conversions.h"
#include "material_bytes.h"
#include "materials/material.h"
#include "materials/material_file.h"
#include "materials/material_linked.h"
#include "materials/wrappers.h"
#include "xml/asset_xml_writer.h"

using namespace CorvaneCore;
using namespace material_test;

namespace {

class FoldedOutputTest : public MaterialSetTest {};

// A bump wrapper (version 3) around a bare material record of type `id`.
RecordBuilder bumpAround(const std::string& name, float mult, const std::string& path, int32_t id,
                         const RecordBuilder& inner) {
    RecordBuilder r;
    bitmapSlot(r.version(3).f32(mult), path).i32(id).append(inner);
    section(r, name, "6f1c2d3e-0000-4000-8000-0000000000b1");
    return r;
}

// A layered material's folded block, at the root, with one default diffuse layer.
std::string plainBlocks(const std::string& name, const std::string& layer) {
    return diffuseBlock("/" + name + "/" + layer) + foldedHead("/" + name, {layer}) + kAssetTail;
}

}  // namespace

TEST_F(FoldedOutputTest, BumpAroundBrickTakesTheWrappersNameAndAddsItsParameters) {
    const RecordBuilder bump = bumpAround("B1", 0.8f, "C:/maps/brick_bump.png", 1, brickRecord());
    EXPECT_EQ(sampleBytes("material_type3_bump_brick.json"), bump.bytes());
    const std::string expected =
        document(bitmapBlocks("/B1/bump_tex/TexBitmap", "C:/maps/brick_bump.png") +
                 brickLayerBlocks("/B1") + foldedHead("/B1", {"BRDFDiffuse"}) +
                 plain("bool", "bump_on", "1") + plain("float", "bump_tex_mult", "0.8") +
                 plain("plugin", "bump_tex", "/B1/bump_tex/TexBitmap") + kAssetTail);
    EXPECT_EQ(convert(bump, MaterialBump::kType), expected);
}

TEST_F(FoldedOutputTest, OnlyTheOuterOfTwoNestedBumpsCounts) {
    RecordBuilder base;
    plainLayered(base, "Base", "Layer");
    const RecordBuilder inner = bumpAround("Inner", 0.25f, "C:/inner.png", 1, base);
    const RecordBuilder outer = bumpAround("Outer", 0.5f, "C:/outer.png", 3, inner);
    const std::string xml = convert(outer, MaterialBump::kType);
    const Outline out = outline(xml);
    EXPECT_EQ(out.urls, words("/Outer/bump_tex/TexBitmap/uvwgen/UVWGenChannel "
                              "/Outer/bump_tex/TexBitmap/buffer/BitmapBuffer "
                              "/Outer/bump_tex/TexBitmap /Outer/Layer /Outer"));
    EXPECT_EQ(out.parameters, words("double_sided brdfs bump_on bump_tex_mult bump_tex"));
    EXPECT_NE(xml.find("<value>0.5</value>"), std::string::npos);
    EXPECT_EQ(xml.find("inner.png"), std::string::npos);
    EXPECT_EQ(xml.find("Inner"), std::string::npos);
}

TEST_F(FoldedOutputTest, TwoSidedWritesFrontBackAndTheLayoutInThatOrder) {
    RecordBuilder r;
    layeredSlot(layeredSlot(r.version(3), "Front", "Paint"), "Back", "Primer");
    bitmapSlot(r, "C:/skipped.png").color(0.2f, 0.2f, 0.2f).f32(1).boolean(true);
    section(r.absent().color(0.5f, 0.5f, 0.5f).f32(1), "Sign");
    const std::string expected =
        document(plainBlocks("Front", "Paint") + plainBlocks("Back", "Primer") +
                 assetHead("material", "/Sign", "Mtl2Sided", "TwoSidedMatLayout") +
                 plain("plugin", "front", "/Front") + plain("plugin", "back", "/Back") +
                 color("translucency", "0.2", "0.2", "0.2") + plain("bool", "force_1sided", "1") +
                 kAssetTail);
    EXPECT_EQ(convert(r, Material2Sided::kType), expected);
}

TEST_F(FoldedOutputTest, HostTwoSidedLayoutHasItsOwnWords) {
    RecordBuilder r;
    layeredSlot(section(r.version(1), "Skp"), "Front", "Paint").absent().boolean(false);
    const std::string expected = document(
        plainBlocks("Front", "Paint") +
        assetHead("material", "/Skp", "MtlSkp2Sided", "SkpTwoSidedMatLayout") +
        plain("plugin", "front", "/Front") + plain("bool", "force_1sided", "0") + kAssetTail);
    EXPECT_EQ(convert(r, MaterialSkp2Sided::kType), expected);
}

TEST_F(FoldedOutputTest, AngleBlendWithAnEmptyFirstMaterialHasNoParameterForIt) {
    RecordBuilder r;
    layeredSlot(section(r.version(1), "Blend").absent(), "Two", "Layer").f32(75).f32(150);
    const std::string expected =
        document(plainBlocks("Two", "Layer") +
                 assetHead("material", "/Blend", "MtlAngleBlend", "AngleBlendMatLayout") +
                 plain("plugin", "mtl_two", "/Two") + plain("float", "start_angle", "75") +
                 plain("float", "stop_angle", "150") + kAssetTail);
    EXPECT_EQ(convert(r, MaterialAngleBlend::kType), expected);
}

TEST_F(FoldedOutputTest, ToonLayoutNamesItsFieldsAndWritesEverySlot) {
    RecordBuilder r;
    layeredSlot(r.version(2), "Base", "Layer").f32(1.5f).f32(1);
    bitmapSlot(r, "C:/w.png").f32(1).f32(1).absent().f32(0).f32(1).absent();
    r.color(0, 0, 0).f32(1).absent().f32(0.95f).f32(0.02f).f32(0.7f).f32(3);
    section(r.boolean(true).boolean(false), "Toon").boolean(false).f32(1.5f);
    const std::string expected = document(
        plainBlocks("Base", "Layer") + bitmapBlocks("/Toon/width_tex/TexBitmap", "C:/w.png") +
        assetHead("material", "/Toon", "MtlToon", "ToonMatLayout") +
        plain("plugin", "base_mtl", "/Base") + empty("plugin", "lineColorTex") +
        empty("plugin", "distortTex") + empty("plugin", "opacityTex") +
        plain("plugin", "lineWidthTex", "/Toon/width_tex/TexBitmap") +
        color("lineColor", "0", "0", "0") + plain("float", "lineColorTexMult", "1") +
        plain("float", "distort", "0") + plain("float", "distortTexMult", "1") +
        plain("float", "opacity", "1") + plain("float", "opacityTexMult", "1") +
        plain("float", "lineWidth", "1.5") + plain("float", "lineWidthTexMult", "1") +
        plain("float", "zThreshold", "0.95") + plain("float", "traceBias", "0.02") +
        plain("float", "normalThreshold", "0.7") + plain("float", "silhouetteMult", "1.5") +
        plain("bool", "doSecondary", "1") + plain("bool", "divideByDist", "0") +
        plain("bool", "doSilhouetteMult", "0") + kAssetTail);
    EXPECT_EQ(convert(r, MaterialToon::kType), expected);
}

TEST_F(FoldedOutputTest, DisplacedOfVersionOneFoldsWithTheLaterDefaults) {
    RecordBuilder r;
    layeredSlot(section(r.version(1), "Disp"), "Base", "Layer").absent().f32(2);
    const std::string expected = document(
        diffuseBlock("/Disp/Layer") + foldedHead("/Disp", {"Layer"}) +
        plain("bool", "displace_on", "1") + plain("float", "displace_shift", "0") +
        plain("float", "displace_edge_length", "4") + plain("float", "displace_tex_mult", "2") +
        plain("integer", "displace_max_subdivs", "256") +
        plain("integer", "displace_continuity", "1") +
        plain("integer", "displace_view_dependent", "1") +
        plain("integer", "displace_use_globals", "1") + empty("plugin", "displace_tex") +
        kAssetTail);
    EXPECT_EQ(convert(r, MaterialDisplaced::kType), expected);
}

TEST_F(FoldedOutputTest, ReferenceWithAMissingTargetFoldsItsResolvedCopy) {
    RecordBuilder r;
    section(r.version(2), "Ref").text("no-such-uuid").boolean(true).i32(1).append(brickRecord());
    EXPECT_EQ(convert(r, MaterialReference::kType), expectedBrickDocument());
    // With nothing resolved the reference gives nothing, and a layout leaves its slot out.
    EXPECT_EQ(convert(section(RecordBuilder().version(1), "Ref").text("no-such-uuid"),
                      MaterialReference::kType),
              document(""));
    RecordBuilder blend;
    section(section(blend.version(1), "Blend").boolean(true).i32(13).version(1), "Ref").text("x");
    layeredSlot(blend, "Two", "Layer").f32(75).f32(150);
    EXPECT_EQ(outline(convert(blend, MaterialAngleBlend::kType)).parameters,
              words("mtl_two start_angle stop_angle"));
}

TEST_F(FoldedOutputTest, ReferenceFoundInTheSetIsWalkedLive) {
    auto live = std::make_shared<MaterialLayeredBRDF>();
    live->name = u"Live";
    live->uuid = u"live-id";
    sceneMaterials()->addMaterial(live);
    auto reference = std::make_shared<MaterialReference>();
    reference->target = u"live-id";
    auto bump = std::make_shared<MaterialBump>();
    bump->name = u"Wrap";
    bump->base_mtl = reference;
    std::string text;
    AssetXmlWriter writer(text);
    convertMaterialTree(writer, bump);
    EXPECT_EQ(outline(writer.stream()).urls, Names{"/Wrap"});
    EXPECT_EQ(outline(writer.stream()).parameters,
              words("double_sided brdfs bump_on bump_tex_mult bump_tex"));
}

TEST_F(FoldedOutputTest, EveryWrapperKindFoldsInItsOrder) {
    RecordBuilder bump;
    plainLayered(bitmapSlot(bump.version(3).f32(1), "C:/bump.png").i32(1), "Base", "Layer");
    section(bump, "Bump");
    RecordBuilder displaced;
    section(displaced.version(2), "Disp").boolean(true).i32(3).append(bump);
    bitmapSlot(displaced, "C:/disp.png").f32(1).f32(0).f32(4).i32(256).i32(1).i32(1).i32(1);
    RecordBuilder env;
    section(env.version(1), "Env").boolean(true).i32(9).append(displaced);
    bitmapSlot(env, "C:/bg.png");
    bitmapSlot(env, "C:/gi.png").absent().absent().color(0, 0, 0).color(0, 0, 0);
    env.color(0, 0, 0).color(0, 0, 0).f32(1).f32(1).f32(1).f32(1);
    env.boolean(true).boolean(true).boolean(false).boolean(false);
    RecordBuilder exclusion;
    exclusion.version(3).i32(1).boolean(true).i32(8).append(env).u32(1).text("Wall");
    section(exclusion, "Ex").boolean(true);
    RecordBuilder alpha;
    section(alpha.version(1), "Top").boolean(true).i32(10).append(exclusion);
    bitmapSlot(alpha, "C:/alpha.png").f32(1).f32(0.5f);
    const Outline out = outline(convert(alpha, MaterialAlphaContribution::kType));
    Names urls;
    for (const char* word : {"bump_tex", "displace_tex", "gi_tex", "bg_tex", "alpha_tex"}) {
        const std::string tex = std::string("/Top/") + word + "/TexBitmap";
        urls.insert(urls.end(), {tex + "/uvwgen/UVWGenChannel", tex + "/buffer/BitmapBuffer", tex});
    }
    urls.insert(urls.end(), {"/Top/Layer", "/Top"});
    EXPECT_EQ(out.urls, urls);
    EXPECT_EQ(out.parameters,
              words("double_sided brdfs bump_on bump_tex_mult bump_tex displace_on displace_shift "
                    "displace_edge_length displace_tex_mult displace_max_subdivs "
                    "displace_continuity displace_view_dependent displace_use_globals displace_tex "
                    "gi_tex bg_tex reflect_tex refract_tex gi_color bg_color reflect_color "
                    "refract_color bg_tex_mult gi_tex_mult reflect_tex_mult refract_tex_mult "
                    "override_bg override_gi override_reflect override_refract ignore_objects "
                    "short_circuit alpha alpha_tex_mult alpha_tex"));
}

TEST_F(FoldedOutputTest, TreesWithoutALayeredMaterialGiveAnEmptyDocument) {
    RecordBuilder multi;
    section(plainLayered(multi.version(2).u32(1).u32(1), "Inside", "Layer"), "Multi");
    EXPECT_EQ(convert(multi, MaterialMulti::kType), document(""));
    EXPECT_EQ(convert(section(RecordBuilder().version(1), "Inst"), MaterialInstance::kType),
              document(""));
    EXPECT_EQ(convert(bumpAround("B", 1, "C:/b.png", 2, multi), MaterialBump::kType), document(""));
    // A linked material is transparent: its base material folds under the link's name.
    RecordBuilder linked;
    plainLayered(linked.version(1).version(1).u32(2).i32(5).i32(1), "Inner", "Layer");
    section(linked, "Link");
    EXPECT_EQ(convert(linked, MaterialLinked::kType),
              document(diffuseBlock("/Link/Layer") + foldedHead("/Link", {"Layer"}) + kAssetTail));
}
