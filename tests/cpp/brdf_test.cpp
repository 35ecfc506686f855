// BRDF layers: every stored layout assembled from the field tables, the mappings of old fields,
// refused version words, copies, comparisons and the XML blocks.
#include "materials/brdf.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>

#include "record_builder.h"
#include "textures/procedural.h"
#include "textures/texture.h"
#include "xml/asset_xml_writer.h"

using namespace CorvaneCore;

namespace {

std::wstring bitmapPathOf(const TexturePtr& texture) {
    auto bitmap = std::dynamic_pointer_cast<BitmapTexture>(texture);
    if (!bitmap) return L"<not a bitmap>";
    auto buffer = std::dynamic_pointer_cast<BitmapBuffer>(bitmap->bitmap);
    return buffer ? buffer->file : L"<no buffer>";
}

float fresnelIorOf(const TexturePtr& texture) {
    auto fresnel = std::dynamic_pointer_cast<FresnelTexture>(texture);
    return fresnel ? fresnel->fresnel_ior : NAN;
}

// A present form A slot holding a FresnelTexture of version 1 with the given index.
RecordBuilder& fresnelSlot(RecordBuilder& r, float ior) {
    return r.boolean(true).i32(1).version(1).color(1, 1, 1).color(0, 0, 0).f32(ior).f32(1.5f);
}

std::wstring xmlOf(Base_BRDF& layer, const std::wstring& url) {
    std::wstring text;
    AssetXmlWriter writer(text);
    layer.writeXML(writer, url);
    return text;
}

// Glass fields 1 to 11 with values that differ from the defaults.
RecordBuilder& glassCommon(RecordBuilder& r) {
    return r.color(0.1f, 0.2f, 0.3f)
        .color(0.4f, 0.5f, 0.6f)
        .f32(1.3f)
        .f32(1.4f)
        .f32(0.02f)
        .f32(2.0f)
        .f32(0.7f)
        .i32(3)
        .i32(16)
        .i32(1)
        .i32(2);
}

void expectGlassCommon(const Glass_BRDF& g) {
    EXPECT_EQ(g.color, Color(0.1f, 0.2f, 0.3f));
    EXPECT_EQ(g.fog_color, Color(0.4f, 0.5f, 0.6f));
    EXPECT_FLOAT_EQ(g.ior, 1.3f);
    EXPECT_FLOAT_EQ(g.secondIor, 1.4f);
    EXPECT_FLOAT_EQ(g.cutoff, 0.02f);
    EXPECT_FLOAT_EQ(g.fog_color_mult, 2.0f);
    EXPECT_FLOAT_EQ(g.glossiness, 0.7f);
    EXPECT_EQ(g.traceDepth, 3);
    EXPECT_EQ(g.subdivs, 16);
    EXPECT_EQ(g.affect_shadows, 1);
    EXPECT_EQ(g.affect_alpha, 2);
}

}  // namespace

TEST(BrdfFactory, KnowsOnlyTheSixSingleBitIds) {
    const int known[] = {1, 2, 4, 8, 16, 32};
    for (int id : known) {
        auto layer = createBRDF(id);
        ASSERT_TRUE(layer) << id;
        EXPECT_EQ(layer->getType(), id);
        EXPECT_EQ(layer->name, layer->pluginType());
        EXPECT_EQ(layer->pluginKind(), L"BRDF");
    }
    for (int id : {0, 3, 64, -1}) EXPECT_FALSE(createBRDF(id)) << id;
    EXPECT_TRUE(std::dynamic_pointer_cast<FresnelTexture>(Mirror_BRDF().transparency_tex));
    EXPECT_TRUE(std::dynamic_pointer_cast<FresnelTexture>(Phong_BRDF().transparency_tex));
}

