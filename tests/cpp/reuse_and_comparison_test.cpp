// Behaviour shared by every family: comparison with nothing and with another class, what a
// refused read resets, and objects read a second time from an older record.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "lights/base_light.h"
#include "material_bytes.h"
#include "materials/brdf.h"
#include "materials/material.h"
#include "materials/wrappers.h"
#include "params/animated.h"
#include "textures/base_uvw.h"
#include "textures/procedural.h"
#include "textures/sky.h"
#include "textures/texture.h"
#include "xml/text.h"

using namespace CorvaneCore;
using namespace material_test;

namespace {

// Every id `make` knows among 0 to 15.
template <class Make>
auto everyKind(Make make) {
    std::vector<decltype(make(0))> out;
    for (int id = 0; id <= 15; ++id) {
        if (auto object = make(id)) out.push_back(object);
    }
    return out;
}

// Nothing and every other class compare unequal; a fresh object of the same class equal,
// except for the classes named in `neverEqual`.
template <class Make>
void expectComparesOnlyWithItsOwnKind(Make make, const std::vector<int>& neverEqual = {}) {
    const auto objects = everyKind(make);
    for (const auto& object : objects) {
        const int type = object->getType();
        SCOPED_TRACE(type);
        EXPECT_FALSE(object->isEqual(nullptr));
        for (const auto& other : objects) {
            if (other->getType() == type) continue;
            EXPECT_FALSE(object->isEqual(other)) << other->getType();
        }
        const bool never =
            std::find(neverEqual.begin(), neverEqual.end(), type) != neverEqual.end();
        EXPECT_EQ(object->isEqual(make(type)), !never);
    }
}

template <class T>
std::string documentOf(T& object) {
    std::string text;
    AssetXmlWriter writer(text);
    object.writeXML(writer, {});
    return writer.stream();
}

// A version 1 FresnelTexture: the four numbers and two colours, no children.
RecordBuilder fresnelVersionOne() {
    RecordBuilder r;
    return r.version(1).color(0.9f, 0.8f, 0.7f).color(0.1f, 0.2f, 0.3f).floats({1.3f, 1.6f});
}

}  // namespace

TEST(Comparison, EveryFamilyRefusesNothingAndOtherClasses) {
    {
        SCOPED_TRACE("layers");
        expectComparesOnlyWithItsOwnKind(createBRDF);
    }
    {
        SCOPED_TRACE("materials");
        // An instance never equals anything, not even a fresh one.
        expectComparesOnlyWithItsOwnKind(createMaterial, {MaterialInstance::kType});
    }
    {
        SCOPED_TRACE("textures");
        // Each sky gets its own id, so two fresh skies differ.
        expectComparesOnlyWithItsOwnKind(createTexture, {12});
    }
    {
        SCOPED_TRACE("generators");
        expectComparesOnlyWithItsOwnKind(createUVW);
    }
    {
        SCOPED_TRACE("bitmaps");
        expectComparesOnlyWithItsOwnKind(createBitmap);
    }
    {
        SCOPED_TRACE("lights");
        // Likewise each sun light.
        expectComparesOnlyWithItsOwnKind(createLight, {kSunLightType});
    }
}

TEST(RefusedReads, LayersResetTheirBasePartAndNameFromThePluginType) {
    for (int id : {1, 2, 4, 8, 16, 32}) {
        SCOPED_TRACE(id);
        auto layer = createBRDF(id);
        layer->name = u"Old";
        layer->layerFlagA = false;
        layer->layerFlagB = layer->layerFlagC = true;
        EXPECT_FALSE(deserializeFrom(*layer, RecordBuilder().u32(0x20001)));
        EXPECT_EQ(layer->name, layer->pluginType());
        EXPECT_TRUE(layer->layerFlagA);
        EXPECT_FALSE(layer->layerFlagB || layer->layerFlagC);
    }
}

class RefusedMaterialReads : public MaterialSetTest {};

// The single and layered materials reset first, name and uuid included; the layered one is
// then a fresh default again.
TEST_F(RefusedMaterialReads, SingleAndLayeredMaterialsDropNameUuidAndLayers) {
    for (int id : {0, 1}) {
        SCOPED_TRACE(id);
        auto material = createMaterial(id);
        RecordBuilder record;
        if (id == 1) {
            ASSERT_TRUE(readAll(*material, plainLayered(record, "Old", "Layer")));
        }
        material->name = u"Old";
        material->uuid = u"uuid-1";
        EXPECT_FALSE(deserializeFrom(*material, RecordBuilder().u32(0x20001)));
        EXPECT_EQ(wideToUtf8(material->name), "DefaultMaterial");
        EXPECT_TRUE(material->uuid.empty());
        EXPECT_TRUE(material->isEqual(createMaterial(id)));
    }
}

