// Linked materials and references: the link id, both reference versions, how a reference
// refreshes and resolves, the name checks and the scene's default material.
#include <gtest/gtest.h>

#include <string>

#include "material_bytes.h"
#include "materials/brdf.h"
#include "materials/material.h"
#include "materials/material_linked.h"
#include "materials/wrappers.h"
#include "texture_bytes.h"
#include "xml/asset_xml_writer.h"

using namespace CorvaneCore;
using namespace material_test;

namespace {

class LinkedTest : public MaterialSetTest {};

using Materials = std::vector<MaterialPtr>;

std::shared_ptr<MaterialLayeredBRDF> layered(const std::u16string& name,
                                             const std::u16string& uuid) {
    auto material = std::make_shared<MaterialLayeredBRDF>();
    material->name = name;
    material->uuid = uuid;
    return material;
}

}  // namespace

TEST_F(LinkedTest, IdDataKeepsEveryKindAndRefusesOthers) {
    for (int32_t kind : {0, 1}) {
        RecordBuilder r;
        r.version(1).u32(static_cast<uint32_t>(kind)).text("Host Brick");
        MaterialLinked::IdData id;
        ASSERT_TRUE(readAll(id, r));
        EXPECT_EQ(id.text, u"Host Brick");
        expectWritesBack(id, r);
    }
    auto id = readAs<MaterialLinked::IdData>(RecordBuilder().version(1).u32(2).i32(-7));
    EXPECT_EQ(id.number, -7);
    for (uint32_t kind : {3u, 0xFFFFFFFFu}) {
        EXPECT_FALSE(deserializeFrom(id, RecordBuilder().version(1).u32(kind).i32(0))) << kind;
    }
    EXPECT_FALSE(deserializeFrom(id, RecordBuilder().version(2).u32(2).i32(0)));
    QuickArchive out;
    for (int32_t kind : {3, -1}) {
        id.kind = kind;
        EXPECT_FALSE(id.serialize(out));
    }
    EXPECT_EQ(out.writePos(), 0u);
}

TEST_F(LinkedTest, LinkedMaterialReadsItsOneVersionAndIsTransparentToTheWalk) {
    RecordBuilder r;
    r.version(1).version(1).u32(0).text("Host Brick").i32(1);
    section(plainLayered(r, "Inner", "Layer"), "Link", "lk");
    MaterialLinked linked;
    ASSERT_TRUE(readAll(linked, r));
    EXPECT_EQ(linked.base_mtl->name, u"Inner");
    expectWritesBack(linked, r);
    auto shared = std::make_shared<MaterialLinked>(linked);
    EXPECT_EQ(collectMaterials(shared, 1), Materials{linked.base_mtl});
    auto clone = std::static_pointer_cast<MaterialLinked>(linked.clone());
    EXPECT_NE(clone->base_mtl, linked.base_mtl);
    clone->linkId.text = u"HOST BRICK";
    EXPECT_TRUE(clone->isEqual(shared));  // text compares without case
    clone->linkId.kind = 1;
    EXPECT_FALSE(clone->isEqual(shared));
    // An unknown id leaves no base material; without one nothing can be written.
    EXPECT_FALSE(
        deserializeFrom(linked, RecordBuilder().version(1).version(1).u32(2).i32(0).i32(15)));
    EXPECT_FALSE(linked.base_mtl);
    EXPECT_EQ(linked.name, u"Link");  // setDefaults leaves the name alone
    QuickArchive none;
    EXPECT_FALSE(linked.serialize(none));
    EXPECT_EQ(none.writePos(), 0u);
}

TEST_F(LinkedTest, ReferenceReadsBothVersions) {
    MaterialReference r1;
    ASSERT_TRUE(readAll(r1, section(RecordBuilder().version(1), "Ref").text("target-1")));
    EXPECT_EQ(r1.target, u"target-1");
    EXPECT_FALSE(r1.resolved);  // until a write or a walk finds the target
    RecordBuilder v2;
    plainLayered(section(v2.version(2), "Ref").text("target-2").boolean(true).i32(1), "Copy", "L");
    MaterialReference r2;
    ASSERT_TRUE(readAll(r2, v2));
    EXPECT_EQ(r2.resolved->name, u"Copy");
    MaterialReference refused;
    EXPECT_FALSE(deserializeFrom(
        refused, RecordBuilder().version(2).version(3).text("Ref").text("").text("t")));
    EXPECT_TRUE(refused.target.empty());
    EXPECT_FALSE(deserializeFrom(
        refused, section(RecordBuilder().version(2), "Ref").text("t").boolean(true).i32(15)));
}

