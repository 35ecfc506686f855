#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>

#include "fake_host.h"
#include "materials/brdf.h"
#include "materials/material.h"
#include "materials/scene_materials.h"
#include "textures/procedural.h"
#include "textures/texture.h"
#include "upgrade/skp_material_editor.h"

using namespace CorvaneCore;
using upgrade_test::FakeEntity;
using upgrade_test::FakeHost;
using upgrade_test::FakeMaterial;
using upgrade_test::fakeValue;
using upgrade_test::hostMaterial;
using upgrade_test::textOf;
using upgrade_test::valueOf;

namespace {

// Stand-ins for the linked, wrapper and reference materials, with just the parts the pass uses.
class TestMaterial : public BaseMaterial {
public:
    TestMaterial(int type, std::wstring materialName) : type_(type) { name = materialName; }
    bool serialize(QuickArchive&) override { return false; }
    bool deserialize(QuickArchive&) override { return false; }
    int getType() override { return type_; }
    void setDefaults() override {}
    MaterialPtr clone() override { return std::make_shared<TestMaterial>(*this); }
    MaterialPtr copy() override { return std::make_shared<TestMaterial>(*this); }
    bool isEqual(const MaterialPtr&) override { return false; }
    std::vector<MaterialPtr> walkedMaterials() override { return children; }
    std::wstring linkedHostName() override { return link; }
    bool setBaseMaterial(const MaterialPtr& base) override {
        children = {base};
        return true;
    }
    std::wstring referenceTarget() override { return target; }

    std::vector<MaterialPtr> children;
    std::wstring link;
    std::wstring target;

private:
    int type_;
};

std::shared_ptr<TestMaterial> wrapper(int type, const std::wstring& name,
                                      std::vector<MaterialPtr> children) {
    auto m = std::make_shared<TestMaterial>(type, name);
    m->children = std::move(children);
    return m;
}

std::shared_ptr<TestMaterial> linked(const std::wstring& name, const std::wstring& hostName,
                                     const MaterialPtr& base) {
    auto m = wrapper(6, name, {base});
    m->link = hostName;
    return m;
}

std::shared_ptr<MaterialLayeredBRDF> layered(const std::wstring& name, const Color& color) {
    auto m = std::make_shared<MaterialLayeredBRDF>();
    m->name = name;
    auto diffuse = std::make_shared<Diffuse_BRDF>();
    diffuse->color = color;
    diffuse->transparency = Color(0, 0, 0);
    m->brdfs.push_back(diffuse);
    return m;
}

Diffuse_BRDF& firstDiffuse(const MaterialPtr& material) {
    auto* m = dynamic_cast<MaterialLayeredBRDF*>(material.get());
    return *dynamic_cast<Diffuse_BRDF*>(m->brdfs.front().get());
}

std::shared_ptr<FakeEntity> entityNamed(const std::wstring& stored) {
    auto e = std::make_shared<FakeEntity>();
    e->hasDictionary = true;
    e->dictionary[MaterialAttribute::Material] = fakeValue(stored);
    return e;
}

class UpgradePassTest : public ::testing::Test {
protected:
    void SetUp() override {
        sceneMaterials()->materials.clear();
        sceneMaterials()->ids.clear();
    }

    void add(const MaterialPtr& m) { ASSERT_TRUE(sceneMaterials()->addMaterial(m)); }
    bool logHas(const std::string& entry) const {
        return std::find(host.log.begin(), host.log.end(), entry) != host.log.end();
    }

    FakeHost host;
    SkpMaterialEditor editor{&host};
};

}  // namespace

