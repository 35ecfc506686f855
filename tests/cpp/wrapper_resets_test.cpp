// What resets a used wrapper: setDefaults drops every child and restores every number, and a
// toon outline whose material section fails keeps what it read ahead of the section, its
// defaults behind it, and fails, whatever follows the bad section in the stream.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "material_bytes.h"
#include "materials/material.h"
#include "materials/wrappers.h"
#include "textures/procedural.h"

using namespace CorvaneCore;
using namespace material_test;

namespace {

// Fields 1 to 19 of the toon table, each unlike its neighbours and its default.
RecordBuilder& toonHead(RecordBuilder& r, uint32_t major) {
    r.version(major).absent().floats({2.5f, 3.5f}).absent();          // base, width, its multiplier
    r.floats({0.25f, 4.5f}).absent().floats({0.75f, 5.5f}).absent();  // opacity, distort
    r.color(0.1f, 0.2f, 0.3f).f32(6.5f).absent();                     // line colour
    return r.floats({0.5f, 0.125f, 0.375f, 7.5f}).boolean(false).boolean(true);
}

class ToonSection : public MaterialSetTest {};
class UsedWrappers : public MaterialSetTest {};

MaterialPtr child() { return std::make_shared<MaterialSingleBRDF>(); }
TexturePtr texture() { return std::make_shared<CheckerTexture>(); }

// `used` after setDefaults compares equal with a fresh object of its class, and unequal before.
template <class W>
void expectResetsWholly(const std::shared_ptr<W>& used) {
    SCOPED_TRACE(used->getType());
    auto fresh = std::make_shared<W>();
    EXPECT_FALSE(used->isEqual(fresh));
    used->setDefaults();
    EXPECT_TRUE(used->isEqual(fresh));
}

}  // namespace

TEST_F(ToonSection, AFailingSectionEndsTheReadAndKeepsTheSilhouetteDefaults) {
    RecordBuilder whole;
    section(toonHead(whole, 2), "Outline").boolean(true).f32(8.5f);
    MaterialToon toon;
    ASSERT_TRUE(readAll(toon, whole));
    EXPECT_EQ(std::make_pair(toon.doSilhouetteMult, toon.silhouetteMult),
              std::make_pair(true, 8.5f));

    // The same fields, then a section of an unknown version and what a newer record would hold.
    RecordBuilder broken;
    toonHead(broken, 2).version(3).text("Outline").text("").boolean(true).f32(9.5f);
    EXPECT_FALSE(deserializeFrom(toon, broken));
    EXPECT_EQ(std::make_pair(toon.doSilhouetteMult, toon.silhouetteMult),
              std::make_pair(false, 1.5f));

    // A version 1 record of the same fields holds what the failed read left.
    RecordBuilder older;
    section(toonHead(older, 1), "Outline");
    auto expected = std::make_shared<MaterialToon>();
    ASSERT_TRUE(readAll(*expected, older));
    EXPECT_TRUE(toon.isEqual(expected));
    expected->lineWidth = 1.5f;
    EXPECT_FALSE(toon.isEqual(expected));
}

TEST_F(UsedWrappers, SetDefaultsDropsEveryChildAndRestoresEveryNumber) {
    auto bump = std::make_shared<MaterialBump>();
    bump->base_mtl = child();
    bump->bump_tex = texture();
    bump->bump_tex_mult = 3.0f;
    expectResetsWholly(bump);

    auto twoSided = std::make_shared<Material2Sided>();
    twoSided->front = child();
    twoSided->back = child();
    twoSided->translucency_tex = texture();
    twoSided->transparency_tex = texture();
    twoSided->translucency = Color(0.1f, 0.2f, 0.3f);
    twoSided->transparency = Color(0.4f, 0.5f, 0.6f);
    twoSided->translucency_tex_mult = 2.0f;
    twoSided->transparency_tex_mult = 3.0f;
    twoSided->force_1sided = true;
    expectResetsWholly(twoSided);

    auto hostTwoSided = std::make_shared<MaterialSkp2Sided>();
    hostTwoSided->front = child();
    hostTwoSided->back = child();
    hostTwoSided->force_1sided = true;
    expectResetsWholly(hostTwoSided);

    auto toon = std::make_shared<MaterialToon>();
    toon->base_mtl = child();
    toon->lineWidthTex = texture();
    toon->opacityTex = texture();
    toon->distortTex = texture();
    toon->lineColorTex = texture();
    toon->lineColor = Color(0.1f, 0.2f, 0.3f);
    toon->lineWidth = toon->lineWidthTexMult = toon->opacity = toon->opacityTexMult = 4.0f;
    toon->distort = toon->distortTexMult = toon->lineColorTexMult = toon->zThreshold = 5.0f;
    toon->traceBias = toon->normalThreshold = toon->line_units = toon->silhouetteMult = 6.0f;
    toon->doSecondary = false;
    toon->divideByDist = toon->doSilhouetteMult = true;
    expectResetsWholly(toon);
}
