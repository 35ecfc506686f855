// The scene material set: names, look-ups, the two stream versions and the tree walk.
#include "materials/scene_materials.h"

#include <gtest/gtest.h>

#include <chrono>
#include <sstream>
#include <string>
#include <vector>

#include "material_bytes.h"
#include "materials/material.h"
#include "xml/number_format.h"
#include "xml/text.h"

using namespace CorvaneCore;

namespace {

using Materials = std::vector<MaterialPtr>;

class SceneMaterialsTest : public material_test::MaterialSetTest {
protected:
    static SceneMaterials& set() { return *sceneMaterials(); }
    static MaterialPtr enter(const std::u16string& name, const std::u16string& uuid = u"") {
        auto material = std::make_shared<MaterialLayeredBRDF>();
        material->name = name;
        material->uuid = uuid;
        EXPECT_TRUE(set().addMaterial(material)) << std::string(name.begin(), name.end());
        return material;
    }
};

// A version 2 layered material with no layers, as the set's streams hold it.
RecordBuilder& layeredMaterial(RecordBuilder& r, const std::string& name, const std::string& uuid) {
    return r.i32(1).version(2).u32(0).i32(1).i32(0).version(2).text(name).text(uuid);
}

}  // namespace

TEST_F(SceneMaterialsTest, UniqueNameTakesTheStemThenCountsWithoutCase) {
    EXPECT_EQ(set().uniqueName(u"Brick7"), u"Brick");
    enter(u"brick");
    enter(u"Brick1");
    EXPECT_EQ(set().uniqueName(u"Brick1"), u"Brick2");
    EXPECT_EQ(set().uniqueName(u"BRICKWALL"), u"BRICKWALL");
    enter(u"Brick3");
    enter(u"Brick01");
    EXPECT_EQ(set().uniqueName(u"Brick"), u"Brick2");
    enter(u"Brick2");
    EXPECT_EQ(set().uniqueName(u"Brick"), u"Brick4");
}

// The answers for one stem are remembered between asks; every kind of change must show.
TEST_F(SceneMaterialsTest, UniqueNameFollowsEachChangeOfTheSet) {
    std::vector<MaterialPtr> made;
    for (const char16_t* name : {u"Tile", u"tile1", u"Tile2", u"TILE3"}) {
        made.push_back(std::make_shared<MaterialLayeredBRDF>());
        made.back()->name = name;
    }
    EXPECT_EQ(set().uniqueName(u"Tile9"), u"Tile");
    for (size_t i = 0; i < 3; ++i) ASSERT_TRUE(set().addMaterial(made[i]));
    EXPECT_EQ(set().uniqueName(u"Tile"), u"Tile3");
    ASSERT_TRUE(set().addMaterial(made[3]));  // the answer itself, in other case
    EXPECT_EQ(set().uniqueName(u"Tile"), u"Tile4");
    ASSERT_TRUE(set().removeMaterial(u"TILE1"));
    EXPECT_EQ(set().uniqueName(u"Tile"), u"Tile1");
    made[2]->name = u"Slate";
    ASSERT_TRUE(set().renameMaterial(u"Tile2", made[2]));
    EXPECT_EQ(set().uniqueName(u"Tile"), u"Tile1");
    ASSERT_TRUE(set().removeMaterial(u"Tile"));
    EXPECT_EQ(set().uniqueName(u"Tile"), u"Tile");
}

// A set of many materials named DefaultMaterial1, 2, ...: every material made while reading
// asks for a default name, which once scanned all names read so far (minutes for 1 MiB).
TEST_F(SceneMaterialsTest, ReadingManyDefaultNamesStaysLinear) {
    constexpr int kCount = 20000;
    RecordBuilder r;
    r.version(2).u32(kCount);
    for (int i = 1; i <= kCount; ++i) layeredMaterial(r, "DefaultMaterial" + std::to_string(i), "");
    QuickArchive archive = r.u32(0).archive();
    const auto start = std::chrono::steady_clock::now();
    ASSERT_TRUE(set().deserialize(archive));
    EXPECT_LT(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(), 20);
    EXPECT_EQ(set().materials().size(), size_t(kCount));
    EXPECT_EQ(set().uniqueName(u"DefaultMaterial"), u"DefaultMaterial");
    ASSERT_TRUE(set().addMaterial(std::make_shared<MaterialLayeredBRDF>()));
    EXPECT_EQ(set().uniqueName(u"DefaultMaterial"),
              u"DefaultMaterial" + numberText(int64_t(kCount + 1)));
}