TEST(GlassBrdf, Version1EndsAfterFieldElevenWithoutSection) {
    RecordBuilder r;
    glassCommon(r.version(1));
    Glass_BRDF glass;
    ASSERT_TRUE(readAll(glass, r));
    expectGlassCommon(glass);
    EXPECT_EQ(glass.name, L"BRDFRefraction");
    EXPECT_FLOAT_EQ(glass.transparency_tex_mult, 1.0f);
}

TEST(GlassBrdf, Versions2And3KeepTheTransparencyMultiplierInTheOldPlace) {
    RecordBuilder v2;
    glassCommon(v2.version(2)).f32(0.25f).f32(0.5f).f32(0.75f);
    v2.text("t.png").text("").text("i.png");
    Glass_BRDF glass;
    ASSERT_TRUE(readAll(glass, v2));
    expectGlassCommon(glass);
    EXPECT_FLOAT_EQ(glass.transparency_tex_mult, 0.25f);
    EXPECT_FLOAT_EQ(glass.color_tex_mult, 1.0f);
    EXPECT_FLOAT_EQ(glass.glossiness_tex_mult, 0.5f);
    EXPECT_FLOAT_EQ(glass.ior_tex_mult, 0.75f);
    EXPECT_EQ(bitmapPathOf(glass.transparency_tex), L"t.png");
    EXPECT_FALSE(glass.glossiness_tex);
    EXPECT_EQ(bitmapPathOf(glass.ior_texture), L"i.png");

    RecordBuilder v3;
    glassCommon(v3.version(3)).f32(0.25f).f32(0.5f).f32(0.75f);
    v3.text("").text("g.png").text("").i32(1).f32(20).f32(0.3f).f32(0.4f).f32(0.6f);
    v3.color(0.9f, 0.8f, 0.7f).text("tr.png");
    Glass_BRDF glass3;
    ASSERT_TRUE(readAll(glass3, v3));
    EXPECT_EQ(bitmapPathOf(glass3.glossiness_tex), L"g.png");
    EXPECT_EQ(glass3.translucency_on, 1);
    EXPECT_FLOAT_EQ(glass3.thickness, 20);
    EXPECT_FLOAT_EQ(glass3.scatter_coeff, 0.3f);
    EXPECT_FLOAT_EQ(glass3.scatter_direction, 0.4f);
    EXPECT_FLOAT_EQ(glass3.translucency_tex_mult, 0.6f);
    EXPECT_EQ(glass3.translucency, Color(0.9f, 0.8f, 0.7f));
    EXPECT_EQ(bitmapPathOf(glass3.translucency_tex), L"tr.png");
}

TEST(GlassBrdf, Version4ReadsChildSlotsInTheOldOrder) {
    RecordBuilder r;
    glassCommon(r.version(4)).f32(0.25f).f32(0.5f).f32(0.75f);
    r.i32(0).f32(10).f32(0.1f).f32(0.2f).f32(0.3f).color(0.5f, 0.5f, 0.5f);
    fresnelSlot(r, 2.5f).absent().absent().absent();
    Glass_BRDF glass;
    ASSERT_TRUE(readAll(glass, r));
    EXPECT_FLOAT_EQ(glass.transparency_tex_mult, 0.25f);
    EXPECT_FLOAT_EQ(fresnelIorOf(glass.transparency_tex), 2.5f);
    EXPECT_FALSE(glass.color_tex);
}