// The wrappers that do not reset before reading keep name and uuid.
TEST_F(RefusedMaterialReads, WrappersWithoutABaseResetKeepNameAndUuid) {
    for (int id : {5, 7, 8, 9, 10, 11, 12, 14}) {
        SCOPED_TRACE(id);
        auto material = createMaterial(id);
        material->name = u"Kept";
        material->uuid = u"uuid-2";
        EXPECT_FALSE(deserializeFrom(*material, RecordBuilder().u32(0x20001)));
        EXPECT_EQ(wideToUtf8(material->name + material->uuid), "Keptuuid-2");
    }
}

// Each texture slot of the environment override, in turn, names a texture id nobody has.
TEST_F(RefusedMaterialReads, EveryTextureSlotOfAnOverrideRefusesAnUnknownId) {
    for (int slot = 0; slot < 4; ++slot) {
        SCOPED_TRACE(slot);
        RecordBuilder record;
        section(record.version(1), "Env").absent();
        for (int before = 0; before < slot; ++before) record.absent();
        MaterialOverrideEnvironment environment;
        EXPECT_FALSE(deserializeFrom(environment, unknownSlot(record)));
    }
}

// A texture used before and then given an older record ends as a fresh one that read it:
// children and fields the old version lacks are back at their defaults.
TEST(ReusedObjects, FresnelTextureForgetsChildrenAndMultipliersOfTheNewerRecord) {
    FresnelTexture used;
    used.black_color_tex = std::make_shared<AColorTexture>();
    used.white_color_tex = std::make_shared<AColorTexture>();
    used.fresnel_ior_tex = std::make_shared<AColorTexture>();
    used.refract_ior_tex = std::make_shared<AColorTexture>();
    used.black_color_tex_mult = used.white_color_tex_mult = 2;
    used.fresnel_ior_tex_mult = used.refract_ior_tex_mult = 3;
    ASSERT_TRUE(readAll(used, fresnelVersionOne()));
    FresnelTexture fresh;
    ASSERT_TRUE(readAll(fresh, fresnelVersionOne()));
    EXPECT_FALSE(used.refract_ior_tex || used.fresnel_ior_tex || used.white_color_tex ||
                 used.black_color_tex);
    EXPECT_TRUE(used.isEqual(std::make_shared<FresnelTexture>(fresh)));
    EXPECT_EQ(documentOf(used), documentOf(fresh));
}

TEST(ReusedObjects, CheckerTextureOfVersionOneGetsItsDefaultMultipliers) {
    RecordBuilder record;
    record.version(1).i32(4).version(2).identityTransform().identityTransform().ints({0, 0, 1});
    record.defaultComponents().defaultComponents();
    record.i32(5).version(1).floats({1, 0, 0, 1}).i32(5).version(1).floats({0, 0, 1, 1});
    record.boolean(false).boolean(true);
    CheckerTexture used;
    used.whiteColorMult = used.blackColorMult = 4;
    used.tile_v = false;
    ASSERT_TRUE(readAll(used, record));
    CheckerTexture fresh;
    ASSERT_TRUE(readAll(fresh, record));
    EXPECT_EQ(used.whiteColorMult, 1.0f);
    EXPECT_EQ(used.blackColorMult, 1.0f);
    EXPECT_TRUE(used.isEqual(std::make_shared<CheckerTexture>(fresh)));
}

TEST(ReusedObjects, CurvesResetToTheirOneDefaultKey) {
    AnimatedTransform placement;
    placement.setValue(countingTransform(1), 0.0);
    placement.setValue(countingTransform(2), 3.0);
    placement.reset();
    ASSERT_EQ(placement.keyCount(), 1);
    EXPECT_EQ(placement.keyTime(0), 0.0);
    EXPECT_EQ(placement.getValue(0.0), Transform::identity());
    // A refused word leaves the reset curve.
    placement.setValue(countingTransform(2), 3.0);
    EXPECT_FALSE(deserializeFrom(placement, RecordBuilder().u32(0x20000)));
    EXPECT_EQ(placement.keyCount(), 1);
    EXPECT_EQ(placement.getValue(3.0), Transform::identity());

    AnimatedReal real(false);
    real.setValue(2.5f, 0.0);
    real.setValue(4.0f, 1.0);
    real.reset();
    ASSERT_EQ(real.keyCount(), 1);
    EXPECT_EQ(real.getValue(1.0), 0.0f);
}

class FreshMaterials : public MaterialSetTest {};

// Every fresh material, wrappers included, starts under the unique default name and no uuid.
TEST_F(FreshMaterials, EveryClassStartsUnderTheDefaultName) {
    for (int id = 0; id <= 14; ++id) {
        auto material = createMaterial(id);
        EXPECT_EQ(wideToUtf8(material->name), "DefaultMaterial") << id;
        EXPECT_TRUE(material->uuid.empty()) << id;
    }
}