TEST_F(LinkedTest, ReferenceWriteRefreshesResolvedFromTheSet) {
    MaterialReference reference;
    reference.target = u"ID-1";
    reference.resolved = layered(u"Stale", u"");
    QuickArchive missing;
    ASSERT_TRUE(reference.serialize(missing));
    EXPECT_EQ(reference.resolved->name, u"Stale");  // not found: the old copy stays
    auto live = layered(u"Live", u"id-1");
    sceneMaterials()->addMaterial(live);
    QuickArchive found;
    ASSERT_TRUE(reference.serialize(found));
    EXPECT_EQ(reference.resolved, live);
    MaterialReference back;
    ASSERT_TRUE(back.deserialize(found));
    EXPECT_EQ(back.resolved->name, u"Live");
    // A reference that its own target holds cannot be written, rather than recursing.
    auto loop = std::make_shared<MaterialReference>();
    loop->target = u"loop";
    auto bump = std::make_shared<MaterialBump>();
    bump->name = u"Loop";
    bump->uuid = u"loop";
    bump->base_mtl = loop;
    sceneMaterials()->addMaterial(bump);
    QuickArchive cycle;
    EXPECT_FALSE(loop->serialize(cycle));
    EXPECT_FALSE(loop->isEqual(loop));
    EXPECT_TRUE(collectMaterials(loop, 1).empty());
    loop->resolved.reset();  // the write made a cycle of owners
}

TEST_F(LinkedTest, AWalkThatFindsTheTargetKeepsIt) {
    auto reference = std::make_shared<MaterialReference>();
    reference->target = u"id-1";
    EXPECT_TRUE(collectMaterials(reference, 1).empty());
    auto live = layered(u"Live", u"id-1");
    sceneMaterials()->addMaterial(live);
    EXPECT_EQ(collectMaterials(reference, 1), Materials{live});
    EXPECT_EQ(reference->resolved, live);
    sceneMaterials()->removeMaterial(u"Live");
    EXPECT_EQ(collectMaterials(reference, 1), Materials{live});  // the copy stands in
}

TEST_F(LinkedTest, ResolveIsUsableCopiesAndEquality) {
    auto inner = std::make_shared<MaterialReference>();
    auto outer = std::make_shared<MaterialReference>();
    outer->resolved = inner;
    EXPECT_EQ(resolveReference(outer), inner);  // one step, no look-up
    auto plainMaterial = layered(u"Plain", u"");
    EXPECT_EQ(resolveReference(plainMaterial), plainMaterial);
    EXPECT_FALSE(resolveReference(nullptr));
    EXPECT_FALSE(isUsable(nullptr));
    EXPECT_FALSE(isUsable(inner));
    inner->target = u"t";
    EXPECT_TRUE(isUsable(inner));
    outer->name = u"Outer";
    sceneMaterials()->addMaterial(outer);
    auto clone = std::static_pointer_cast<MaterialReference>(outer->clone());
    EXPECT_EQ(clone->name, u"Outer");  // a reference keeps its name
    EXPECT_EQ(clone->resolved, inner);
    // Equal targets (without case) and equal materials behind them.
    auto a = std::make_shared<MaterialReference>();
    auto b = std::make_shared<MaterialReference>();
    a->target = u"abc";
    b->target = u"ABC";
    EXPECT_TRUE(a->isEqual(b));  // neither is found
    sceneMaterials()->addMaterial(layered(u"Target", u"abc"));
    EXPECT_TRUE(a->isEqual(b));
    b->target = u"other";
    EXPECT_FALSE(a->isEqual(b));
    EXPECT_FALSE(a->isEqual(plainMaterial));
}

TEST_F(LinkedTest, ReferenceHasNoXmlFormAndEndsTheProcess) {
    MaterialReference reference;
    std::string text;
    AssetXmlWriter writer(text);
    EXPECT_DEATH(reference.writeXML(writer, u""), "");
    EXPECT_DEATH(reference.pluginType(), "");
}

TEST_F(LinkedTest, ValidateNameTestsUseBeforeEmptiness) {
    std::u16string message = u"stale";
    EXPECT_TRUE(validateName(u"Free", message));
    EXPECT_TRUE(message.empty());
    EXPECT_FALSE(validateName(u"", message));
    EXPECT_EQ(message, u"A name must have at least one character");
    sceneMaterials()->addMaterial(layered(u"Brick", u""));
    EXPECT_FALSE(validateName(u"BRICK", message));
    EXPECT_EQ(message, u"The name, \"BRICK\", is already in use");
    sceneMaterials()->putMaterial(layered(u"", u""));
    EXPECT_FALSE(validateName(u"", message));
    EXPECT_EQ(message, u"The name, \"\", is already in use");
}

TEST_F(LinkedTest, DefaultMaterialIsAClonedLayeredMaterialInTheSet) {
    MaterialPtr material = makeDefaultMaterial();
    EXPECT_EQ(sceneMaterials()->findByName(u"Default_Ombra_Material"), material);
    auto layeredMaterial = std::dynamic_pointer_cast<MaterialLayeredBRDF>(material);
    ASSERT_TRUE(layeredMaterial);
    ASSERT_EQ(layeredMaterial->brdfs.size(), 1u);
    EXPECT_EQ(layeredMaterial->brdfs[0]->name, u"Diffuse");
    EXPECT_EQ(sceneMaterials()->ids().size(), 1u);
}