TEST(GlassBrdf, Versions5And6ReadTheCurrentFields) {
    auto body = [](RecordBuilder& r) -> RecordBuilder& {
        glassCommon(r).f32(0.6f).f32(0.5f).f32(0.75f);
        r.i32(1).f32(10).f32(0.1f).f32(0.2f).f32(0.3f).color(0.5f, 0.5f, 0.5f);
        fresnelSlot(r, 1.9f).absent().absent().absent();
        return r.color(0.2f, 0.3f, 0.4f).f32(0.8f).absent();
    };
    RecordBuilder v5;
    body(v5.version(5));
    Glass_BRDF glass;
    ASSERT_TRUE(readAll(glass, v5));
    EXPECT_FLOAT_EQ(glass.color_tex_mult, 0.6f);
    EXPECT_FLOAT_EQ(fresnelIorOf(glass.color_tex), 1.9f);
    EXPECT_EQ(glass.transparency, Color(0.2f, 0.3f, 0.4f));
    EXPECT_FLOAT_EQ(glass.transparency_tex_mult, 0.8f);
    EXPECT_EQ(glass.name, L"BRDFRefraction");

    RecordBuilder v6;
    body(v6.version(6)).brdfSection("Clear\tGlass\n", false, true, true);
    Glass_BRDF glass6;
    ASSERT_TRUE(readAll(glass6, v6));
    EXPECT_EQ(glass6.name, L"ClearGlass");
    EXPECT_FALSE(glass6.layerFlagA);
    EXPECT_TRUE(glass6.layerFlagB);
    EXPECT_TRUE(glass6.layerFlagC);
}

TEST(GlassBrdf, ReadResetsOnlyTheBasePart) {
    Glass_BRDF glass;
    glass.color_tex_mult = 7.0f;
    glass.name = L"Used";
    glass.layerFlagB = true;
    RecordBuilder r;
    glassCommon(r.version(1));
    ASSERT_TRUE(readAll(glass, r));
    EXPECT_FLOAT_EQ(glass.color_tex_mult, 7.0f);
    EXPECT_EQ(glass.name, L"BRDFRefraction");
    EXPECT_FALSE(glass.layerFlagB);
}

TEST(DiffuseBrdf, EveryVersion) {
    auto head = [](RecordBuilder& r, uint32_t v) -> RecordBuilder& {
        return r.version(v).color(0.1f, 0.2f, 0.3f).color(0.4f, 0.5f, 0.6f).f32(2).f32(3);
    };
    RecordBuilder v1;
    head(v1, 1).text("c.jpg").text("");
    Diffuse_BRDF d1;
    ASSERT_TRUE(readAll(d1, v1));
    EXPECT_EQ(d1.color, Color(0.1f, 0.2f, 0.3f));
    EXPECT_EQ(d1.transparency, Color(0.4f, 0.5f, 0.6f));
    EXPECT_FLOAT_EQ(d1.color_tex_mult, 2);
    EXPECT_FLOAT_EQ(d1.transparency_tex_mult, 3);
    EXPECT_EQ(bitmapPathOf(d1.color_tex), L"c.jpg");
    EXPECT_FALSE(d1.transparency_tex);

    RecordBuilder v2;
    fresnelSlot(head(v2, 2).absent(), 1.2f);
    Diffuse_BRDF d2;
    ASSERT_TRUE(readAll(d2, v2));
    EXPECT_FALSE(d2.color_tex);
    EXPECT_FLOAT_EQ(fresnelIorOf(d2.transparency_tex), 1.2f);

    RecordBuilder v3;
    head(v3, 3).absent().absent().brdfSection("Base");
    Diffuse_BRDF d3;
    ASSERT_TRUE(readAll(d3, v3));
    EXPECT_EQ(d3.name, L"Base");
    EXPECT_FALSE(d3.use_color_tex_alpha_as_transparency);

    RecordBuilder v4;
    head(v4, 4).absent().absent().brdfSection("Base").boolean(true);
    Diffuse_BRDF d4;
    ASSERT_TRUE(readAll(d4, v4));
    EXPECT_TRUE(d4.use_color_tex_alpha_as_transparency);
}

TEST(DiffuseBrdf, Version4ReadsItsLastFieldAfterAFailedSection) {
    RecordBuilder r;
    r.version(4).color(0, 0, 0).color(0, 0, 0).f32(1).f32(1).absent().absent();
    r.version(5).boolean(true);  // an unknown section version reads nothing more
    Diffuse_BRDF d;
    EXPECT_FALSE(readAll(d, r));
    EXPECT_TRUE(d.use_color_tex_alpha_as_transparency);
    EXPECT_EQ(d.name, L"BRDFDiffuse");
}

