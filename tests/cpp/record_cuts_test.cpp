// The newest record of every layer, of the wrappers that reset before reading and of the bitmap
// texture with its two children, assembled
// from their field tables with each field unlike its neighbours and its default, and cut by the
// end of the archive at every byte: what the cut leaves out must stand as a read past the end
// leaves it, and what it holds as stored.
#include <gtest/gtest.h>

#include <memory>

#include "cut_records.h"
#include "material_bytes.h"
#include "materials/brdf.h"
#include "materials/wrappers.h"
#include "textures/texture.h"

using namespace CorvaneCore;
using namespace cut_records;

namespace {

// The layer section: its word, the name and the three flags (defaults true, false, false).
Fields& layerSection(Fields& s) {
    return s.word(4).text("Layer").b(false, true).b(true, false).b(false, false);
}

Fields diffuseFields() {
    Fields s(4);
    s.color(0.1f, 0.2f, 0.3f).color(0.4f, 0.5f, 0.6f).f(2.5f, 1).f(3.5f, 1).absent().absent();
    return layerSection(s).b(true, false);
}

// Blinn and Phong share their layout.
Fields reflectionFields() {
    Fields s(6);
    s.color(0.1f, 0.2f, 0.3f).color(0.4f, 0.5f, 0.6f).f(0.25f, 1).f(0.5f, 1).f(0.125f, 0.01f);
    s.i(3, 8).i(1, 0).i(7, 5).f(2.5f, 1).f(3.5f, 1).f(4.5f, 1).f(5.5f, 1);
    s.absent().absent().absent().absent().f(0.75f, 0).f(0.375f, 0);
    return layerSection(s);
}

Fields mirrorFields() {
    Fields s(5);
    s.color(0.1f, 0.2f, 0.3f).color(0.4f, 0.5f, 0.6f).f(2.5f, 1).f(0.125f, 0.01f).i(3, 1);
    s.f(3.5f, 1).absent().absent();
    return layerSection(s);
}

Fields lightLayerFields() {
    Fields s(5);
    s.color(0.1f, 0.2f, 0.3f).color(0.4f, 0.5f, 0.6f).f(2.5f, 1).f(3.5f, 1).f(4.5f, 1);
    s.f(5.5f, 1).absent().absent();
    return layerSection(s).i(0, 1);
}

Fields glassFields() {
    Fields s(6);
    s.color(0.1f, 0.2f, 0.3f).color(0.4f, 0.5f, 0.6f).f(2.5f, 1.55f).f(3.5f, 1.55f);
    s.f(0.125f, 0.001f).f(4.5f, 1).f(0.5f, 1).i(7, 5).i(3, 8).i(1, 0).i(0, 0);
    s.f(5.5f, 1).f(6.5f, 1).f(7.5f, 1).i(1, 0).f(8.5f, 1000).f(0.25f, 0).f(0.75f, 1);
    s.f(9.5f, 1).color(0.7f, 0.8f, 0.9f).absent().absent().absent().absent();
    s.color(0.2f, 0.3f, 0.4f).f(10.5f, 1).absent();
    return layerSection(s);
}

// A material's own section: its word, name and uuid.
Fields& materialSection(Fields& s) { return s.word(2).text("Outline").text("uuid-1"); }

Fields toonFields() {
    Fields s(2);
    s.absent().f(2.5f, 1.5f).f(3.5f, 1).absent().f(0.25f, 1).f(4.5f, 1).absent();
    s.f(0.75f, 0).f(5.5f, 1).absent().color(0.1f, 0.2f, 0.3f).f(6.5f, 1).absent();
    s.f(0.5f, 0.95f).f(0.125f, 0.02f).f(0.375f, 0.7f).f(7.5f, 1).b(false, true).b(true, false);
    return materialSection(s).b(true, false).f(8.5f, 1.5f);
}

Fields angleBlendFields() {
    Fields s(1);
    return materialSection(s).absent().absent().f(2.5f, 75).f(3.5f, 150);
}

Fields alphaContributionFields() {
    Fields s(1);
    return materialSection(s).absent().absent().f(2.5f, 1).f(0.5f, 1);
}

// Placement components: their word, nine floats from `first` on and three mirror flags.
Fields& components(Fields& s, float first) {
    s.word(1).f(first, 0).f(first + 1, 0).f(first + 2, 0).f(2, 1).f(3, 1).f(4, 1);
    return s.f(first + 3, 0).f(first + 4, 0).f(first + 5, 0).i(1, 0).i(0, 0).i(1, 0);
}

// Both child ids first (a channel generator and a buffer), then both children's data. A cut
// inside the ids reads the missing bytes as zero, so a generator of another class enters.
Fields bitmapTextureFields() {
    Fields s(1);
    s.i(4, 0).i(0, 0).word(2).transform(1).transform(20).i(1, 0).i(2, 0).i(3, 1);
    components(s, 10);
    components(s, 40);
    return s.word(1).i(2, 1).f(0.25f, 0.15f).f(2.2f, 1).text("C:/t.png").b(false, true);
}

// Name and uuid that a cut material keeps from before, or a fresh one draws.
void sameName(BaseMaterial& m) {
    m.name = u"Named";
    m.uuid = u"";
}

class WrapperCuts : public material_test::MaterialSetTest {};

}  // namespace

