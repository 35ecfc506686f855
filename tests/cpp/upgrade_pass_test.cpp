#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>

#include "fake_host.h"
#include "materials/brdf.h"
#include "materials/material.h"
#include "materials/material_linked.h"
#include "materials/scene_materials.h"
#include "materials/wrappers.h"
#include "textures/procedural.h"
#include "textures/texture.h"
#include "textures/uvw.h"
#include "upgrade/basic_material.h"
#include "upgrade/skp_material_editor.h"

using namespace CorvaneCore;
using namespace upgrade_test;

namespace {

std::shared_ptr<MaterialLinked> linked(const std::u16string& name, const std::u16string& hostName,
                                       const MaterialPtr& base) {
    auto m = std::make_shared<MaterialLinked>();
    m->name = name;
    m->linkId.kind = 0;  // text: the host material's name
    m->linkId.text = hostName;
    m->base_mtl = base;
    return m;
}

std::shared_ptr<MaterialLayeredBRDF> layered(const std::u16string& name, const Color& color) {
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

std::shared_ptr<FakeEntity> entityNamed(const std::u16string& stored) {
    auto e = std::make_shared<FakeEntity>();
    e->hasDictionary = true;
    e->dictionary[MaterialAttribute::Material] = fakeValue(stored);
    return e;
}

class UpgradePassTest : public ::testing::Test {
protected:
    void SetUp() override { sceneMaterials()->clear(); }

    void add(const MaterialPtr& m) { ASSERT_TRUE(sceneMaterials()->addMaterial(m)); }

    FakeHost host;
    SkpMaterialEditor editor{&host};
};

}  // namespace

// The plain path; the name is taken on the host in another case, so the next free one is used.
TEST_F(UpgradePassTest, PlainMaterialGetsAHostMaterialWithItsRecordUnderAFreeName) {
    host.materials.push_back(hostMaterial(u"BRICK"));
    auto brick = layered(u"Brick", Color(0.5f, 0.25f, 1.0f));
    add(brick);
    editor.offerUpgrade();

    const auto made = host.material(u"Brick1");
    ASSERT_TRUE(made);
    EXPECT_EQ(sceneMaterials()->findByName(u"Brick1"), brick);
    EXPECT_FALSE(sceneMaterials()->findByName(u"Brick"));
    EXPECT_EQ(textOf(made->dictionary[MaterialAttribute::MaterialName]), u"Brick1");
    const int32_t* type = valueOf<int32_t>(made->dictionary[MaterialAttribute::MaterialType]);
    ASSERT_TRUE(type);
    EXPECT_EQ(*type, 1);
    // The bytes are the material's whole record, in whole blocks, and read back as it.
    const auto* data = valueOf<std::vector<uint8_t>>(made->dictionary[MaterialAttribute::Material]);
    ASSERT_TRUE(data);
    EXPECT_EQ(data->size() % QuickArchive::kBlockSize, 0u);
    QuickArchive archive(data->data(), data->size());
    MaterialLayeredBRDF back;
    ASSERT_TRUE(back.deserialize(archive));
    EXPECT_EQ(back.name, u"Brick1");
    EXPECT_EQ(*made->color, Color(0.5f, 0.25f, 1.0f));  // shown on the host
}

// A host without a material collection calls no name free; the search still ends.
class HostWithoutMaterials : public FakeHost {
public:
    bool materialLength(long&) override { return false; }
};

TEST_F(UpgradePassTest, TrailingDigitsAreStrippedBeforeCountingAndTheSearchEnds) {
    host.materials.push_back(hostMaterial(u"wood12"));
    add(layered(u"Wood12", Color(1, 0, 0)));
    EXPECT_EQ(editor.makeUniqueName(u"Wood12"), u"Wood1");
    host.materials.push_back(hostMaterial(u"x"));
    host.materials.back()->displayName = u"WOOD1";  // the display name counts too
    EXPECT_EQ(editor.makeUniqueName(u"Wood12"), u"Wood2");

    HostWithoutMaterials blind;
    SkpMaterialEditor searching(&blind);
    EXPECT_FALSE(searching.isHostNameFree(u"Wood"));
    EXPECT_EQ(searching.makeUniqueName(u"Wood"), u"Wood100000");
}

TEST_F(UpgradePassTest, DefaultMaterialInAnyCaseIsSkipped) {
    add(layered(u"default_ombra_MATERIAL", Color(1, 1, 1)));
    editor.offerUpgrade();
    EXPECT_TRUE(host.materials.empty());
}

TEST_F(UpgradePassTest, LinkedMaterialMovesOntoItsHostMaterialAndEntitiesFollow) {
    auto oak = hostMaterial(u"HostOak");
    BasicMaterialRecord record;
    record.color = Color(0.1f, 0.2f, 0.3f);
    oak->basic = record;
    host.materials.push_back(oak);
    add(linked(u"Hall", u"HostOak", layered(u"Inner", Color(0.9f, 0.9f, 0.9f))));
    const auto painted = entityNamed(u"Hall");
    const auto stranger = entityNamed(u"Nowhere");
    auto bare = std::make_shared<FakeEntity>();
    host.entities = {painted, stranger, bare};

    editor.offerUpgrade();

    const MaterialPtr moved = sceneMaterials()->findByName(u"HostOak");
    ASSERT_TRUE(moved);
    EXPECT_FALSE(sceneMaterials()->findByName(u"Hall"));
    EXPECT_EQ(textOf(oak->dictionary[MaterialAttribute::MaterialName]), u"HostOak");
    // The host material's own values come back into the diffuse layer.
    EXPECT_EQ(firstDiffuse(moved).color, Color(0.1f, 0.2f, 0.3f));
    // Entities: painted when their name was converted; the key goes in every case.
    EXPECT_EQ(painted->painted, oak);
    EXPECT_FALSE(stranger->painted);
    EXPECT_FALSE(painted->dictionary.count(MaterialAttribute::Material));
    EXPECT_FALSE(stranger->dictionary.count(MaterialAttribute::Material));
    EXPECT_FALSE(bare->hasDictionary);
}

TEST_F(UpgradePassTest, LinkBelowAWrapperIsReplacedByItsBaseOrTheWrapperIsLost) {
    auto inner = layered(u"Inner", Color(1, 0, 0));
    firstDiffuse(inner).layerFlagB = true;
    auto bump = std::make_shared<MaterialBump>();
    bump->base_mtl = linked(u"Link", u"Host", inner);
    EXPECT_EQ(editor.resolveLinked(bump), bump);
    EXPECT_EQ(bump->base_mtl, inner);
    EXPECT_FALSE(firstDiffuse(inner).layerFlagB);

    auto link = linked(u"Own", u"Host", inner);
    EXPECT_EQ(editor.resolveLinked(link), inner);
    EXPECT_EQ(inner->name, u"Own");

    // Only wrappers with a base material slot can take the base; the others are lost.
    host.materials.push_back(hostMaterial(u"Host"));
    auto twoSided = std::make_shared<Material2Sided>();
    twoSided->name = u"TwoSided";
    twoSided->front = linked(u"Link", u"Host", inner);
    twoSided->back = layered(u"B", {});
    add(twoSided);
    editor.offerUpgrade();
    EXPECT_FALSE(sceneMaterials()->findByName(u"TwoSided"));
    EXPECT_FALSE(host.materials.front()->hasDictionary);
}

// The parent search goes one level below the deepest link the walk counts: a wrapper 256 levels
// down still takes the base, ahead of a shallower wrapper of the same link.
TEST_F(UpgradePassTest, ParentSearchReachesAWrapperAtItsDepthLimit) {
    auto inner = layered(u"Inner", Color(1, 0, 0));
    const MaterialPtr link = linked(u"Link", u"Host", inner);
    auto chainTop = std::make_shared<MaterialBump>();
    auto deepest = chainTop;
    for (int depth = 2; depth <= 256; ++depth) {
        auto next = std::make_shared<MaterialBump>();
        deepest->base_mtl = next;
        deepest = next;
    }
    deepest->base_mtl = link;  // depth 257: past the walk, inside the parent search
    auto shallow = std::make_shared<MaterialBump>();
    shallow->base_mtl = link;
    auto root = std::make_shared<Material2Sided>();
    root->front = chainTop;
    root->back = shallow;

    EXPECT_EQ(editor.resolveLinked(root), root);
    EXPECT_EQ(deepest->base_mtl, inner);
    EXPECT_EQ(shallow->base_mtl, link);
}

TEST_F(UpgradePassTest, ClosedGatesAndFailedOperationsStopWhereTheyMust) {
    add(layered(u"Brick", Color(1, 0, 0)));
    const struct {
        bool hasModel, answerYes, startSucceeds, commitSucceeds;
        const char* log;
        size_t prompts, warnings;  // the backup prompt follows the first
    } cases[] = {
        {false, true, true, true, "active_model", 0, 0},
        {true, false, true, true, "active_model", 1, 0},
        {true, true, false, true, "active_model,start_operation", 2, 1},
        {true, true, true, false,
         "active_model,start_operation,add Brick,evaluate Brick,commit_operation,abort_operation",
         2, 0},
    };
    for (const auto& c : cases) {
        FakeHost gated;
        if (!c.hasModel) gated.model = nullptr;
        gated.answerYes = c.answerYes;
        gated.startSucceeds = c.startSucceeds;
        gated.commitSucceeds = c.commitSucceeds;
        SkpMaterialEditor(&gated).offerUpgrade();
        std::string log;
        for (const auto& entry : gated.log) log += (log.empty() ? "" : ",") + entry;
        EXPECT_EQ(log, c.log);
        EXPECT_EQ(gated.prompts.size(), c.prompts);
        EXPECT_EQ(gated.warnings.size(), c.warnings);
    }
    SkpMaterialEditor().offerUpgrade();  // without a host the entry makes no call at all
}

// Unsaved: the user decides whether to go on, and the target is opened all the same, which
// empties an old backup. Saved: copied byte for byte, and said so.
TEST_F(UpgradePassTest, BackupAsksForAnUnsavedModelAndCopiesASavedOne) {
    std::ofstream(SkpMaterialEditor::kBackupFileName, std::ios::binary) << "an older backup";
    host.answerYes = false;
    EXPECT_FALSE(editor.backupModel(host.model));
    std::ifstream emptied(SkpMaterialEditor::kBackupFileName, std::ios::binary | std::ios::ate);
    ASSERT_TRUE(emptied.is_open());
    EXPECT_EQ(emptied.tellg(), 0);
    emptied.close();
    host.answerYes = true;
    EXPECT_TRUE(editor.backupModel(host.model));
    EXPECT_EQ(host.prompts.size(), 2u);
    EXPECT_TRUE(host.messages.empty());

    const std::string source = "upgrade_pass_test_model.skp";
    std::string content(10000, 'q');
    content[5000] = '\0';
    std::ofstream(source, std::ios::binary) << content;
    host.path = u"upgrade_pass_test_model.skp";
    host.answerYes = false;  // no question for a saved model
    EXPECT_TRUE(editor.backupModel(host.model));
    std::ifstream copy(SkpMaterialEditor::kBackupFileName, std::ios::binary);
    const std::string copied((std::istreambuf_iterator<char>(copy)), {});
    EXPECT_EQ(copied, content);
    EXPECT_EQ(host.messages.size(), 1u);
    std::remove(source.c_str());
    std::remove(SkpMaterialEditor::kBackupFileName);
}

TEST_F(UpgradePassTest, TexturesReachTheHostMaterial) {
    auto brick = layered(u"Brick", Color(1, 0, 0));
    Diffuse_BRDF& layer = firstDiffuse(brick);
    layer.transparency = Color(0.5f, 0.5f, 0.5f);
    auto blend = std::make_shared<BlendTexture>();
    blend->color_a = std::make_shared<AColorTexture>(AColor(0.2f, 0.4f, 0.6f, 1.0f));
    blend->color_b = makeBitmapTexture(u"C:\\maps\\Brick.PNG");
    layer.color_tex = blend;
    add(brick);
    auto host1 = hostMaterial(u"Brick");
    host1->texture = u"/other/place/brick.png";  // the same file name: not loaded again
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

// A blend gives its bitmap and colour whichever of its two slots holds the bitmap.
TEST_F(UpgradePassTest, ABlendInEitherOrderGivesItsBitmapAndColour) {
    for (const bool bitmapFirst : {true, false}) {
        SCOPED_TRACE(bitmapFirst);
        auto stone = layered(u"Stone", Color(1, 0, 0));
        auto blend = std::make_shared<BlendTexture>();
        auto bitmap = makeBitmapTexture(u"C:\\maps\\Stone.png");
        auto color = std::make_shared<AColorTexture>(AColor(0.1f, 0.2f, 0.3f, 1.0f));
        blend->color_a = bitmapFirst ? bitmap : color;
        blend->color_b = bitmapFirst ? std::shared_ptr<BaseTexture>(color) : bitmap;
        firstDiffuse(stone).color_tex = blend;
        auto target = hostMaterial(u"Stone");
        target->texture = u"/maps/old.png";
        editor.applyMaterial(stone, target);
        EXPECT_EQ(target->textureAssignments, 1);
        EXPECT_EQ(target->texture, std::optional<std::u16string>(u"C:\\maps\\Stone.png"));
        EXPECT_EQ(target->color, std::optional<Color>(Color(0.1f, 0.2f, 0.3f)));
    }
}

TEST_F(UpgradePassTest, ReferencesShowWhatTheyPointTo) {
    auto brick = layered(u"Brick", Color(0.7f, 0.1f, 0.1f));
    brick->uuid = u"uuid-brick";
    add(brick);
    auto ref = std::make_shared<MaterialReference>();
    ref->name = u"BrickRef";
    ref->target = u"UUID-BRICK";
    add(ref);
    auto refHost = hostMaterial(u"RefHost");
    refHost->dictionary[MaterialAttribute::MaterialName] = fakeValue(std::u16string(u"brickref"));
    host.materials.push_back(refHost);
    auto brickHost = hostMaterial(u"Brick");
    host.materials.push_back(brickHost);

    editor.applyMaterial(brick, brickHost);
    ASSERT_TRUE(refHost->color);
    EXPECT_EQ(*refHost->color, Color(0.7f, 0.1f, 0.1f));
    EXPECT_EQ(host.log,
              (std::vector<std::string>{"evaluate Brick", "evaluate RefHost", "evaluate RefHost"}));
}

TEST(MaterialToLayered, ABitmapTypeGetsABitmapEvenForAnEmptyFile) {
    BasicMaterialRecord record;
    record.color = Color(0.5f, 0.25f, 1.0f);
    record.type = BasicMaterialRecord::kBitmapOnly;
    const LayeredPair pair = materialToLayered(record);
    for (const auto& material : {pair.front, pair.back}) {
        ASSERT_EQ(material->brdfs.size(), 1u);
        auto* layer = dynamic_cast<Diffuse_BRDF*>(material->brdfs[0].get());
        ASSERT_TRUE(layer);
        auto* bitmap = dynamic_cast<BitmapTexture*>(layer->color_tex.get());
        ASSERT_TRUE(bitmap);
        EXPECT_TRUE(dynamic_cast<GenChannelUVW*>(bitmap->uvwgen.get()));
        auto* buffer = dynamic_cast<BitmapBuffer*>(bitmap->bitmap.get());
        ASSERT_TRUE(buffer);
        EXPECT_EQ(buffer->file, u"");
    }

    record.type = BasicMaterialRecord::kBitmapBlendedWithColor;
    const LayeredPair blended = materialToLayered(record);  // owns what the pointers below see
    auto* blend = dynamic_cast<BlendTexture*>(
        dynamic_cast<Diffuse_BRDF&>(*blended.front->brdfs[0]).color_tex.get());
    ASSERT_TRUE(blend);
    EXPECT_TRUE(dynamic_cast<BitmapTexture*>(blend->color_a.get()));
    auto* color = dynamic_cast<AColorTexture*>(blend->color_b.get());
    ASSERT_TRUE(color);
    EXPECT_EQ(color->texture, AColor(0.5f, 0.25f, 1.0f, 1.0f));
}

TEST_F(UpgradePassTest, BasicMaterialWithoutBitmapDropsTheLayersBitmap) {
    auto layer = std::make_shared<Diffuse_BRDF>();
    layer->color_tex = makeBitmapTexture(u"old.png");
    auto m = hostMaterial(u"Plain");
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
    m->basic->texture = u"new.png";
    editor.SetBasicOmbraMaterial(layer, m);
    ASSERT_TRUE(layer->color_tex);
    EXPECT_EQ(layer->color_tex->getType(), 0);

    m->basic.reset();  // the helper gives nothing
    editor.SetBasicOmbraMaterial(layer, m);
    EXPECT_EQ(host.warnings.size(), 1u);
}