namespace {

// Fields of the old Blinn/Phong layouts up to field 8, with the fresnel pair in its places.
RecordBuilder& reflectionOldHead(RecordBuilder& r, uint32_t v, float ior, int32_t on) {
    return r.version(v)
        .color(0.9f, 0.8f, 0.7f)
        .color(0.25f, 0.5f, 1.5f)
        .f32(0.6f)
        .f32(0.7f)
        .f32(ior)
        .f32(0.05f)
        .i32(12)
        .i32(on)
        .i32(1)
        .i32(4);
}

void expectReflectionOldHead(const ReflectionBRDF& b) {
    EXPECT_EQ(b.color, Color(0.9f, 0.8f, 0.7f));
    EXPECT_EQ(b.reflectFilter, Color(0.25f, 0.5f, 1.5f));
    EXPECT_FLOAT_EQ(b.hilightGlossiness, 0.6f);
    EXPECT_FLOAT_EQ(b.reflectionGlossiness, 0.7f);
    EXPECT_FLOAT_EQ(b.cutoff, 0.05f);
    EXPECT_EQ(b.subdivs, 12);
    EXPECT_EQ(b.back_side, 1);
    EXPECT_EQ(b.traceDepth, 4);
}

}  // namespace

TEST(ReflectionBrdf, OldVersionsMapTheFresnelFields) {
    RecordBuilder v1;
    reflectionOldHead(v1, 1, 1.7f, 1);
    Blinn_BRDF b1;
    ASSERT_TRUE(readAll(b1, v1));
    expectReflectionOldHead(b1);
    EXPECT_FLOAT_EQ(fresnelIorOf(b1.transparency_tex), 1.7f);

    RecordBuilder off;
    reflectionOldHead(off, 1, 1.7f, 0);
    Phong_BRDF p1;
    ASSERT_TRUE(readAll(p1, off));
    EXPECT_FALSE(p1.transparency_tex);

    RecordBuilder v2;
    reflectionOldHead(v2, 2, 1.0f, 0).f32(2).f32(3).f32(4).text("c.png").text("").text("r.png");
    Phong_BRDF p2;
    ASSERT_TRUE(readAll(p2, v2));
    expectReflectionOldHead(p2);
    EXPECT_FLOAT_EQ(p2.color_tex_mult, 2);
    EXPECT_FLOAT_EQ(p2.hilightGlossiness_tex_mult, 3);
    EXPECT_FLOAT_EQ(p2.reflectionGlossiness_tex_mult, 4);
    EXPECT_FLOAT_EQ(p2.transparency_tex_mult, 1.0f);
    EXPECT_EQ(bitmapPathOf(p2.color_tex), L"c.png");
    EXPECT_FALSE(p2.hilightGlossiness_tex);
    EXPECT_EQ(bitmapPathOf(p2.reflectionGlossiness_tex), L"r.png");
    EXPECT_FLOAT_EQ(p2.anisotropy, 0.0f);

    RecordBuilder v3;
    reflectionOldHead(v3, 3, 1.0f, 0).f32(2).f32(3).f32(4).text("").text("").text("");
    v3.f32(0.5f).f32(45);
    Blinn_BRDF b3;
    ASSERT_TRUE(readAll(b3, v3));
    EXPECT_FLOAT_EQ(b3.anisotropy, 0.5f);
    EXPECT_FLOAT_EQ(b3.anisotropy_rotation, 45);

    RecordBuilder v4;
    reflectionOldHead(v4, 4, 2.2f, 1).f32(2).f32(3).f32(4).absent().absent().absent();
    v4.f32(0.5f).f32(45);
    Blinn_BRDF b4;
    ASSERT_TRUE(readAll(b4, v4));
    EXPECT_FLOAT_EQ(fresnelIorOf(b4.transparency_tex), 2.2f);
    EXPECT_FLOAT_EQ(b4.anisotropy_rotation, 45);
    EXPECT_EQ(b4.name, L"BRDFReflection");

    RecordBuilder v5;
    reflectionOldHead(v5, 5, 1.0f, 0).f32(2).f32(3).f32(4).absent().absent().absent();
    v5.f32(0.5f).f32(45).brdfSection("Shine");
    Phong_BRDF p5;
    ASSERT_TRUE(readAll(p5, v5));
    EXPECT_EQ(p5.name, L"Shine");
    EXPECT_FALSE(p5.transparency_tex);
}