TEST_F(UpgradePassTest, PlainMaterialGetsAHostMaterialWithItsRecord) {
    add(layered(L"Brick", Color(0.5f, 0.25f, 1.0f)));
    editor.offerUpgrade();

    const auto brick = host.material(L"Brick");
    ASSERT_TRUE(brick);
    EXPECT_EQ(textOf(brick->dictionary[MaterialAttribute::MaterialName]), L"Brick");
    const int32_t* type = valueOf<int32_t>(brick->dictionary[MaterialAttribute::MaterialType]);
    ASSERT_TRUE(type);
    EXPECT_EQ(*type, 1);
    // The bytes are the material's whole record, in whole blocks, and read back as it.
    const auto* data =
        valueOf<std::vector<uint8_t>>(brick->dictionary[MaterialAttribute::Material]);
    ASSERT_TRUE(data);
    EXPECT_EQ(data->size() % QuickArchive::kBlockSize, 0u);
    QuickArchive archive(data->data(), data->size());
    MaterialLayeredBRDF back;
    ASSERT_TRUE(back.deserialize(archive));
    EXPECT_EQ(back.name, L"Brick");
    // Shown on the host: colour of the diffuse layer, alpha from its transparency.
    ASSERT_TRUE(brick->color);
    EXPECT_EQ(*brick->color, Color(0.5f, 0.25f, 1.0f));
    EXPECT_FLOAT_EQ(*brick->alpha, 1.0f);
    EXPECT_FALSE(brick->texture);
    EXPECT_EQ(host.log, (std::vector<std::string>{"active_model", "start_operation", "add Brick",
                                                  "evaluate Brick", "commit_operation"}));
    EXPECT_EQ(host.prompts.front().rfind("We have made some changes", 0), 0u);
}

TEST_F(UpgradePassTest, HostNameTakenInOtherCaseGivesTheNextFreeName) {
    host.materials.push_back(hostMaterial(L"BRICK"));
    auto brick = layered(L"Brick", Color(1, 0, 0));
    add(brick);
    editor.offerUpgrade();
    EXPECT_TRUE(host.material(L"Brick1"));
    EXPECT_EQ(brick->name, L"Brick1");
    EXPECT_EQ(sceneMaterials()->findByName(L"Brick1"), brick);
    EXPECT_FALSE(sceneMaterials()->findByName(L"Brick"));
}

// A host without a material collection calls no name free; the search still ends.
class HostWithoutMaterials : public FakeHost {
public:
    bool materialLength(long&) override { return false; }
};

TEST_F(UpgradePassTest, TrailingDigitsAreStrippedBeforeCountingAndTheSearchEnds) {
    host.materials.push_back(hostMaterial(L"wood12"));
    add(layered(L"Wood12", Color(1, 0, 0)));
    EXPECT_EQ(editor.makeUniqueName(L"Wood12"), L"Wood1");
    host.materials.push_back(hostMaterial(L"x"));
    host.materials.back()->displayName = L"WOOD1";  // the display name counts too
    EXPECT_EQ(editor.makeUniqueName(L"Wood12"), L"Wood2");

    HostWithoutMaterials blind;
    SkpMaterialEditor searching(&blind);
    EXPECT_FALSE(searching.isHostNameFree(L"Wood"));
    EXPECT_EQ(searching.makeUniqueName(L"Wood"), L"Wood100000");
}

TEST_F(UpgradePassTest, DefaultMaterialInAnyCaseIsSkipped) {
    add(layered(L"default_ombra_MATERIAL", Color(1, 1, 1)));
    editor.offerUpgrade();
    EXPECT_TRUE(host.materials.empty());
    EXPECT_TRUE(logHas("commit_operation"));
}

TEST_F(UpgradePassTest, LinkedMaterialMovesOntoItsHostMaterialAndEntitiesFollow) {
    auto oak = hostMaterial(L"HostOak");
    BasicMaterialRecord record;
    record.color = Color(0.1f, 0.2f, 0.3f);
    oak->basic = record;
    host.materials.push_back(oak);
    add(linked(L"Hall", L"HostOak", layered(L"Inner", Color(0.9f, 0.9f, 0.9f))));
    const auto painted = entityNamed(L"Hall");
    const auto stranger = entityNamed(L"Nowhere");
    auto bare = std::make_shared<FakeEntity>();
    host.entities = {painted, stranger, bare};

    editor.offerUpgrade();

    const MaterialPtr moved = sceneMaterials()->findByName(L"HostOak");
    ASSERT_TRUE(moved);
    EXPECT_EQ(moved->getType(), MaterialLayeredBRDF::kType);
    EXPECT_FALSE(sceneMaterials()->findByName(L"Hall"));
    EXPECT_EQ(textOf(oak->dictionary[MaterialAttribute::MaterialName]), L"HostOak");
    // The host material's own values come back into the diffuse layer.
    EXPECT_EQ(firstDiffuse(moved).color, Color(0.1f, 0.2f, 0.3f));
    // Entities: painted when their name was converted; the key goes in every case.
    EXPECT_EQ(painted->painted, oak);
    EXPECT_FALSE(stranger->painted);
    EXPECT_FALSE(painted->dictionary.count(MaterialAttribute::Material));
    EXPECT_FALSE(stranger->dictionary.count(MaterialAttribute::Material));
    EXPECT_FALSE(bare->hasDictionary);
    EXPECT_TRUE(logHas("commit_operation"));
}

