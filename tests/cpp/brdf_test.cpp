// BRDF layers: every stored layout assembled from the field tables, the mappings of old fields,
// refused version words, copies, comparisons and the XML blocks.
#include "materials/brdf.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "material_bytes.h"
#include "textures/procedural.h"
#include "textures/texture.h"
#include "xml/asset_xml_writer.h"

using namespace CorvaneCore;
using material_test::xmlOf;

namespace {

using F = std::vector<float>;
using I = std::vector<int32_t>;
using Paths = std::vector<std::u16string>;

// The file of a bitmap texture; "" for no texture.
std::u16string pathOf(const TexturePtr& texture) {
    if (!texture) return u"";
    auto bitmap = std::dynamic_pointer_cast<BitmapTexture>(texture);
    if (!bitmap) return u"<not a bitmap>";
    auto buffer = std::dynamic_pointer_cast<BitmapBuffer>(bitmap->bitmap);
    return buffer ? buffer->file : u"<no buffer>";
}

float fresnelIorOf(const TexturePtr& texture) {
    auto fresnel = std::dynamic_pointer_cast<FresnelTexture>(texture);
    return fresnel ? fresnel->fresnel_ior : NAN;
}

// A present form A slot holding a FresnelTexture of version 1 with the given index.
RecordBuilder fresnelSlot(float ior) {
    RecordBuilder r;
    r.boolean(true).i32(1).version(1).color(1, 1, 1).color(0, 0, 0).f32(ior).f32(1.5f);
    return r;
}

// Glass of version `v` up to field 11, with values that differ from the defaults.
RecordBuilder glass(uint32_t v) {
    RecordBuilder r;
    r.version(v).color(0.1f, 0.2f, 0.3f).color(0.4f, 0.5f, 0.6f);
    r.floats({1.3f, 1.4f, 0.02f, 2.0f, 0.7f}).ints({3, 16, 1, 2});
    return r;
}

std::vector<uint8_t> bytesOf(Base_BRDF& layer) {
    QuickArchive out(1);
    if (!layer.serialize(out)) return {};
    std::vector<uint8_t> bytes(static_cast<size_t>(out.writePos()));
    out.setReadPos(0);
    if (!bytes.empty()) out.readBytes(bytes.data(), bytes.size());
    return bytes;
}

// The record with one byte changed at a time: whenever that changes a compared field (the
// layer written with the original's name and flags differs), the layers compare unequal.
template <class T>
void expectEveryStoredChangeIsUnequal(T& layer, const RecordBuilder& record) {
    const std::vector<uint8_t> original = bytesOf(layer);
    auto mine = std::make_shared<T>(layer);
    for (size_t i = 4; i < record.size(); ++i) {
        RecordBuilder changed = record;
        changed.data[i] ^= 0x01;
        auto other = std::make_shared<T>();
        QuickArchive archive = changed.archive();
        if (!other->deserialize(archive) || archive.readPos() != changed.size()) continue;
        other->name = layer.name;
        other->layerFlagA = layer.layerFlagA;
        other->layerFlagB = layer.layerFlagB;
        other->layerFlagC = layer.layerFlagC;
        if (bytesOf(*other) == original) continue;
        EXPECT_FALSE(mine->isEqual(other)) << "byte " << i;
    }
}

// Reads the whole record into a new layer, then checks that a refused word on a copy of it
// resets the copy: whole for every class but glass, which resets only its name and flags.
template <class T>
T readAs(const RecordBuilder& record) {
    T layer = material_test::readAs<T>(record);
    expectEveryStoredChangeIsUnequal(layer, record);
    auto used = std::make_shared<T>(layer);
    EXPECT_FALSE(deserializeFrom(*used, RecordBuilder().u32(0x10001)));
    T fresh;
    EXPECT_EQ(used->name, fresh.name);
    if (std::is_same_v<T, Glass_BRDF>) return layer;
    EXPECT_TRUE(used->isEqual(std::make_shared<T>(fresh)));
    EXPECT_EQ(xmlOf(*used), xmlOf(fresh));
    return layer;
}

bool has(const std::u16string& text, const std::u16string& part) {
    return text.find(part) != std::u16string::npos;
}

}  // namespace