TEST_F(SceneMaterialsTest, UniqueNameOfDigitsAloneAndOfBlanks) {
    enter(u"1x");
    EXPECT_EQ(set().uniqueName(u"12"), u"");
    auto unnamed = std::make_shared<MaterialLayeredBRDF>();
    unnamed->name.clear();
    set().putMaterial(unnamed);
    EXPECT_EQ(set().uniqueName(u"12"), u"a1");
    // The search looks for the blank form and sanitises after, so the result can collide.
    EXPECT_EQ(set().uniqueName(u"My Material"), u"My_Material");
    enter(u"My_Material");
    EXPECT_EQ(set().uniqueName(u"My Material"), u"My_Material");
    enter(u"My Material");
    EXPECT_EQ(set().uniqueName(u"My Material"), u"My_Material1");
}

TEST_F(SceneMaterialsTest, AddFindRemoveRename) {
    auto brick = enter(u"Brick", u"uuid-brick");
    EXPECT_EQ(set().findByName(u"BRICK"), brick);
    EXPECT_EQ(set().findByUuid(u"UUID-BRICK"), brick);
    auto twin = std::make_shared<MaterialLayeredBRDF>();
    twin->name = u"bRiCk";
    EXPECT_FALSE(set().addMaterial(twin));
    twin->name.clear();
    EXPECT_FALSE(set().addMaterial(twin));
    EXPECT_FALSE(set().addMaterial(nullptr));
    // A material without a uuid gets one in the table, not on itself.
    auto stone = enter(u"Stone");
    std::u16string stoneUuid;
    for (const auto& id : set().ids()) {
        if (id.second == u"Stone") stoneUuid = id.first;
    }
    EXPECT_FALSE(stoneUuid.empty());
    EXPECT_EQ(stone->uuid, u"");
    stone->name = u"Brick";
    EXPECT_FALSE(set().renameMaterial(u"Stone", stone));
    stone->name = u"Granite";
    ASSERT_TRUE(set().renameMaterial(u"stone", stone));
    EXPECT_FALSE(set().findByName(u"Stone"));
    EXPECT_EQ(set().findByUuid(stoneUuid), stone);
    std::vector<std::u16string> names{u"stale"};
    set().names(names);
    EXPECT_EQ(names, (std::vector<std::u16string>{u"Brick", u"Granite"}));
    EXPECT_TRUE(set().removeMaterial(u"BRICK"));
    EXPECT_EQ(set().ids().count(u"uuid-brick"), 0u);
    EXPECT_FALSE(set().removeMaterial(u"Brick"));
    std::ostringstream dump;
    set().dump(dump);
    EXPECT_EQ(dump.str(),
              "Granite Granite\nBeginning UUIDs\n" + wideToUtf8(stoneUuid) + " Granite\n");
}

TEST_F(SceneMaterialsTest, Version1StreamEntersThroughAdd) {
    RecordBuilder r;
    layeredMaterial(layeredMaterial(r.version(1).u32(2), "Brick", ""), "Stone", "uuid-stone");
    ASSERT_TRUE(readAll(set(), r));
    EXPECT_EQ(set().findByUuid(u"uuid-stone"), set().findByName(u"Stone"));
    ASSERT_EQ(set().ids().size(), 2u);
    std::u16string brickUuid;
    for (const auto& id : set().ids()) {
        if (id.second == u"Brick") brickUuid = id.first;
    }
    EXPECT_EQ(set().findByUuid(brickUuid), set().findByName(u"Brick"));
    // A second load makes new ids for the material that brought none.
    ASSERT_TRUE(deserializeFrom(set(), r));
    EXPECT_FALSE(set().findByUuid(brickUuid));
    RecordBuilder duplicate;
    layeredMaterial(layeredMaterial(duplicate.version(1).u32(2), "Brick", ""), "BRICK", "");
    EXPECT_FALSE(deserializeFrom(set(), duplicate));
    EXPECT_EQ(set().materials().size(), 1u);
}