TEST_F(UpgradePassTest, LinkBelowAWrapperIsReplacedByItsBase) {
    auto inner = layered(L"Inner", Color(1, 0, 0));
    firstDiffuse(inner).layerFlagB = true;
    auto bump = wrapper(3, L"Bumpy", {linked(L"Link", L"Host", inner)});
    EXPECT_EQ(editor.resolveLinked(bump), bump);
    ASSERT_EQ(bump->children.size(), 1u);
    EXPECT_EQ(bump->children.front(), inner);
    EXPECT_FALSE(firstDiffuse(inner).layerFlagB);

    // Only wrappers with a base material slot can take the base.
    auto multi = wrapper(5, L"TwoSided", {linked(L"Link", L"Host", inner), layered(L"B", {})});
    EXPECT_EQ(editor.resolveLinked(multi), nullptr);
    auto link = linked(L"Own", L"Host", inner);
    EXPECT_EQ(editor.resolveLinked(link), inner);
    EXPECT_EQ(inner->name, L"Own");
}

TEST_F(UpgradePassTest, MaterialWithTwoLinksIsLost) {
    host.materials.push_back(hostMaterial(L"A"));
    auto twoSided =
        wrapper(5, L"Twice",
                {linked(L"L1", L"A", layered(L"I1", {})), linked(L"L2", L"A", layered(L"I2", {}))});
    add(twoSided);
    EXPECT_EQ(editor.resolveLinked(twoSided), nullptr);
    editor.offerUpgrade();
    EXPECT_FALSE(sceneMaterials()->findByName(L"Twice"));
    EXPECT_FALSE(host.materials.front()->hasDictionary);
}

TEST_F(UpgradePassTest, ClosedGatesAndFailedOperationsStopWhereTheyMust) {
    add(layered(L"Brick", Color(1, 0, 0)));
    const struct {
        bool answerYes, startSucceeds, commitSucceeds;
        std::vector<std::string> log, warnings;
    } cases[] = {
        {false, true, true, {"active_model"}, {}},
        {true,
         false,
         true,
         {"active_model", "start_operation"},
         {"Failed to start operation for Quillon Scene Upgrade"}},
        {true,
         true,
         false,
         {"active_model", "start_operation", "add Brick", "evaluate Brick", "commit_operation",
          "abort_operation"},
         {}},
    };
    for (const auto& c : cases) {
        FakeHost gated;
        gated.answerYes = c.answerYes;
        gated.startSucceeds = c.startSucceeds;
        gated.commitSucceeds = c.commitSucceeds;
        SkpMaterialEditor(&gated).offerUpgrade();
        EXPECT_EQ(gated.log, c.log);
        EXPECT_EQ(gated.warnings, c.warnings);
        EXPECT_EQ(gated.prompts.size(), c.answerYes ? 2u : 1u);  // the backup prompt follows
    }

    FakeHost noModel;
    noModel.model = nullptr;
    SkpMaterialEditor(&noModel).offerUpgrade();
    EXPECT_TRUE(noModel.prompts.empty());

    // Without a host the entry makes no call at all.
    SkpMaterialEditor hostless;
    hostless.offerUpgrade();
}

TEST_F(UpgradePassTest, UnsavedModelAsksWhetherToGoOnWithoutABackup) {
    host.answerYes = false;
    EXPECT_FALSE(editor.backupModel(host.model));
    ASSERT_EQ(host.prompts.size(), 1u);
    EXPECT_EQ(host.prompts[0],
              "We were unable to back up this file automatically - you should do so before "
              "continuing. Would you like to proceed with the upgrade anyway?");
    host.answerYes = true;
    EXPECT_TRUE(editor.backupModel(host.model));
    EXPECT_TRUE(host.messages.empty());
}

TEST_F(UpgradePassTest, SavedModelIsCopiedToTheFixedBackupName) {
    const std::string source = "upgrade_pass_test_model.skp";
    std::string content(10000, 'q');
    content[5000] = '\0';
    std::ofstream(source, std::ios::binary) << content;
    host.path = L"upgrade_pass_test_model.skp";
    EXPECT_TRUE(editor.backupModel(host.model));
    std::ifstream copy(SkpMaterialEditor::kBackupFileName, std::ios::binary);
    const std::string copied((std::istreambuf_iterator<char>(copy)), {});
    EXPECT_EQ(copied, content);
    EXPECT_EQ(host.messages,
              (std::vector<std::string>{"We have backed up this file to "
                                        "'Unnamed_QuillonSR1_Upgrade_Backup.skp' in case you are "
                                        "unhappy with the file upgrade changes"}));
    std::remove(source.c_str());
    std::remove(SkpMaterialEditor::kBackupFileName);
}