TEST(BrdfFactory, KnowsOnlyTheSixSingleBitIds) {
    for (int id : {1, 2, 4, 8, 16, 32}) EXPECT_EQ(createBRDF(id)->getType(), id);
    for (int id : {0, 3, 64, -1}) EXPECT_FALSE(createBRDF(id)) << id;
    // Mirror and Phong start with a fresnel transparency texture.
    EXPECT_TRUE(std::dynamic_pointer_cast<FresnelTexture>(Mirror_BRDF().transparency_tex));
    EXPECT_TRUE(std::dynamic_pointer_cast<FresnelTexture>(Phong_BRDF().transparency_tex));
}

TEST(GlassBrdf, EveryVersion) {
    // Version 1 ends after field 11, without a section.
    const auto g1 = readAs<Glass_BRDF>(glass(1));
    EXPECT_EQ(g1.fog_color, Color(0.4f, 0.5f, 0.6f));
    EXPECT_EQ((F{g1.ior, g1.glossiness}), (F{1.3f, 0.7f}));
    EXPECT_EQ((I{g1.traceDepth, g1.affect_alpha}), (I{3, 2}));
    EXPECT_FLOAT_EQ(g1.transparency_tex_mult, 1.0f);
    // Versions 2 and 3 keep the transparency multiplier in the old place.
    const auto g2 = readAs<Glass_BRDF>(
        glass(2).floats({0.25f, 0.5f, 0.75f}).text("t.png").text("").text("i.png"));
    EXPECT_EQ((F{g2.transparency_tex_mult, g2.color_tex_mult, g2.ior_tex_mult}),
              (F{0.25f, 1.0f, 0.75f}));
    EXPECT_EQ((Paths{pathOf(g2.transparency_tex), pathOf(g2.ior_texture)}),
              (Paths{u"t.png", u"i.png"}));
    RecordBuilder v3 = glass(3);
    v3.floats({0.25f, 0.5f, 0.75f}).text("").text("g.png").text("").i32(1);
    const auto g3 = readAs<Glass_BRDF>(
        v3.floats({20, 0.3f, 0.4f, 0.6f}).color(0.9f, 0.8f, 0.7f).text("tr.png"));
    EXPECT_EQ(pathOf(g3.glossiness_tex), u"g.png");
    EXPECT_EQ(g3.translucency_on, 1);
    EXPECT_EQ(pathOf(g3.translucency_tex), u"tr.png");
    // Version 4 reads the child slots in the old order.
    RecordBuilder v4 = glass(4);
    v4.floats({0.25f, 0.5f, 0.75f}).i32(0).floats({10, 0.1f, 0.2f, 0.3f}).color(0.5f, 0.5f, 0.5f);
    const auto g4 = readAs<Glass_BRDF>(v4.append(fresnelSlot(2.5f)).absent().absent().absent());
    EXPECT_FLOAT_EQ(g4.transparency_tex_mult, 0.25f);
    EXPECT_FLOAT_EQ(fresnelIorOf(g4.transparency_tex), 2.5f);
    EXPECT_FALSE(g4.color_tex);
    // Versions 5 and 6 read the current fields.
    auto current = [](uint32_t v) {
        RecordBuilder r = glass(v);
        r.floats({0.6f, 0.5f, 0.75f}).i32(1).floats({10, 0.1f, 0.2f, 0.3f}).color(0.5f, 0.5f, 0.5f);
        r.append(fresnelSlot(1.9f)).absent().absent().absent();
        r.color(0.2f, 0.3f, 0.4f).f32(0.8f).absent();
        return r;
    };
    const auto g5 = readAs<Glass_BRDF>(current(5));
    EXPECT_FLOAT_EQ(fresnelIorOf(g5.color_tex), 1.9f);
    EXPECT_EQ(g5.transparency, Color(0.2f, 0.3f, 0.4f));
    EXPECT_EQ(g5.name, u"BRDFRefraction");
    // Each of the five child slots holds its own texture.
    RecordBuilder slots = glass(5);
    slots.floats({0.6f, 0.5f, 0.75f}).i32(1).floats({10, 0.1f, 0.2f, 0.3f}).color(0.5f, 0.5f, 0.5f);
    for (float ior : {1.1f, 1.2f, 1.3f, 1.4f}) slots.append(fresnelSlot(ior));
    slots.color(0.2f, 0.3f, 0.4f).f32(0.8f).append(fresnelSlot(1.5f));
    const auto gs = readAs<Glass_BRDF>(slots);
    EXPECT_EQ((F{fresnelIorOf(gs.color_tex), fresnelIorOf(gs.glossiness_tex),
                 fresnelIorOf(gs.ior_texture), fresnelIorOf(gs.translucency_tex),
                 fresnelIorOf(gs.transparency_tex)}),
              (F{1.1f, 1.2f, 1.3f, 1.4f, 1.5f}));
    const auto g6 = readAs<Glass_BRDF>(current(6).brdfSection("Clear\tGlass\n", false, true, true));
    EXPECT_EQ(g6.name, u"ClearGlass");
    EXPECT_TRUE(g6.layerFlagB);
    // A read resets only the base part.
    Glass_BRDF g;
    g.color_tex_mult = 7.0f;
    g.layerFlagB = true;
    ASSERT_TRUE(readAll(g, glass(1)));
    EXPECT_FLOAT_EQ(g.color_tex_mult, 7.0f);
    EXPECT_FALSE(g.layerFlagB);
}

