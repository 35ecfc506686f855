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

// A copy of `texture`, which was read, then given a refused word or a reset: it must be a
// fresh texture again, children and all, whatever the record had filled in.
void expectRefusalResets(const std::shared_ptr<BaseTexture>& texture) {
    auto used = texture->clone();
    Bytes word;
    EXPECT_FALSE(deserializeFrom(*used, word.u32(0x10001)));
    auto fresh = createTexture(texture->getType());
    EXPECT_TRUE(used->isEqual(fresh)) << "texture " << texture->getType();
    EXPECT_EQ(assetsOf(*used, {}), assetsOf(*fresh, {})) << "texture " << texture->getType();
    // A reset does the same.
    auto reset = texture->clone();
    reset->setDefaults();
    EXPECT_TRUE(reset->isEqual(fresh)) << "texture " << texture->getType();
}

std::vector<uint8_t> bytesOf(BaseTexture& texture) {
    QuickArchive out(1);
    if (!texture.serialize(out)) return {};
    std::vector<uint8_t> bytes(static_cast<size_t>(out.writePos()));
    out.setReadPos(0);
    if (!bytes.empty()) out.readBytes(bytes.data(), bytes.size());
    return bytes;
}

// The record with one byte changed at a time: whenever that changes what the texture holds
// (its written bytes differ), the texture must no longer compare equal to the original.
void expectEveryStoredChangeIsUnequal(const std::shared_ptr<BaseTexture>& texture,
                                      const Bytes& record) {
    const std::vector<uint8_t> original = bytesOf(*texture);
    if (original.empty()) return;  // a texture with empty mandatory children is not written
    for (size_t i = 4; i < record.size(); ++i) {
        Bytes changed = record;
        changed.data[i] ^= 0x01;
        auto other = createTexture(texture->getType());
        auto archive = changed.archive();
        if (!other->deserialize(archive) || archive.readPos() != changed.size()) continue;
        if (bytesOf(*other) == original) continue;
        EXPECT_FALSE(texture->isEqual(other)) << "texture " << texture->getType() << " byte " << i;
    }
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
    expectRefusalResets(texture);
    expectEveryStoredChangeIsUnequal(texture, record);
    return std::dynamic_pointer_cast<T>(texture);
}

// Both records are read whole; `check` tests a field of version 1 and the one version 2 adds, which
// keeps its default in version 1. The version 2 record is written back byte for byte.
template <class T, class Check>
void readBothVersions(int id, const Bytes& v1, const Bytes& v2, Check check) {
    SCOPED_TRACE(id);
    for (const Bytes* record : {&v1, &v2}) {
        auto texture = readAll<T>(id, *record);
        ASSERT_TRUE(texture);
        check(*texture, record == &v2);
        if (record == &v2) expectWritesBack(*texture, v2);
    }
}

}  // namespace

TEST(FresnelTexture, ReadsBothVersions) {
    Bytes v1, v2;
    v1.version(1).floats({0.9f, 0.8f, 0.7f}).floats({0.1f, 0.2f, 0.3f}).floats({1.3f, 1.6f});
    v2.version(2).floats({1, 1, 1}).floats({0.5f, 0.5f, 0.5f}).floats({1.5f, 1.6f});
    v2.floats({0.1f, 0.2f, 0.3f, 0.4f});
    v2.flag(false).flag(true).append(colorChild(0, 1, 0, 1)).flag(false).flag(false);
    readBothVersions<FresnelTexture>(1, v1, v2, [](const FresnelTexture& t, bool two) {
        EXPECT_EQ(t.refract_ior, 1.6f);
        EXPECT_EQ(t.refract_ior_tex_mult, two ? 0.4f : 1.0f);
        EXPECT_FALSE(t.black_color_tex);
        auto white = std::dynamic_pointer_cast<AColorTexture>(t.white_color_tex);
        EXPECT_EQ(white ? white->texture : AColor(), two ? AColor(0, 1, 0, 1) : AColor());
    });
    texture_test::expectRefusesWords<FresnelTexture>({0x30000, 0x20001});
}

