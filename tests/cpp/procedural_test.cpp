#include "textures/procedural.h"

#include <gtest/gtest.h>

#include <cmath>

#include "texture_bytes.h"
#include "textures/texture.h"
#include "textures/uvw.h"
#include "xml/asset_xml_writer.h"

using namespace CorvaneCore;
using texture_test::assetsOf;
using texture_test::Bytes;
using texture_test::Xml;

namespace {

// A mandatory generator slot: id 4, then a default GenChannelUVW version 2.
Bytes channelChild() {
    Bytes b;
    b.i32(4).version(2).identityTransform().identityTransform().ints({0, 0, 1});
    b.defaultComponents().defaultComponents();
    return b;
}

// A mandatory texture slot holding an AColorTexture: id 5, version 1, four floats.
Bytes colorChild(float r, float g, float b, float a) {
    Bytes bytes;
    bytes.i32(5).version(1).floats({r, g, b, a});
    return bytes;
}

// Reads `record` into a new texture of `id`, which must consume all of it.
template <class T>
std::shared_ptr<T> readAll(int id, const Bytes& record) {
    auto texture = createTexture(id);
    auto archive = record.archive();
    if (!texture->deserialize(archive)) {
        ADD_FAILURE() << "record of texture " << id << " refused";
        return nullptr;
    }
    EXPECT_EQ(archive.readPos(), record.size()) << "texture " << id;
    return std::dynamic_pointer_cast<T>(texture);
}

}  // namespace

TEST(FresnelTexture, ReadsVersionOneWithDefaultMultipliers) {
    Bytes record;
    record.version(1).floats({0.9f, 0.8f, 0.7f}).floats({0.1f, 0.2f, 0.3f}).floats({1.3f, 1.4f});
    auto fresnel = readAll<FresnelTexture>(1, record);
    ASSERT_TRUE(fresnel);
    EXPECT_EQ(fresnel->frontColor, Color(0.9f, 0.8f, 0.7f));
    EXPECT_EQ(fresnel->sideColor, Color(0.1f, 0.2f, 0.3f));
    EXPECT_EQ(fresnel->fresnel_ior, 1.3f);
    EXPECT_EQ(fresnel->refract_ior, 1.4f);
    EXPECT_EQ(fresnel->black_color_tex_mult, 1.0f);
    EXPECT_EQ(fresnel->refract_ior_tex_mult, 1.0f);
    EXPECT_FALSE(fresnel->black_color_tex || fresnel->white_color_tex || fresnel->fresnel_ior_tex ||
                 fresnel->refract_ior_tex);
}

TEST(FresnelTexture, ReadsVersionTwoWithOptionalChildren) {
    Bytes record;
    record.version(2).floats({1, 1, 1}).floats({0.5f, 0.5f, 0.5f}).floats({1.5f, 1.6f});
    record.floats({0.1f, 0.2f, 0.3f, 0.4f});
    record.flag(false).flag(true).append(colorChild(0, 1, 0, 1)).flag(false).flag(false);
    auto fresnel = readAll<FresnelTexture>(1, record);
    ASSERT_TRUE(fresnel);
    EXPECT_EQ(fresnel->black_color_tex_mult, 0.1f);
    EXPECT_EQ(fresnel->white_color_tex_mult, 0.2f);
    EXPECT_EQ(fresnel->fresnel_ior_tex_mult, 0.3f);
    EXPECT_EQ(fresnel->refract_ior_tex_mult, 0.4f);
    EXPECT_FALSE(fresnel->black_color_tex);
    auto white = std::dynamic_pointer_cast<AColorTexture>(fresnel->white_color_tex);
    ASSERT_TRUE(white);
    EXPECT_EQ(white->texture, AColor(0, 1, 0, 1));
    expectWritesBack(*fresnel, record);
    texture_test::expectRefusesWords<FresnelTexture>({0x30000, 0x20001});
}