TEST(DiffuseBrdf, EveryVersion) {
    auto head = [](uint32_t v) {
        RecordBuilder r;
        r.version(v).color(0.1f, 0.2f, 0.3f).color(0.4f, 0.5f, 0.6f).f32(2).f32(3);
        return r;
    };
    const auto d1 = readAs<Diffuse_BRDF>(head(1).text("c.jpg").text(""));
    EXPECT_EQ(d1.transparency, Color(0.4f, 0.5f, 0.6f));
    EXPECT_FLOAT_EQ(d1.transparency_tex_mult, 3);
    EXPECT_EQ((Paths{pathOf(d1.color_tex), pathOf(d1.transparency_tex)}), (Paths{u"c.jpg", u""}));
    const auto d2 = readAs<Diffuse_BRDF>(head(2).absent().append(fresnelSlot(1.2f)));
    EXPECT_FLOAT_EQ(fresnelIorOf(d2.transparency_tex), 1.2f);
    const auto d3 = readAs<Diffuse_BRDF>(head(3).absent().absent().brdfSection("Base"));
    EXPECT_EQ(d3.name, u"Base");
    EXPECT_FALSE(d3.use_color_tex_alpha_as_transparency);
    EXPECT_TRUE(readAs<Diffuse_BRDF>(head(4).absent().absent().brdfSection("B").boolean(true))
                    .use_color_tex_alpha_as_transparency);
    // Version 4 reads its last field even after a section of an unknown version.
    Diffuse_BRDF d;
    EXPECT_FALSE(readAll(d, head(4).absent().absent().version(5).boolean(true)));
    EXPECT_TRUE(d.use_color_tex_alpha_as_transparency);
    EXPECT_EQ(d.name, u"BRDFDiffuse");
}