TEST(ReflectionBrdf, Version6WithAnAbsentTransparencySlotHasNoFresnel) {
    RecordBuilder r;
    r.version(6).color(1, 1, 1).color(1, 1, 1).f32(1).f32(1).f32(0.01f).i32(8).i32(0).i32(5);
    r.f32(1).f32(1).f32(1).f32(0.3f).absent().absent().absent().absent().f32(0).f32(0);
    r.brdfSection("Plain");
    Phong_BRDF phong;
    ASSERT_TRUE(readAll(phong, r));
    EXPECT_FALSE(phong.transparency_tex);
    EXPECT_FLOAT_EQ(phong.transparency_tex_mult, 0.3f);
    EXPECT_EQ(phong.name, L"Plain");
}

TEST(MirrorBrdf, Version1FresnelFlagReplacesThePathTexture) {
    RecordBuilder r;
    r.version(1).color(1, 1, 1).color(0.5f, 0.5f, 0.5f).f32(0.9f).f32(1.6f).f32(0.02f).i32(1);
    r.i32(3).text("old.png");
    Mirror_BRDF mirror;
    ASSERT_TRUE(readAll(mirror, r));
    EXPECT_FLOAT_EQ(fresnelIorOf(mirror.transparency_tex), 1.6f);
    EXPECT_FLOAT_EQ(mirror.transparency_tex_mult, 0.9f);
    EXPECT_FLOAT_EQ(mirror.cutoff, 0.02f);
    EXPECT_EQ(mirror.mirrorMode, 3);
    EXPECT_FALSE(mirror.color_tex);
}

TEST(MirrorBrdf, LaterVersions) {
    auto head = [](RecordBuilder& r, uint32_t v) -> RecordBuilder& {
        return r.version(v)
            .color(1, 1, 1)
            .color(0.5f, 0.5f, 0.5f)
            .f32(0.9f)
            .f32(1.6f)
            .f32(0.02f)
            .i32(0)
            .i32(2);
    };
    RecordBuilder v1;
    head(v1, 1).text("kept.png");
    Mirror_BRDF m1;
    ASSERT_TRUE(readAll(m1, v1));
    EXPECT_EQ(bitmapPathOf(m1.transparency_tex), L"kept.png");

    RecordBuilder v2;
    head(v2, 2).text("a.png").f32(4).text("b.png");
    Mirror_BRDF m2;
    ASSERT_TRUE(readAll(m2, v2));
    EXPECT_EQ(bitmapPathOf(m2.transparency_tex), L"a.png");
    EXPECT_EQ(bitmapPathOf(m2.color_tex), L"b.png");
    EXPECT_FLOAT_EQ(m2.color_tex_mult, 4);

    RecordBuilder v3;
    head(v3, 3).f32(4).absent().absent();
    Mirror_BRDF m3;
    ASSERT_TRUE(readAll(m3, v3));
    EXPECT_FALSE(m3.transparency_tex);
    EXPECT_EQ(m3.mirrorMode, 2);

    RecordBuilder v4;
    head(v4, 4).f32(4).absent().absent().brdfSection("Chrome");
    Mirror_BRDF m4;
    ASSERT_TRUE(readAll(m4, v4));
    EXPECT_EQ(m4.name, L"Chrome");

    RecordBuilder v5;
    v5.version(5).color(1, 1, 1).color(0.5f, 0.5f, 0.5f).f32(0.9f).f32(0.02f).i32(2).f32(4);
    fresnelSlot(v5, 1.8f).absent().brdfSection("Chrome");
    Mirror_BRDF m5;
    ASSERT_TRUE(readAll(m5, v5));
    EXPECT_FLOAT_EQ(fresnelIorOf(m5.transparency_tex), 1.8f);
    EXPECT_FLOAT_EQ(m5.color_tex_mult, 4);
}