// The colours leave inverted: 1 - 1 = 0 and 1 - 65/255 = 0.745098 in six digits.
TEST(FresnelTexture, WritesDefaultsWithInvertedColours) {
    Xml expected;
    expected.assetOpen(L"/Glass/TexFresnel", L"texture", L"TexFresnel")
        .scalars(L"color", L"white_color", {{L"r", L"0"}, {L"g", L"0"}, {L"b", L"0"}})
        .scalars(L"color", L"black_color",
                 {{L"r", L"0.745098"}, {L"g", L"0.745098"}, {L"b", L"0.745098"}})
        .inlineParam(L"float", L"fresnel_ior", L"1.55")
        .inlineParam(L"float", L"refract_ior", L"1.55")
        .inlineParam(L"float", L"black_color_tex_mult", L"1")
        .inlineParam(L"float", L"white_color_tex_mult", L"1")
        .inlineParam(L"float", L"fresnel_ior_tex_mult", L"1")
        .inlineParam(L"float", L"refract_ior_tex_mult", L"1")
        .emptyPlugin(L"black_color_tex")
        .emptyPlugin(L"white_color_tex")
        .emptyPlugin(L"fresnel_ior_tex")
        .emptyPlugin(L"refract_ior_tex")
        .assetClose();
    FresnelTexture fresnel;
    EXPECT_EQ(assetsOf(fresnel, L"/Glass"), expected.document());
    EXPECT_EQ(fresnel.sideColor, Color(65.0f / 255, 65.0f / 255, 65.0f / 255));  // stored as read
}

TEST(FresnelTexture, ClampsInvertedColoursAndPlacesChildrenUnderTheirPathWords) {
    FresnelTexture fresnel;
    fresnel.frontColor = Color(1.5f, 0.25f, std::nanf(""));
    fresnel.black_color_tex = std::make_shared<AColorTexture>();
    fresnel.white_color_tex = std::make_shared<AColorTexture>();
    const std::wstring text = assetsOf(fresnel, L"/G");

    Xml white;
    white.scalars(L"color", L"white_color", {{L"r", L"0"}, {L"g", L"0.75"}, {L"b", L"0"}});
    EXPECT_NE(text.find(white.out), std::wstring::npos);
    Xml refs;
    refs.inlineParam(L"plugin", L"black_color_tex", L"/G/TexFresnel/reflection_tex/TexAColor")
        .inlineParam(L"plugin", L"white_color_tex", L"/G/TexFresnel/refraction_tex/TexAColor")
        .emptyPlugin(L"fresnel_ior_tex");
    EXPECT_NE(text.find(refs.out), std::wstring::npos);
    // Children in slot order, ahead of the parent.
    const size_t black = text.find(L"url=\"/G/TexFresnel/reflection_tex/TexAColor\"");
    const size_t whiteAsset = text.find(L"url=\"/G/TexFresnel/refraction_tex/TexAColor\"");
    const size_t parent = text.find(L"url=\"/G/TexFresnel\"");
    EXPECT_LT(black, whiteAsset);
    EXPECT_LT(whiteAsset, parent);
    EXPECT_NE(parent, std::wstring::npos);
}

TEST(GridTexture, ReadsMultipliersOnlyFromVersionTwo) {
    Bytes v1;
    v1.version(1).append(channelChild()).append(colorChild(1, 0, 0, 1));
    v1.append(colorChild(0, 0, 1, 1)).floats({0.2f, 0.3f});
    auto grid = readAll<GridTexture>(6, v1);
    ASSERT_TRUE(grid);
    EXPECT_EQ(grid->u_width, 0.2f);
    EXPECT_EQ(grid->v_width, 0.3f);
    EXPECT_EQ(grid->lineColorMult, 1.0f);
    EXPECT_EQ(grid->fillColorMult, 1.0f);

    Bytes v2;
    v2.version(2).append(channelChild()).append(colorChild(1, 0, 0, 1));
    v2.append(colorChild(0, 0, 1, 1)).floats({0.5f, 0.6f, 0.2f, 0.3f});
    grid = readAll<GridTexture>(6, v2);
    ASSERT_TRUE(grid);
    EXPECT_EQ(grid->lineColorMult, 0.5f);
    EXPECT_EQ(grid->fillColorMult, 0.6f);
    EXPECT_EQ(grid->v_width, 0.3f);
    EXPECT_EQ(std::dynamic_pointer_cast<AColorTexture>(grid->fill_color)->texture,
              AColor(0, 0, 1, 1));
    expectWritesBack(*grid, v2);
}

