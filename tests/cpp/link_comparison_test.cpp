// Comparisons that look through identities: a reference compares the materials its target
// names in the scene's set, and a linked material its base material and every part of its id.
#include <gtest/gtest.h>

#include <memory>

#include "material_bytes.h"
#include "materials/material.h"
#include "materials/material_linked.h"
#include "materials/scene_materials.h"
#include "materials/wrappers.h"

using namespace CorvaneCore;

namespace {

class LinkComparison : public material_test::MaterialSetTest {};

std::shared_ptr<MaterialReference> referenceTo(const std::u16string& target) {
    auto reference = std::make_shared<MaterialReference>();
    reference->target = target;
    return reference;
}

std::shared_ptr<MaterialLinked> linkedTo(const MaterialPtr& base) {
    auto linked = std::make_shared<MaterialLinked>();
    linked->base_mtl = base;
    return linked;
}

}  // namespace

TEST_F(LinkComparison, ReferencesCompareTheMaterialsTheirTargetNames) {
    // An instance never equals anything, itself included: two references naming one compare
    // unequal although their targets agree.
    auto instance = std::make_shared<MaterialInstance>();
    instance->name = u"Inst";
    instance->uuid = u"id-inst";
    ASSERT_TRUE(sceneMaterials()->addMaterial(instance));
    EXPECT_FALSE(referenceTo(u"id-inst")->isEqual(referenceTo(u"ID-INST")));

    auto single = std::make_shared<MaterialSingleBRDF>();
    single->name = u"Single";
    single->uuid = u"id-single";
    ASSERT_TRUE(sceneMaterials()->addMaterial(single));
    EXPECT_TRUE(referenceTo(u"id-single")->isEqual(referenceTo(u"ID-SINGLE")));
    EXPECT_FALSE(referenceTo(u"id-single")->isEqual(referenceTo(u"id-inst")));
}

TEST_F(LinkComparison, LinkedMaterialsCompareBaseKindAndPayload) {
    auto base = std::make_shared<MaterialSingleBRDF>();
    auto a = linkedTo(base);
    auto b = linkedTo(std::make_shared<MaterialSingleBRDF>());
    EXPECT_TRUE(a->isEqual(b));
    EXPECT_FALSE(a->isEqual(linkedTo(std::make_shared<MaterialLayeredBRDF>())));
    EXPECT_FALSE(a->isEqual(linkedTo(nullptr)));
    EXPECT_FALSE(linkedTo(nullptr)->isEqual(a));

    b->linkId.number = 7;  // numbers by value
    EXPECT_FALSE(a->isEqual(b));
    a->linkId.number = 7;
    EXPECT_TRUE(a->isEqual(b));

    // Text kinds compare their text without case, and the kind itself.
    a->linkId.kind = b->linkId.kind = 0;
    a->linkId.text = u"Host";
    b->linkId.text = u"HOST";
    EXPECT_TRUE(a->isEqual(b));
    b->linkId.text = u"Other";
    EXPECT_FALSE(a->isEqual(b));
    b->linkId.text = u"host";
    b->linkId.kind = 1;
    EXPECT_FALSE(a->isEqual(b));
}