TEST(LightBrdf, EveryVersion) {
    RecordBuilder v1;
    v1.version(1).color(0.1f, 0.2f, 0.3f).f32(5).f32(0.5f).text("glow.png");
    Light_BRDF l1;
    ASSERT_TRUE(readAll(l1, v1));
    EXPECT_EQ(l1.color, Color(0.1f, 0.2f, 0.3f));
    EXPECT_FLOAT_EQ(l1.intensity, 5);
    EXPECT_FLOAT_EQ(l1.transparency_tex_mult, 0.5f);
    EXPECT_EQ(bitmapPathOf(l1.transparency_tex), L"glow.png");

    auto head = [](RecordBuilder& r, uint32_t v) -> RecordBuilder& {
        return r.version(v)
            .color(0.1f, 0.2f, 0.3f)
            .color(0.4f, 0.5f, 0.6f)
            .f32(5)
            .f32(2)
            .f32(3)
            .f32(0.5f);
    };
    RecordBuilder v2;
    head(v2, 2).text("c.png").text("t.png");
    Light_BRDF l2;
    ASSERT_TRUE(readAll(l2, v2));
    EXPECT_FLOAT_EQ(l2.glowLevel, 2);
    EXPECT_FLOAT_EQ(l2.color_tex_mult, 3);
    EXPECT_EQ(bitmapPathOf(l2.color_tex), L"c.png");
    EXPECT_EQ(bitmapPathOf(l2.transparency_tex), L"t.png");

    RecordBuilder v3;
    head(v3, 3).absent().absent();
    Light_BRDF l3;
    ASSERT_TRUE(readAll(l3, v3));

    RecordBuilder v4;
    head(v4, 4).absent().absent().brdfSection("Lamp");
    Light_BRDF l4;
    ASSERT_TRUE(readAll(l4, v4));
    EXPECT_EQ(l4.doubleSided, 1);

    RecordBuilder v5;
    head(v5, 5).absent().absent().brdfSection("Lamp").i32(0);
    Light_BRDF l5;
    ASSERT_TRUE(readAll(l5, v5));
    EXPECT_EQ(l5.doubleSided, 0);
}

TEST(LightBrdf, Version5StopsAtAFailedSection) {
    RecordBuilder r;
    r.version(5).color(1, 1, 1).color(0, 0, 0).f32(1).f32(1).f32(1).f32(1).absent().absent();
    r.u32(0x40001).i32(0);
    Light_BRDF light;
    QuickArchive archive = r.archive();
    EXPECT_FALSE(light.deserialize(archive));
    EXPECT_EQ(light.doubleSided, 1);
    EXPECT_EQ(archive.readPos(), r.size() - 4);
}

TEST(BrdfLayers, RefuseBadVersionWords) {
    const int currentMajor[] = {6, 4, 6, 6, 5, 5};
    const int ids[] = {1, 2, 4, 8, 16, 32};
    for (int i = 0; i < 6; ++i) {
        for (uint32_t word : {uint32_t(currentMajor[i] + 1) << 16, 0x20001u, 0u}) {
            auto layer = createBRDF(ids[i]);
            layer->name = L"Before";
            RecordBuilder r;
            r.u32(word);
            EXPECT_FALSE(deserializeFrom(*layer, r)) << ids[i] << " " << word;
            EXPECT_EQ(layer->name, layer->pluginType());
        }
    }
}