TEST(BlendTexture, VersionOneHasNoMultipliersBetweenItsChildren) {
    Bytes v1;
    v1.version(1).flag(true).append(colorChild(1, 1, 0, 1)).flag(false).f32(0.25f);
    auto blend = readAll<BlendTexture>(10, v1);
    ASSERT_TRUE(blend);
    EXPECT_TRUE(blend->color_a);
    EXPECT_FALSE(blend->color_b);
    EXPECT_EQ(blend->blend_amount, 0.25f);
    EXPECT_EQ(blend->colorAMult, 1.0f);

    Bytes v2;
    v2.version(2).flag(false).f32(0.5f).flag(true).append(colorChild(0, 0, 0, 1));
    v2.f32(0.75f).f32(0.125f);
    blend = readAll<BlendTexture>(10, v2);
    ASSERT_TRUE(blend);
    EXPECT_EQ(blend->colorAMult, 0.5f);
    EXPECT_EQ(blend->colorBMult, 0.75f);
    EXPECT_EQ(blend->blend_amount, 0.125f);
    expectWritesBack(*blend, v2);
}

TEST(ClothTexture, ReadsBothVersionsAndPrintsItsOneTileFlagTwice) {
    Bytes v1;
    v1.version(1).append(channelChild());
    v1.floats({0.1f, 0.2f, 0.3f, 0.4f, 0, 0, 0, 1, 1, 1, 1, 1}).floats({0.05f, 0.06f});
    auto cloth = readAll<ClothTexture>(7, v1);
    ASSERT_TRUE(cloth);
    EXPECT_EQ(cloth->gap_color, AColor(0.1f, 0.2f, 0.3f, 0.4f));
    EXPECT_EQ(cloth->v_width, 0.06f);
    EXPECT_TRUE(cloth->tile);

    Bytes v2 = v1;
    v2.data[2] = 2;  // major 2 in the high half of the word
    v2.flag(false);
    cloth = readAll<ClothTexture>(7, v2);
    ASSERT_TRUE(cloth);
    EXPECT_FALSE(cloth->tile);
    expectWritesBack(*cloth, v2);

    Xml tail;
    tail.inlineParam(L"float", L"v_width", L"0.06")
        .inlineParam(L"bool", L"tile_u", L"0")
        .inlineParam(L"bool", L"tile_v", L"0")
        .assetClose();
    const std::wstring text = assetsOf(*cloth, L"/C");
    EXPECT_NE(text.find(tail.out), std::wstring::npos);
}

TEST(CheckerTexture, StartsWithColourChildrenAndReadsBothVersions) {
    CheckerTexture fresh;
    auto white = std::dynamic_pointer_cast<AColorTexture>(fresh.white_color);
    auto black = std::dynamic_pointer_cast<AColorTexture>(fresh.black_color);
    ASSERT_TRUE(white && black);
    EXPECT_EQ(white->texture, AColor(1, 1, 1, 1));
    EXPECT_EQ(black->texture, AColor(0, 0, 0, 1));
    EXPECT_FALSE(fresh.uvwgen);

    Bytes v1;
    v1.version(1).append(channelChild()).append(colorChild(1, 0, 0, 1));
    v1.append(colorChild(0, 1, 0, 1)).flag(false).flag(true);
    auto checker = readAll<CheckerTexture>(4, v1);
    ASSERT_TRUE(checker);
    EXPECT_FALSE(checker->tile_u);
    EXPECT_TRUE(checker->tile_v);
    EXPECT_EQ(checker->whiteColorMult, 1.0f);
    EXPECT_EQ(std::dynamic_pointer_cast<AColorTexture>(checker->white_color)->texture,
              AColor(1, 0, 0, 1));

    Bytes v2 = v1;
    v2.data[2] = 2;
    v2.floats({0.5f, 0.25f});
    checker = readAll<CheckerTexture>(4, v2);
    ASSERT_TRUE(checker);
    EXPECT_EQ(checker->whiteColorMult, 0.5f);
    EXPECT_EQ(checker->blackColorMult, 0.25f);
    expectWritesBack(*checker, v2);
}