TEST(FresnelTexture, ClampsInvertedColoursAndPlacesChildrenUnderTheirPathWords) {
    FresnelTexture fresnel;
    fresnel.frontColor = Color(1.5f, 0.25f, std::nanf(""));
    fresnel.black_color_tex = std::make_shared<AColorTexture>();
    fresnel.white_color_tex = std::make_shared<AColorTexture>();
    const std::u16string text = assetsOf(fresnel, u"/G");

    Xml white;
    white.scalars(u"color", u"white_color", {{u"r", u"0"}, {u"g", u"0.75"}, {u"b", u"0"}});
    EXPECT_NE(text.find(white.out), std::u16string::npos);
    Xml refs;
    refs.inlineParam(u"plugin", u"black_color_tex", u"/G/TexFresnel/reflection_tex/TexAColor")
        .inlineParam(u"plugin", u"white_color_tex", u"/G/TexFresnel/refraction_tex/TexAColor")
        .emptyPlugin(u"fresnel_ior_tex");
    EXPECT_NE(text.find(refs.out), std::u16string::npos);
    // Children in slot order, ahead of the parent.
    const size_t black = text.find(u"url=\"/G/TexFresnel/reflection_tex/TexAColor\"");
    const size_t whiteAsset = text.find(u"url=\"/G/TexFresnel/refraction_tex/TexAColor\"");
    const size_t parent = text.find(u"url=\"/G/TexFresnel\"");
    EXPECT_LT(black, whiteAsset);
    EXPECT_LT(whiteAsset, parent);
    EXPECT_NE(parent, std::u16string::npos);
}

TEST(ProceduralTextures, ReadBothVersionsOfTwoVersionClasses) {
    Bytes grid1, grid2;
    grid1.version(1).append(channelChild()).append(colorChild(1, 0, 0, 1));
    grid1.append(colorChild(0, 0, 1, 1)).floats({0.2f, 0.3f});
    grid2.version(2).append(channelChild()).append(colorChild(1, 0, 0, 1));
    grid2.append(colorChild(0, 0, 1, 1)).floats({0.5f, 0.6f, 0.2f, 0.3f});
    readBothVersions<GridTexture>(6, grid1, grid2, [](const GridTexture& t, bool two) {
        EXPECT_EQ(t.v_width, 0.3f);
        EXPECT_EQ(t.fillColorMult, two ? 0.6f : 1.0f);
    });

    // Version 1 has no multipliers between its children.
    Bytes blend1, blend2;
    blend1.version(1).flag(true).append(colorChild(1, 1, 0, 1)).flag(false).f32(0.125f);
    blend2.version(2).flag(false).f32(0.5f).flag(true).append(colorChild(0, 0, 0, 1));
    blend2.f32(0.75f).f32(0.125f);
    readBothVersions<BlendTexture>(10, blend1, blend2, [](const BlendTexture& t, bool two) {
        EXPECT_EQ(bool(t.color_a), !two);
        EXPECT_EQ(t.blend_amount, 0.125f);
        EXPECT_EQ(t.colorBMult, two ? 0.75f : 1.0f);
    });

    Bytes checker1;
    checker1.version(1).append(channelChild()).append(colorChild(1, 0, 0, 1));
    checker1.append(colorChild(0, 1, 0, 1)).flag(false).flag(true);
    Bytes checker2 = checker1;
    checker2.data[2] = 2;  // major 2 in the high half of the word
    checker2.floats({0.5f, 0.25f});
    readBothVersions<CheckerTexture>(4, checker1, checker2, [](const CheckerTexture& t, bool two) {
        EXPECT_TRUE(t.tile_v);
        EXPECT_EQ(t.blackColorMult, two ? 0.25f : 1.0f);
    });
}

TEST(ClothTexture, ReadsBothVersionsAndPrintsItsOneTileFlagTwice) {
    Bytes v1;
    v1.version(1).append(channelChild());
    v1.floats({0.1f, 0.2f, 0.3f, 0.4f, 0, 0, 0, 1, 1, 1, 1, 1}).floats({0.05f, 0.06f});
    Bytes v2 = v1;
    v2.data[2] = 2;
    v2.flag(false);
    readBothVersions<ClothTexture>(7, v1, v2, [](const ClothTexture& t, bool two) {
        EXPECT_EQ(t.v_width, 0.06f);
        EXPECT_EQ(t.tile, !two);
    });

    auto cloth = readAll<ClothTexture>(7, v2);
    ASSERT_TRUE(cloth);
    Xml tail;
    tail.inlineParam(u"float", u"v_width", u"0.06")
        .inlineParam(u"bool", u"tile_u", u"0")
        .inlineParam(u"bool", u"tile_v", u"0")
        .assetClose();
    EXPECT_NE(assetsOf(*cloth, u"/C").find(tail.out), std::u16string::npos);
}