TEST(BrdfLayers, RefuseAnUnknownTextureId) {
    RecordBuilder r;
    r.version(2).color(0, 0, 0).color(0, 0, 0).f32(1).f32(1).boolean(true).i32(13);
    Diffuse_BRDF diffuse;
    EXPECT_FALSE(deserializeFrom(diffuse, r));
}

TEST(BrdfLayers, SerializeReadsBackAndClonesShareNoChild) {
    for (int id : {1, 2, 4, 8, 16, 32}) {
        auto layer = createBRDF(id);
        layer->name = L"Layer";
        layer->layerFlagC = true;
        auto* diffuse = dynamic_cast<Diffuse_BRDF*>(layer.get());
        if (diffuse) diffuse->color_tex = makeBitmapTexture(L"wall.png");
        QuickArchive archive(1);
        ASSERT_TRUE(layer->serialize(archive)) << id;
        auto back = createBRDF(id);
        ASSERT_TRUE(back->deserialize(archive)) << id;
        EXPECT_EQ(archive.readPos(), archive.writePos()) << id;
        EXPECT_EQ(back->name, L"Layer");
        EXPECT_TRUE(back->layerFlagC);
        EXPECT_TRUE(layer->isEqual(back)) << id;

        auto copy = layer->clone();
        EXPECT_TRUE(layer->isEqual(copy)) << id;
        if (diffuse) {
            auto copied = std::static_pointer_cast<Diffuse_BRDF>(copy);
            ASSERT_TRUE(copied->color_tex);
            EXPECT_NE(copied->color_tex, diffuse->color_tex);
        }
    }
}

TEST(BrdfLayers, IsEqualIgnoresNamesAndFlagsButNotFieldsOrChildren) {
    Diffuse_BRDF a, b;
    auto other = std::make_shared<Diffuse_BRDF>();
    other->name = L"Other";
    other->layerFlagA = false;
    EXPECT_TRUE(a.isEqual(other));
    other->color.g = NAN;
    EXPECT_TRUE(a.isEqual(other));
    other->color_tex_mult = 2;
    EXPECT_FALSE(a.isEqual(other));
    other->color_tex_mult = 1;
    other->transparency_tex = makeBitmapTexture(L"x.png");
    EXPECT_FALSE(a.isEqual(other));
    b.transparency_tex = makeBitmapTexture(L"x.png");
    auto bWithChild = std::make_shared<Diffuse_BRDF>(b);
    EXPECT_FALSE(a.isEqual(bWithChild));
    EXPECT_FALSE(a.isEqual(nullptr));

    auto blinn = std::make_shared<Blinn_BRDF>();
    auto phong = std::make_shared<Phong_BRDF>();
    EXPECT_FALSE(blinn->isEqual(phong));
    EXPECT_EQ(xmlOf(*blinn, L"/M"), xmlOf(*phong, L"/M"));
}

