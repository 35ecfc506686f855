#include "archive/class_names.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>

#include "lights/base_light.h"
#include "materials/base_brdf.h"
#include "materials/base_material.h"
#include "options/all_options.h"
#include "textures/base_texture.h"
#include "textures/base_uvw.h"
#include "upgrade/skp_module.h"

using namespace CorvaneCore;

namespace {

// Type ids well past the last one any family knows.
constexpr int kIdsToTry = 64;

// The names of every class a factory makes, each checked to be listed and distinct.
template <class Base>
void collectNames(std::shared_ptr<Base> (*factory)(int), std::set<std::string>& seen, int& count) {
    for (int id = 0; id < kIdsToTry; ++id) {
        const std::shared_ptr<Base> object = factory(id);
        if (!object) continue;
        ++count;
        const Base& instance = *object;
        const std::string name = className(typeid(instance));
        EXPECT_NE(name, "unlisted class") << typeid(Base).name() << " id " << id;
        EXPECT_TRUE(seen.insert(name).second) << name << " named twice";
    }
}

}  // namespace

TEST(ClassNames, EveryClassAFactoryMakesHasItsOwnName) {
    std::set<std::string> seen;
    int made = 0;
    collectNames(createBRDF, seen, made);
    collectNames(createMaterial, seen, made);
    collectNames(createTexture, seen, made);
    collectNames(createBitmap, seen, made);
    collectNames(createUVW, seen, made);
    collectNames(createLight, seen, made);
    EXPECT_EQ(seen.size(), static_cast<size_t>(made));
    // 6 layers, 15 materials, 13 textures, 1 bitmap, 4 generators, 7 lights.
    EXPECT_EQ(made, 46);
}

TEST(ClassNames, ObjectsAreNamedByTheirMostDerivedClassWithoutNamespace) {
    const std::shared_ptr<BaseMaterial> layered = createMaterial(1);
    const std::shared_ptr<BaseLight> omni = createLight(2);
    ASSERT_TRUE(layered && omni);
    const BaseMaterial& material = *layered;
    const BaseLight& light = *omni;
    EXPECT_STREQ(className(typeid(material)), "MaterialLayeredBRDF");
    EXPECT_STREQ(className(typeid(light)), "OmniLight");
    EXPECT_STREQ(className(typeid(BaseTexture)), "BaseTexture");
    EXPECT_STREQ(className(typeid(AllOptions)), "AllOptions");
    EXPECT_STREQ(className(typeid(SkpModule)), "SkpModule");
    EXPECT_STREQ(className(typeid(int)), "unlisted class");
}