TEST(BrdfLayers, BaseSectionOfEveryVersionKeepsTheFlagsItDoesNotHold) {
    // A diffuse layer of version 3 whose section stores the flags of its version, each against
    // its default.
    auto withSection = [](uint32_t sectionVersion) {
        RecordBuilder r;
        r.version(3).color(0.5f, 0.5f, 0.5f).color(0, 0, 0).f32(1).f32(1).absent().absent();
        r.version(sectionVersion).text("Layer");
        const bool stored[] = {false, true, true};
        for (uint32_t flag = 0; flag + 1 < sectionVersion; ++flag) r.boolean(stored[flag]);
        Diffuse_BRDF layer;
        EXPECT_TRUE(readAll(layer, r));
        return std::vector<bool>{layer.name == u"Layer", layer.layerFlagA, layer.layerFlagB,
                                 layer.layerFlagC};
    };
    using B = std::vector<bool>;
    EXPECT_EQ(withSection(1), (B{true, true, false, false}));
    EXPECT_EQ(withSection(2), (B{true, false, false, false}));
    EXPECT_EQ(withSection(3), (B{true, false, true, false}));
    EXPECT_EQ(withSection(4), (B{true, false, true, true}));
}

// Fields of the old Blinn/Phong layouts up to field 8, with the fresnel pair in its places.
static RecordBuilder reflectionOldHead(uint32_t v, float ior, int32_t on) {
    RecordBuilder r;
    r.version(v).color(0.9f, 0.8f, 0.7f).color(0.25f, 0.5f, 1.5f);
    r.floats({0.6f, 0.7f, ior, 0.05f}).ints({12, on, 1, 4});
    return r;
}

TEST(ReflectionBrdf, EveryVersionAndTheFresnelFieldsOfTheOldOnes) {
    const auto b1 = readAs<Blinn_BRDF>(reflectionOldHead(1, 1.7f, 1));
    EXPECT_EQ(b1.reflectFilter, Color(0.25f, 0.5f, 1.5f));
    EXPECT_EQ((F{b1.reflectionGlossiness, b1.cutoff}), (F{0.7f, 0.05f}));
    EXPECT_EQ((I{b1.subdivs, b1.back_side, b1.traceDepth}), (I{12, 1, 4}));
    EXPECT_FLOAT_EQ(fresnelIorOf(b1.transparency_tex), 1.7f);
    EXPECT_FALSE(readAs<Phong_BRDF>(reflectionOldHead(1, 1.7f, 0)).transparency_tex);
    const auto p2 = readAs<Phong_BRDF>(
        reflectionOldHead(2, 1.0f, 0).floats({2, 3, 4}).text("c.png").text("").text("r.png"));
    EXPECT_EQ((F{p2.color_tex_mult, p2.reflectionGlossiness_tex_mult, p2.anisotropy}),
              (F{2, 4, 0.0f}));
    EXPECT_EQ((Paths{pathOf(p2.color_tex), pathOf(p2.reflectionGlossiness_tex)}),
              (Paths{u"c.png", u"r.png"}));
    auto withAnisotropy = [](uint32_t v, float ior, int32_t on) {
        RecordBuilder r = reflectionOldHead(v, ior, on).floats({2, 3, 4});
        if (v == 3) return r.text("").text("").text("").floats({0.5f, 45});
        return r.absent().absent().absent().floats({0.5f, 45});
    };
    const auto b3 = readAs<Blinn_BRDF>(withAnisotropy(3, 1.0f, 0));
    EXPECT_EQ((F{b3.anisotropy, b3.anisotropy_rotation}), (F{0.5f, 45}));
    const auto b4 = readAs<Blinn_BRDF>(withAnisotropy(4, 2.2f, 1));
    EXPECT_FLOAT_EQ(fresnelIorOf(b4.transparency_tex), 2.2f);
    EXPECT_EQ(b4.name, u"BRDFReflection");
    const auto p5 = readAs<Phong_BRDF>(withAnisotropy(5, 1.0f, 0).brdfSection("Shine"));
    EXPECT_EQ(p5.name, u"Shine");
    EXPECT_FALSE(p5.transparency_tex);
    // Version 6 with an absent transparency slot has no fresnel texture.
    RecordBuilder v6;
    // Every field differs from its neighbours, so that the record written back shows any
    // two reads or writes that changed places.
    v6.version(6).color(0.1f, 0.2f, 0.3f).color(0.4f, 0.5f, 0.6f).floats({0.6f, 0.7f, 0.02f});
    v6.ints({9, 1, 6}).floats({1.5f, 1.6f, 1.7f, 0.3f}).absent().absent().absent().absent();
    auto p6 = readAs<Phong_BRDF>(v6.floats({0.25f, 30}).brdfSection("Plain"));
    EXPECT_FALSE(p6.transparency_tex);
    EXPECT_EQ((F{p6.hilightGlossiness, p6.reflectionGlossiness, p6.transparency_tex_mult}),
              (F{0.6f, 0.7f, 0.3f}));
    expectWritesBack(p6, v6);
}