TEST(BrdfXml, DefaultMirrorWithoutTexturesWritesItsBlock) {
    Mirror_BRDF mirror;
    mirror.transparency_tex.reset();
    const std::wstring expected =
        L"  <Asset layout=\"\" renderer=\"ombra\" type=\"BRDF\" url=\"/M/BRDFReflection\" >\n"
        L"    <plugin>\n"
        L"      <ombraplugin name=\"BRDFReflection\" type=\"BRDF\">\n"
        L"        <parameters>\n"
        L"          <parameter type=\"color\" name=\"color\" handler=\"default\" listType=\"none\" "
        L"label=\"color\">\n"
        L"            <value>\n"
        L"              <r>1</r>\n"
        L"              <g>1</g>\n"
        L"              <b>1</b>\n"
        L"            </value>\n"
        L"          </parameter>\n"
        L"          <parameter type=\"color\" name=\"transparency\" handler=\"default\" "
        L"listType=\"none\" label=\"transparency\">\n"
        L"            <value>\n"
        L"              <r>0</r>\n"
        L"              <g>0</g>\n"
        L"              <b>0</b>\n"
        L"            </value>\n"
        L"          </parameter>\n"
        L"          <parameter type=\"float\" name=\"color_tex_mult\" handler=\"default\" "
        L"listType=\"none\" label=\"color_tex_mult\">\n"
        L"            <value>1</value>\n"
        L"          </parameter>\n"
        L"          <parameter type=\"float\" name=\"transparency_tex_mult\" handler=\"default\" "
        L"listType=\"none\" label=\"transparency_tex_mult\">\n"
        L"            <value>1</value>\n"
        L"          </parameter>\n"
        L"          <parameter type=\"float\" name=\"cutoff\" handler=\"default\" "
        L"listType=\"none\" label=\"cutoff\">\n"
        L"            <value>0.01</value>\n"
        L"          </parameter>\n"
        L"          <parameter type=\"plugin\" name=\"transparency_tex\" handler=\"default\" "
        L"listType=\"none\" label=\"transparency_tex\">\n"
        L"          </parameter>\n"
        L"          <parameter type=\"plugin\" name=\"color_tex\" handler=\"default\" "
        L"listType=\"none\" label=\"color_tex\">\n"
        L"          </parameter>\n"
        L"        </parameters>\n"
        L"      </ombraplugin>\n"
        L"    </plugin>\n"
        L"  </Asset>\n";
    EXPECT_EQ(xmlOf(mirror, L"/M"), expected);
}

TEST(BrdfXml, InvertedFilterIsClampedAtZeroOnly) {
    Phong_BRDF phong;
    phong.transparency_tex.reset();
    phong.reflectFilter = Color(0.25f, 1.5f, -1.0f);
    const std::wstring xml = xmlOf(phong, L"/M");
    EXPECT_NE(xml.find(L"name=\"transparency\" handler=\"default\" listType=\"none\" "
                       L"label=\"transparency\">\n            <value>\n              <r>0.75</r>\n"
                       L"              <g>0</g>\n              <b>2</b>\n"),
              std::wstring::npos);
    Glass_BRDF glass;
    glass.transparency = Color(0.25f, 0.25f, 0.25f);
    EXPECT_NE(xmlOf(glass, L"/M")
                  .find(L"label=\"transparency\">\n            <value>\n"
                        L"              <r>0.25</r>"),
              std::wstring::npos);
}

TEST(BrdfXml, ChildWordsDifferFromParameterNames) {
    Glass_BRDF glass;
    glass.glossiness_tex = makeBitmapTexture(L"g.png");
    const std::wstring glassXml = xmlOf(glass, L"/Mat");
    EXPECT_NE(glassXml.find(L"url=\"/Mat/BRDFRefraction/glossy_texture/TexBitmap\" >"),
              std::wstring::npos);
    EXPECT_NE(glassXml.find(L"name=\"glossiness_tex\" handler=\"default\" listType=\"none\" "
                            L"label=\"glossiness_tex\">\n            <value>"
                            L"/Mat/BRDFRefraction/glossy_texture/TexBitmap</value>"),
              std::wstring::npos);
    // Children stand ahead of the layer's own block.
    EXPECT_LT(glassXml.find(L"TexBitmap\" >"), glassXml.find(L"url=\"/Mat/BRDFRefraction\" >"));

    Light_BRDF light;
    light.name = L"Glow";
    light.transparency_tex = makeBitmapTexture(L"t.png");
    const std::wstring lightXml = xmlOf(light, L"/Mat");
    EXPECT_NE(lightXml.find(L"<value>/Mat/Glow/transp_texture/TexBitmap</value>"),
              std::wstring::npos);
    EXPECT_NE(lightXml.find(L"name=\"doubleSided\" handler=\"default\" listType=\"none\" "
                            L"label=\"doubleSided\">\n            <value>1</value>"),
              std::wstring::npos);
}