TEST(ProceduralTextures, ReadSingleVersionClassesInTableOrder) {
    Bytes uvw;
    uvw.version(1).append(channelChild());
    auto uvwTexture = readAll<UVWTexture>(2, uvw);
    ASSERT_TRUE(uvwTexture && uvwTexture->uvwgen);
    expectWritesBack(*uvwTexture, uvw);

    Bytes ramp;
    ramp.version(1).append(channelChild()).append(colorChild(1, 1, 1, 1));
    ramp.floats({0.7f, 0.1f, 0.2f}).ints({2, 0});
    auto rampTexture = readAll<RampTexture>(11, ramp);
    ASSERT_TRUE(rampTexture);
    EXPECT_EQ(rampTexture->positions, 0.7f);
    EXPECT_EQ(rampTexture->v_wave, 0.2f);
    EXPECT_EQ(rampTexture->type, 2);
    EXPECT_EQ(rampTexture->interpolation, 0);
    expectWritesBack(*rampTexture, ramp);

    Bytes bulge;
    bulge.version(1).append(channelChild()).floats({0.3f, 0.4f});
    auto bulgeTexture = readAll<BulgeTexture>(8, bulge);
    ASSERT_TRUE(bulgeTexture);
    EXPECT_EQ(bulgeTexture->u_width, 0.3f);
    expectWritesBack(*bulgeTexture, bulge);

    Bytes noise;
    noise.version(1).append(channelChild()).flag(false).flag(true).append(colorChild(0, 0, 0, 0));
    noise.floats({0.5f, 0.5f, 0.5f}).floats({0.25f, 0.25f, 0.25f});
    noise.floats({2, 3, 4, 5, 6, 7, 8, 9, 10, 11}).ints({5, 1, 1});
    auto noiseTexture = readAll<NoiseTexture>(3, noise);
    ASSERT_TRUE(noiseTexture);
    EXPECT_FALSE(noiseTexture->color1_tex);
    EXPECT_TRUE(noiseTexture->color2_tex);
    EXPECT_EQ(noiseTexture->color2, Color(0.25f, 0.25f, 0.25f));
    EXPECT_EQ(noiseTexture->persistence, 2);
    EXPECT_EQ(noiseTexture->bias, 9);
    EXPECT_EQ(noiseTexture->color2_tex_mult, 11);
    EXPECT_EQ(noiseTexture->octaves, 5);
    EXPECT_EQ(noiseTexture->inflection, 1);
    expectWritesBack(*noiseTexture, noise);

    Bytes invert;
    invert.version(1).append(colorChild(0.5f, 0.5f, 0.5f, 1)).flag(true);
    auto invertTexture = readAll<InvertTexture>(9, invert);
    ASSERT_TRUE(invertTexture);
    EXPECT_TRUE(invertTexture->invert_alpha);
    expectWritesBack(*invertTexture, invert);

    Bytes acolor;
    acolor.version(1).floats({0.1f, 0.2f, 0.3f, 0.4f});
    auto acolorTexture = readAll<AColorTexture>(5, acolor);
    ASSERT_TRUE(acolorTexture);
    EXPECT_EQ(acolorTexture->texture, AColor(0.1f, 0.2f, 0.3f, 0.4f));

    for (int id : {2, 3, 5, 8, 9, 11}) {
        Bytes bad;
        bad.version(2);
        EXPECT_FALSE(deserializeFrom(*createTexture(id), bad)) << id;
    }
}

TEST(ProceduralTextures, RefuseUnknownChildIdsAndTruncatedRecords) {
    Bytes badUvw, badTexture, truncated;
    badUvw.version(1).i32(2);  // the hole in the generator table
    EXPECT_FALSE(deserializeFrom(UVWTexture(), badUvw));
    badTexture.version(1).flag(true).i32(13);
    EXPECT_FALSE(deserializeFrom(BlendTexture(), badTexture));
    // Past the end every read gives zeros, and a zero version word is refused.
    truncated.version(2).append(channelChild());
    EXPECT_FALSE(deserializeFrom(CheckerTexture(), truncated));
}