TEST(MirrorBrdf, EveryVersion) {
    auto head = [](uint32_t v, int32_t fresnelOn) {
        RecordBuilder r;
        r.version(v).color(1, 1, 1).color(0.5f, 0.5f, 0.5f).floats({0.9f, 1.6f, 0.02f});
        return r.i32(fresnelOn);
    };
    // Version 1: the fresnel flag replaces the path texture.
    const auto fresnel = readAs<Mirror_BRDF>(head(1, 1).i32(3).text("old.png"));
    EXPECT_FLOAT_EQ(fresnelIorOf(fresnel.transparency_tex), 1.6f);
    EXPECT_EQ((F{fresnel.transparency_tex_mult, fresnel.cutoff}), (F{0.9f, 0.02f}));
    EXPECT_EQ(fresnel.mirrorMode, 3);
    EXPECT_EQ(pathOf(readAs<Mirror_BRDF>(head(1, 0).i32(2).text("kept.png")).transparency_tex),
              u"kept.png");
    const auto m2 = readAs<Mirror_BRDF>(head(2, 0).i32(2).text("a.png").f32(4).text("b.png"));
    EXPECT_EQ(pathOf(m2.color_tex), u"b.png");
    EXPECT_FLOAT_EQ(m2.color_tex_mult, 4);
    EXPECT_FALSE(readAs<Mirror_BRDF>(head(3, 0).i32(2).f32(4).absent().absent()).transparency_tex);
    EXPECT_EQ(
        readAs<Mirror_BRDF>(head(4, 0).i32(2).f32(4).absent().absent().brdfSection("Chrome")).name,
        u"Chrome");
    RecordBuilder v5;
    v5.version(5).color(1, 1, 1).color(0.5f, 0.5f, 0.5f).floats({0.9f, 0.02f}).i32(2).f32(4);
    const auto m5 =
        readAs<Mirror_BRDF>(v5.append(fresnelSlot(1.8f)).absent().brdfSection("Chrome"));
    EXPECT_FLOAT_EQ(fresnelIorOf(m5.transparency_tex), 1.8f);
}