TEST_F(UpgradePassTest, TexturesReachTheHostMaterial) {
    auto brick = layered(L"Brick", Color(1, 0, 0));
    Diffuse_BRDF& layer = firstDiffuse(brick);
    layer.transparency = Color(0.5f, 0.5f, 0.5f);
    auto blend = std::make_shared<BlendTexture>();
    blend->color_a = std::make_shared<AColorTexture>(AColor(0.2f, 0.4f, 0.6f, 1.0f));
    blend->color_b = makeBitmapTexture(L"C:\\maps\\Brick.PNG");
    layer.color_tex = blend;
    add(brick);
    auto host1 = hostMaterial(L"Brick");
    host1->texture = L"/other/place/brick.png";  // the same file name: not loaded again
    host.materials.push_back(host1);
    editor.applyMaterial(brick, host1);
    EXPECT_EQ(host1->textureAssignments, 0);
    EXPECT_EQ(*host1->color, Color(0.2f, 0.4f, 0.6f));
    EXPECT_FLOAT_EQ(*host1->alpha, 1.5f * 0.33333334f);

    layer.color_tex = std::make_shared<AColorTexture>(AColor(0.3f, 0.3f, 0.3f, 1.0f));
    editor.applyMaterial(brick, host1);
    EXPECT_EQ(host1->textureAssignments, 1);
    EXPECT_FALSE(host1->texture);
    EXPECT_EQ(*host1->color, Color(0.3f, 0.3f, 0.3f));
}

TEST_F(UpgradePassTest, ReferencesShowWhatTheyPointTo) {
    auto brick = layered(L"Brick", Color(0.7f, 0.1f, 0.1f));
    brick->uuid = L"uuid-brick";
    add(brick);
    auto ref = std::make_shared<TestMaterial>(13, L"BrickRef");
    ref->target = L"UUID-BRICK";
    add(ref);
    auto refHost = hostMaterial(L"RefHost");
    refHost->dictionary[MaterialAttribute::MaterialName] = fakeValue(std::wstring(L"brickref"));
    host.materials.push_back(refHost);
    auto brickHost = hostMaterial(L"Brick");
    host.materials.push_back(brickHost);

    editor.applyMaterial(brick, brickHost);
    ASSERT_TRUE(refHost->color);
    EXPECT_EQ(*refHost->color, Color(0.7f, 0.1f, 0.1f));
    EXPECT_EQ(host.log,
              (std::vector<std::string>{"evaluate Brick", "evaluate RefHost", "evaluate RefHost"}));
}

TEST_F(UpgradePassTest, BasicMaterialWithoutBitmapDropsTheLayersBitmap) {
    auto layer = std::make_shared<Diffuse_BRDF>();
    layer->color_tex = makeBitmapTexture(L"old.png");
    auto m = hostMaterial(L"Plain");
    BasicMaterialRecord record;
    record.color = Color(0.25f, 0.5f, 0.75f);
    record.use_alpha = true;
    record.alpha = 0.25f;
    m->basic = record;
    editor.SetBasicOmbraMaterial(layer, m);
    EXPECT_FALSE(layer->color_tex);
    EXPECT_EQ(layer->color, Color(0.25f, 0.5f, 0.75f));
    EXPECT_EQ(layer->transparency, Color(0.75f, 0.75f, 0.75f));

    m->basic->type = BasicMaterialRecord::kBitmapOnly;
    m->basic->texture = L"new.png";
    editor.SetBasicOmbraMaterial(layer, m);
    ASSERT_TRUE(layer->color_tex);
    EXPECT_EQ(layer->color_tex->getType(), 0);

    m->basic.reset();  // the helper gives nothing
    editor.SetBasicOmbraMaterial(layer, m);
    ASSERT_EQ(host.warnings.size(), 1u);
    EXPECT_EQ(host.warnings[0],
              "[SkpMaterialEditor::SetBasicOmbraMaterial] - failed to convert sketchup material "
              "to our representation\n");
}