TEST(ProceduralTextures, NestingIsBounded) {
    // InvertTextures, each holding the next, around one colour texture.
    auto nested = [](int depth) {
        Bytes b;
        for (int i = 0; i < depth; ++i) b.version(1).i32(9);
        b.version(1).i32(5).version(1).floats({1, 1, 1, 1});
        for (int i = 0; i <= depth; ++i) b.flag(false);
        return b;
    };
    InvertTexture invert;
    EXPECT_TRUE(readAll(invert, nested(10)));
    // Far deeper than any scene: refused by the depth limit before the data runs out.
    EXPECT_FALSE(deserializeFrom(InvertTexture(), nested(5000)));
}

TEST(ProceduralTextures, SerializeRefusesMissingMandatoryChildren) {
    for (int id : {3, 4, 6, 7, 9}) {
        QuickArchive out(1);
        auto texture = createTexture(id);
        EXPECT_FALSE(texture->serialize(out)) << id;
        EXPECT_EQ(out.writePos(), 0u) << id;
    }
    QuickArchive out(1);
    EXPECT_FALSE(BulgeTexture().serialize(out));
    EXPECT_EQ(out.writePos(), 4u);  // the version word stands before the test
}

TEST(InvertTexture, PlacesItsChildUnderBaseTexture) {
    InvertTexture invert;
    invert.texture = std::make_shared<AColorTexture>(AColor(0.5f, 0.5f, 0.5f, 1));
    Xml expected;
    expected.assetOpen(L"/M/TexInvert/base_texture/TexAColor", L"texture", L"TexAColor")
        .scalars(L"acolor", L"texture",
                 {{L"r", L"0.5"}, {L"g", L"0.5"}, {L"b", L"0.5"}, {L"a", L"1"}})
        .assetClose();
    expected.assetOpen(L"/M/TexInvert", L"texture", L"TexInvert")
        .inlineParam(L"plugin", L"texture", L"/M/TexInvert/base_texture/TexAColor")
        .inlineParam(L"bool", L"invert_alpha", L"0")
        .assetClose();
    EXPECT_EQ(assetsOf(invert, L"/M"), expected.document());
}

TEST(ProceduralTextures, CloneIsEqualAndSharesNoChild) {
    auto checker = std::make_shared<CheckerTexture>();
    checker->uvwgen = createUVW(4);
    auto copy = std::dynamic_pointer_cast<CheckerTexture>(checker->clone());
    ASSERT_TRUE(copy);
    EXPECT_TRUE(copy->isEqual(checker));
    EXPECT_NE(copy->uvwgen, checker->uvwgen);
    EXPECT_NE(copy->white_color, checker->white_color);
    EXPECT_NE(copy->black_color, checker->black_color);
    std::dynamic_pointer_cast<AColorTexture>(copy->black_color)->texture.a = 0.5f;
    EXPECT_FALSE(copy->isEqual(checker));

    auto fresnel = std::make_shared<FresnelTexture>();
    fresnel->refract_ior_tex = std::make_shared<InvertTexture>();
    std::dynamic_pointer_cast<InvertTexture>(fresnel->refract_ior_tex)->texture =
        std::make_shared<AColorTexture>();
    auto fresnelCopy = std::dynamic_pointer_cast<FresnelTexture>(fresnel->clone());
    EXPECT_TRUE(fresnelCopy->isEqual(fresnel));
    auto inner = std::dynamic_pointer_cast<InvertTexture>(fresnelCopy->refract_ior_tex);
    EXPECT_NE(inner, fresnel->refract_ior_tex);
    EXPECT_NE(inner->texture,
              std::dynamic_pointer_cast<InvertTexture>(fresnel->refract_ior_tex)->texture);
    inner->texture.reset();
    EXPECT_FALSE(fresnelCopy->isEqual(fresnel));

    // Every class compares equal to its clone and unequal to another class.
    for (int id = 1; id <= 11; ++id) {
        auto texture = createTexture(id);
        EXPECT_TRUE(texture->clone()->isEqual(texture)) << id;
        EXPECT_FALSE(texture->isEqual(createTexture(id == 1 ? 2 : 1))) << id;
        EXPECT_FALSE(texture->isEqual(nullptr)) << id;
    }
    auto nanBlend = std::make_shared<BlendTexture>();
    nanBlend->blend_amount = std::nanf("");
    EXPECT_TRUE(nanBlend->isEqual(std::make_shared<BlendTexture>()));  // NaN equals anything
}