TEST(LightBrdf, EveryVersion) {
    RecordBuilder v1;
    const auto l1 =
        readAs<Light_BRDF>(v1.version(1).color(0.1f, 0.2f, 0.3f).f32(5).f32(0.5f).text("glow.png"));
    EXPECT_EQ((F{l1.intensity, l1.transparency_tex_mult}), (F{5, 0.5f}));
    EXPECT_EQ(pathOf(l1.transparency_tex), u"glow.png");
    auto head = [](uint32_t v) {
        RecordBuilder r;
        r.version(v).color(0.1f, 0.2f, 0.3f).color(0.4f, 0.5f, 0.6f).floats({5, 2, 3, 0.5f});
        return r;
    };
    const auto l2 = readAs<Light_BRDF>(head(2).text("c.png").text("t.png"));
    EXPECT_EQ((F{l2.glowLevel, l2.color_tex_mult}), (F{2, 3}));
    EXPECT_EQ(pathOf(l2.transparency_tex), u"t.png");
    readAs<Light_BRDF>(head(3).absent().absent());
    EXPECT_EQ(readAs<Light_BRDF>(head(4).absent().absent().brdfSection("L")).doubleSided, 1);
    EXPECT_EQ(readAs<Light_BRDF>(head(5).absent().absent().brdfSection("L").i32(0)).doubleSided, 0);
    // Version 5 stops at a failed section.
    RecordBuilder r = head(5);
    r.absent().absent().u32(0x40001).i32(0);
    Light_BRDF light;
    QuickArchive archive = r.archive();
    EXPECT_FALSE(light.deserialize(archive));
    EXPECT_EQ(light.doubleSided, 1);
    EXPECT_EQ(archive.readPos(), r.size() - 4);
}

TEST(BrdfLayers, RefuseBadVersionWordsAndAnUnknownTextureId) {
    const std::pair<int, uint32_t> newest[] = {{1, 6}, {2, 4}, {4, 6}, {8, 6}, {16, 5}, {32, 5}};
    for (auto [id, major] : newest) {
        for (uint32_t word : {(major + 1) << 16, 0x20001u, 0u}) {
            auto layer = createBRDF(id);
            layer->name = u"Before";
            EXPECT_FALSE(deserializeFrom(*layer, RecordBuilder().u32(word))) << id << " " << word;
            EXPECT_EQ(layer->name, layer->pluginType());
        }
    }
    RecordBuilder r;
    r.version(2).color(0, 0, 0).color(0, 0, 0).f32(1).f32(1).boolean(true).i32(13);
    EXPECT_FALSE(deserializeFrom(Diffuse_BRDF(), r));
}

namespace {

// Every texture slot of a layer, in the order of its field table.
std::vector<TexturePtr*> slotsOf(Base_BRDF& layer) {
    if (auto* g = dynamic_cast<Glass_BRDF*>(&layer)) {
        return {&g->color_tex, &g->glossiness_tex, &g->ior_texture, &g->translucency_tex,
                &g->transparency_tex};
    }
    if (auto* d = dynamic_cast<Diffuse_BRDF*>(&layer)) return {&d->color_tex, &d->transparency_tex};
    if (auto* r = dynamic_cast<Blinn_BRDF*>(&layer)) {
        return {&r->color_tex, &r->hilightGlossiness_tex, &r->reflectionGlossiness_tex,
                &r->transparency_tex};
    }
    if (auto* p = dynamic_cast<Phong_BRDF*>(&layer)) {
        return {&p->color_tex, &p->hilightGlossiness_tex, &p->reflectionGlossiness_tex,
                &p->transparency_tex};
    }
    if (auto* m = dynamic_cast<Mirror_BRDF*>(&layer)) return {&m->transparency_tex, &m->color_tex};
    auto& l = dynamic_cast<Light_BRDF&>(layer);
    return {&l.color_tex, &l.transparency_tex};
}

}  // namespace