TEST(ProceduralTextures, ReadSingleVersionClassesInTableOrder) {
    Bytes uvw, ramp, bulge, noise, invert, acolor;
    uvw.version(1).append(channelChild());
    ramp.version(1).append(channelChild()).append(colorChild(1, 1, 1, 1));
    ramp.floats({0.7f, 0.1f, 0.2f}).ints({2, 0});
    bulge.version(1).append(channelChild()).floats({0.3f, 0.4f});
    noise.version(1).append(channelChild()).flag(false).flag(true).append(colorChild(0, 0, 0, 0));
    noise.floats({0.5f, 0.5f, 0.5f}).floats({0.25f, 0.25f, 0.25f});
    noise.floats({2, 3, 4, 5, 6, 7, 8, 9, 10, 11}).ints({5, 1, 1});
    invert.version(1).append(colorChild(0.5f, 0.5f, 0.5f, 1)).flag(true);
    acolor.version(1).floats({0.1f, 0.2f, 0.3f, 0.4f});
    const std::pair<int, const Bytes*> records[] = {{2, &uvw},   {11, &ramp},  {8, &bulge},
                                                    {3, &noise}, {9, &invert}, {5, &acolor}};
    for (const auto& entry : records) {
        auto texture = readAll<BaseTexture>(entry.first, *entry.second);
        ASSERT_TRUE(texture) << entry.first;
        expectWritesBack(*texture, *entry.second);
        Bytes bad;
        bad.version(2);
        EXPECT_FALSE(deserializeFrom(*createTexture(entry.first), bad)) << entry.first;
    }
    EXPECT_EQ(readAll<RampTexture>(11, ramp)->type, 2);
    auto noiseTexture = readAll<NoiseTexture>(3, noise);
    EXPECT_TRUE(noiseTexture->color2_tex && !noiseTexture->color1_tex);
    EXPECT_EQ(noiseTexture->color2_tex_mult, 11);
    EXPECT_EQ(readAll<AColorTexture>(5, acolor)->texture, AColor(0.1f, 0.2f, 0.3f, 0.4f));
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
    // A mandatory child enters its slot before it reads, so a refused one stays there.
    Bytes badChild;
    badChild.version(1).i32(4).u32(0x70000);
    UVWTexture holder;
    EXPECT_FALSE(deserializeFrom(holder, badChild));
    EXPECT_TRUE(std::dynamic_pointer_cast<GenChannelUVW>(holder.uvwgen));
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
    expected.assetOpen(u"/M/TexInvert/base_texture/TexAColor", u"texture", u"TexAColor")
        .scalars(u"acolor", u"texture",
                 {{u"r", u"0.5"}, {u"g", u"0.5"}, {u"b", u"0.5"}, {u"a", u"1"}})
        .assetClose();
    expected.assetOpen(u"/M/TexInvert", u"texture", u"TexInvert")
        .inlineParam(u"plugin", u"texture", u"/M/TexInvert/base_texture/TexAColor")
        .inlineParam(u"bool", u"invert_alpha", u"0")
        .assetClose();
    EXPECT_EQ(assetsOf(invert, u"/M"), expected.document());
}

TEST(ProceduralTextures, CloneIsEqualAndSharesNoChild) {
    auto fresnel = std::make_shared<FresnelTexture>();
    auto invert = std::make_shared<InvertTexture>();
    invert->texture = std::make_shared<AColorTexture>();
    fresnel->refract_ior_tex = invert;
    auto copy = std::dynamic_pointer_cast<FresnelTexture>(fresnel->clone());
    ASSERT_TRUE(copy);
    EXPECT_TRUE(copy->isEqual(fresnel));
    auto inner = std::dynamic_pointer_cast<InvertTexture>(copy->refract_ior_tex);
    EXPECT_NE(inner, invert);
    EXPECT_NE(inner->texture, invert->texture);
    inner->texture.reset();
    EXPECT_FALSE(copy->isEqual(fresnel));

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