TEST_F(SceneMaterialsTest, Version2StreamKeepsIdsAsStored) {
    RecordBuilder r;
    layeredMaterial(r.version(2).u32(1), "Brick", "");
    r.u32(2).text("uuid-brick").text("Brick").text("uuid-gone").text("Vanished");
    ASSERT_TRUE(readAll(set(), r));
    EXPECT_EQ(set().findByUuid(u"uuid-brick"), set().findByName(u"Brick"));
    EXPECT_FALSE(set().findByUuid(u"uuid-gone"));
    EXPECT_EQ(set().ids().at(u"uuid-gone"), u"Vanished");
    QuickArchive out(1);
    ASSERT_TRUE(set().serialize(out));
    SceneMaterials reread;
    ASSERT_TRUE(reread.deserialize(out));
    EXPECT_EQ(reread.ids(), set().ids());
    EXPECT_TRUE(reread.findByName(u"Brick")->isEqual(set().findByName(u"Brick")));
}

TEST_F(SceneMaterialsTest, RefusedStreamsAndBoundedCounts) {
    enter(u"Before");
    EXPECT_FALSE(deserializeFrom(set(), RecordBuilder().u32(0x20001).u32(0)));
    EXPECT_TRUE(set().materials().empty());
    EXPECT_FALSE(deserializeFrom(set(), RecordBuilder().version(2).u32(1).i32(15)));
    EXPECT_TRUE(deserializeFrom(
        set(), RecordBuilder().version(2).u32(0).u32(0xFFFFFFFFu).text("k").text("v")));
    EXPECT_EQ(set().ids().at(u"k"), u"v");
    EXPECT_LE(set().ids().size(), 2u);
    RecordBuilder hugeMaterials;
    layeredMaterial(hugeMaterials.version(1).u32(0xFFFFFFFFu), "Brick", "");
    EXPECT_FALSE(deserializeFrom(set(), hugeMaterials));
    EXPECT_EQ(set().materials().size(), 1u);
}

// A stand-in for the two-child wrappers and references: it walks on into whatever it is given.
class WalkNode : public MaterialSingleBRDF {
public:
    int getType() override { return 5; }
    std::vector<MaterialPtr> walkedMaterials() override { return children; }
    std::vector<MaterialPtr> children;
};

TEST(CollectMaterialsWalk, StopsAtLayeredMaterialsAndCutsCyclesAndSharedBlowUp) {
    auto first = std::make_shared<MaterialLayeredBRDF>();
    EXPECT_EQ(collectMaterials(first, 1), Materials{first});
    EXPECT_TRUE(collectMaterials(first, 3).empty());
    EXPECT_TRUE(collectMaterials(std::make_shared<MaterialSingleBRDF>(), 1).empty());
    EXPECT_TRUE(collectMaterials(nullptr, 1).empty());
    auto second = std::make_shared<MaterialLayeredBRDF>();
    auto pair = std::make_shared<WalkNode>();
    pair->children = {first, nullptr, second, first};
    EXPECT_EQ(collectMaterials(pair, 1), (Materials{first, second, first}));
    // A reference back to itself on both sides ends instead of recursing.
    auto cycle = std::make_shared<WalkNode>();
    cycle->children = {cycle, cycle, first};
    EXPECT_EQ(collectMaterials(cycle, 1), Materials{first});
    cycle->children.clear();  // break the ownership cycle
    // 80 levels of two references to the next level: 2^80 paths, walked within a budget.
    std::vector<std::shared_ptr<WalkNode>> chain(80);
    for (auto& node : chain) node = std::make_shared<WalkNode>();
    for (size_t i = 0; i + 1 < chain.size(); ++i) chain[i]->children = {chain[i + 1], chain[i + 1]};
    chain.back()->children = {first};
    const Materials found = collectMaterials(chain.front(), 1);
    ASSERT_FALSE(found.empty());
    EXPECT_LE(found.size(), size_t(1) << 16);
    EXPECT_EQ(found.front(), first);
}