// Every slot filled with a texture of its own: the written layer reads back equal, and its
// clone holds an equal but separate copy of each child.
TEST(BrdfLayers, SerializeReadsBackAndClonesShareNoChild) {
    for (int id : {1, 2, 4, 8, 16, 32}) {
        SCOPED_TRACE(id);
        auto layer = createBRDF(id);
        layer->name = u"Layer";
        layer->layerFlagC = true;
        const auto slots = slotsOf(*layer);
        for (size_t i = 0; i < slots.size(); ++i) {
            *slots[i] = std::make_shared<AColorTexture>(AColor(0.1f * i, 0, 0, 1));
        }
        QuickArchive archive(1);
        ASSERT_TRUE(layer->serialize(archive));
        auto back = createBRDF(id);
        ASSERT_TRUE(back->deserialize(archive)) << id;
        EXPECT_EQ(archive.readPos(), archive.writePos()) << id;
        EXPECT_EQ(back->name, u"Layer");
        EXPECT_TRUE(back->layerFlagC);
        EXPECT_TRUE(layer->isEqual(back));
        auto copy = layer->clone();
        EXPECT_TRUE(layer->isEqual(copy));
        const auto copied = slotsOf(*copy);
        for (size_t i = 0; i < slots.size(); ++i) {
            ASSERT_TRUE(*copied[i]) << i;
            EXPECT_NE(copied[i]->get(), slots[i]->get()) << i;
            EXPECT_TRUE((*slots[i])->isEqual(*copied[i])) << i;
        }
        // A reset drops the children and gives back a fresh layer.
        layer->setDefaults();
        auto fresh = createBRDF(id);
        EXPECT_TRUE(layer->isEqual(fresh));
        EXPECT_EQ(xmlOf(*layer), xmlOf(*fresh));
    }
}

TEST(BrdfLayers, IsEqualIgnoresNamesAndFlagsButNotFieldsOrChildren) {
    Diffuse_BRDF a;
    auto other = std::make_shared<Diffuse_BRDF>();
    other->name = u"Other";
    other->layerFlagA = false;
    other->color.g = NAN;
    EXPECT_TRUE(a.isEqual(other));
    other->color_tex_mult = 2;
    EXPECT_FALSE(a.isEqual(other));
    other->color_tex_mult = 1;
    other->transparency_tex = makeBitmapTexture(u"x.png");
    EXPECT_FALSE(a.isEqual(other));
    EXPECT_FALSE(a.isEqual(nullptr));
    auto blinn = std::make_shared<Blinn_BRDF>();
    auto phong = std::make_shared<Phong_BRDF>();
    EXPECT_FALSE(blinn->isEqual(phong));
    EXPECT_EQ(xmlOf(*blinn, u"/M"), xmlOf(*phong, u"/M"));
}

TEST(BrdfXml, InvertedFilterIsClampedAtZeroOnly) {
    Phong_BRDF phong;
    phong.transparency_tex.reset();
    phong.reflectFilter = Color(0.25f, 1.5f, -1.0f);
    EXPECT_TRUE(has(xmlOf(phong, u"/M"),
                    u"name=\"transparency\" handler=\"default\" listType=\"none\" "
                    u"label=\"transparency\">\n            <value>\n              <r>0.75</r>\n"
                    u"              <g>0</g>\n              <b>2</b>\n"));
    Glass_BRDF glass;
    glass.transparency = Color(0.25f, 0.25f, 0.25f);
    EXPECT_TRUE(has(xmlOf(glass, u"/M"),
                    u"label=\"transparency\">\n            <value>\n              <r>0.25</r>"));
}

TEST(BrdfXml, ChildWordsDifferFromParameterNames) {
    Glass_BRDF glass;
    glass.glossiness_tex = makeBitmapTexture(u"g.png");
    const std::u16string glassXml = xmlOf(glass, u"/Mat");
    EXPECT_TRUE(has(glassXml,
                    u"label=\"glossiness_tex\">\n            <value>"
                    u"/Mat/BRDFRefraction/glossy_texture/TexBitmap</value>"));
    // Children stand ahead of the layer's own block.
    EXPECT_LT(glassXml.find(u"TexBitmap\" >"), glassXml.find(u"url=\"/Mat/BRDFRefraction\" >"));
    Light_BRDF light;
    light.name = u"Glow";
    light.transparency_tex = makeBitmapTexture(u"t.png");
    const std::u16string lightXml = xmlOf(light, u"/Mat");
    EXPECT_TRUE(has(lightXml, u"<value>/Mat/Glow/transp_texture/TexBitmap</value>"));
    EXPECT_TRUE(has(lightXml, u"label=\"doubleSided\">\n            <value>1</value>"));
}