TEST(LayerCuts, EveryLayerWritesBackItsDistinctRecord) {
    expectWritesBackDistinctRecord(maker<Base_BRDF, Diffuse_BRDF>(), diffuseFields());
    expectWritesBackDistinctRecord(maker<Base_BRDF, Blinn_BRDF>(), reflectionFields());
    expectWritesBackDistinctRecord(maker<Base_BRDF, Phong_BRDF>(), reflectionFields());
    expectWritesBackDistinctRecord(maker<Base_BRDF, Mirror_BRDF>(), mirrorFields());
    expectWritesBackDistinctRecord(maker<Base_BRDF, Light_BRDF>(), lightLayerFields());
    expectWritesBackDistinctRecord(maker<Base_BRDF, Glass_BRDF>(), glassFields());
}

TEST(LayerCuts, RecordsCutAtEveryByteLeaveWhatAReadPastTheEndGives) {
    expectEveryCutLeavesPastEndValues(maker<Base_BRDF, Diffuse_BRDF>(), diffuseFields());
    expectEveryCutLeavesPastEndValues(maker<Base_BRDF, Blinn_BRDF>(), reflectionFields());
    expectEveryCutLeavesPastEndValues(maker<Base_BRDF, Phong_BRDF>(), reflectionFields());
    expectEveryCutLeavesPastEndValues(maker<Base_BRDF, Mirror_BRDF>(), mirrorFields());
    expectEveryCutLeavesPastEndValues(maker<Base_BRDF, Light_BRDF>(), lightLayerFields());
    // Glass resets only its name and flags before reading: start from a fresh one.
    expectEveryCutLeavesPastEndValues(maker<Base_BRDF, Glass_BRDF>(), glassFields(), Start::Fresh);
}

TEST_F(WrapperCuts, EveryResettingWrapperWritesBackItsDistinctRecord) {
    expectWritesBackDistinctRecord(maker<BaseMaterial, MaterialToon>(), toonFields());
    expectWritesBackDistinctRecord(maker<BaseMaterial, MaterialAngleBlend>(), angleBlendFields());
    expectWritesBackDistinctRecord(maker<BaseMaterial, MaterialAlphaContribution>(),
                                   alphaContributionFields());
}

TEST_F(WrapperCuts, RecordsCutAtEveryByteLeaveWhatAReadPastTheEndGives) {
    const std::function<void(BaseMaterial&)> same = sameName;
    expectEveryCutLeavesPastEndValues(maker<BaseMaterial, MaterialToon>(), toonFields(),
                                      Start::Used, same);
    expectEveryCutLeavesPastEndValues(maker<BaseMaterial, MaterialAngleBlend>(), angleBlendFields(),
                                      Start::Used, same);
    expectEveryCutLeavesPastEndValues(maker<BaseMaterial, MaterialAlphaContribution>(),
                                      alphaContributionFields(), Start::Used, same);
}

TEST_F(WrapperCuts, BitmapTextureCutAtEveryByteLeavesWhatAReadPastTheEndGives) {
    expectWritesBackDistinctRecord(maker<BaseTexture, BitmapTexture>(), bitmapTextureFields());
    expectEveryCutLeavesPastEndValues(maker<BaseTexture, BitmapTexture>(), bitmapTextureFields());
}
