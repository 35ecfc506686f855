// Materials: the base section, single and layered layouts of every version, copies, and the
// folded output of a whole record.
#include "materials/material.h"

#include <gtest/gtest.h>

#include <string>

#include "convert/conversions.h"
#include "material_bytes.h"
#include "materials/brdf.h"
#include "materials/material_file.h"
#include "materials/scene_materials.h"
#include "textures/texture.h"
#include "upgrade/mtl_converter.h"
#include "xml/asset_xml_writer.h"

using namespace CorvaneCore;

using namespace material_test;

namespace {

class MaterialTest : public MaterialSetTest {};

using Ints = std::vector<int32_t>;

// A layered material of version `v` with no layers, up to its section.
RecordBuilder bare(uint32_t v) { return RecordBuilder().version(v).u32(0).i32(0).i32(0); }

}  // namespace

TEST_F(MaterialTest, EmptyNamesBecomeUniqueDefaultNamesWithoutEnteringTheSet) {
    EXPECT_EQ(readAs<MaterialLayeredBRDF>(bare(1).text("")).name, u"DefaultMaterial");
    EXPECT_TRUE(sceneMaterials()->materials().empty());
    auto taken = std::make_shared<MaterialLayeredBRDF>();
    taken->name = u"DefaultMaterial";
    ASSERT_TRUE(sceneMaterials()->addMaterial(taken));
    EXPECT_EQ(readAs<MaterialLayeredBRDF>(bare(2).version(1).text("")).name, u"DefaultMaterial1");
}

TEST_F(MaterialTest, SectionStripsControlCharactersAndRefusesBadWords) {
    const auto material =
        readAs<MaterialLayeredBRDF>(bare(2).version(2).text("Red\tBrick\x7f").text("id-1"));
    EXPECT_EQ(material.name, u"RedBrick");
    EXPECT_EQ(material.uuid, u"id-1");
    for (uint32_t word : {0x30000u, 0x20001u}) {
        MaterialLayeredBRDF refused;
        EXPECT_FALSE(deserializeFrom(refused, bare(2).u32(word).text("Ignored")));
        EXPECT_EQ(refused.name, u"DefaultMaterial");
    }
}

TEST_F(MaterialTest, LayeredReadsEveryVersion) {
    const auto m1 = readAs<MaterialLayeredBRDF>(
        diffuseLayer(RecordBuilder().version(1).u32(1), "Base").i32(0).i32(7).text("Old"));
    EXPECT_EQ(m1.brdfs.at(0)->name, u"Base");
    EXPECT_EQ((Ints{m1.double_sided, m1.layeredOptionA}), (Ints{0, 7}));
    EXPECT_EQ(m1.name, u"Old");
    const auto m2 = readAs<MaterialLayeredBRDF>(
        RecordBuilder().version(2).u32(0).i32(1).i32(0).version(1).text("Two"));
    EXPECT_EQ(m2.layeredOptionB, 1);
    RecordBuilder v3;
    diffuseLayer(diffuseLayer(v3.version(3).u32(2), "A"), "B").i32(1).i32(0).i32(5).i32(6);
    const auto m3 = readAs<MaterialLayeredBRDF>(v3.version(2).text("Three").text("u3"));
    EXPECT_EQ(m3.brdfs.size(), 2u);
    EXPECT_EQ((Ints{m3.layeredOptionC, m3.layeredOptionD}), (Ints{6, 0}));
    RecordBuilder v4;
    v4.version(4).u32(0).i32(1).i32(0).i32(1).i32(1).version(2).text("Four").text("").i32(9);
    EXPECT_EQ(readAs<MaterialLayeredBRDF>(v4).layeredOptionD, 9);
}

TEST_F(MaterialTest, LayeredListFailuresKeepWhatWasRead) {
    MaterialLayeredBRDF m;
    EXPECT_FALSE(
        deserializeFrom(m, diffuseLayer(RecordBuilder().version(4).u32(3), "Kept").i32(3)));
    ASSERT_EQ(m.brdfs.size(), 1u);
    EXPECT_EQ(m.brdfs[0]->name, u"Kept");
    // A declared count far beyond the data ends as soon as the bytes do.
    MaterialLayeredBRDF big;
    EXPECT_FALSE(
        deserializeFrom(big, diffuseLayer(RecordBuilder().version(4).u32(0xFFFFFFFFu), "Only")));
    EXPECT_EQ(big.brdfs.size(), 1u);
}

TEST_F(MaterialTest, SingleReadsBothVersionsAndSharesItsLayer) {
    const auto s1 = readAs<MaterialSingleBRDF>(
        diffuseLayer(RecordBuilder().version(1).i32(3).i32(4).text("Solo"), "Layer"));
    EXPECT_EQ((Ints{s1.singleOptionA, s1.singleOptionB}), (Ints{3, 4}));
    EXPECT_EQ(s1.brdf->name, u"Layer");
    RecordBuilder v2;
    diffuseLayer(v2.version(2).i32(3).i32(4), "Layer").version(2).text("Solo2").text("u");
    MaterialSingleBRDF s2;
    ASSERT_TRUE(readAll(s2, v2));
    expectWritesBack(s2, v2);
    EXPECT_EQ(std::static_pointer_cast<MaterialSingleBRDF>(s2.clone())->brdf, s2.brdf);
    MaterialSingleBRDF refused;
    EXPECT_FALSE(deserializeFrom(refused, RecordBuilder().version(2).i32(0).i32(0).i32(64)));
    EXPECT_FALSE(refused.brdf);
    QuickArchive out(1);
    EXPECT_FALSE(refused.serialize(out));
}

TEST_F(MaterialTest, LayeredCloneCopyAndIsEqual) {
    MaterialLayeredBRDF source;
    source.name = u"Brick";
    source.uuid = u"id";
    source.brdfs.push_back(std::make_shared<Diffuse_BRDF>());
    auto sourcePtr = std::make_shared<MaterialLayeredBRDF>(source);
    sceneMaterials()->addMaterial(sourcePtr);
    auto clone = std::static_pointer_cast<MaterialLayeredBRDF>(source.clone());
    EXPECT_EQ(clone->name, u"Brick1");
    EXPECT_EQ(clone->uuid, u"id");
    EXPECT_NE(clone->brdfs[0], source.brdfs[0]);
    EXPECT_TRUE(clone->isEqual(sourcePtr));
    auto copy = std::static_pointer_cast<MaterialLayeredBRDF>(source.copy());
    EXPECT_EQ(copy->name, u"Brick");
    EXPECT_NE(copy->brdfs[0], source.brdfs[0]);
    copy->layeredOptionD = 2;
    EXPECT_FALSE(copy->isEqual(sourcePtr));
    copy->layeredOptionD = 0;
    copy->brdfs.push_back(std::make_shared<Light_BRDF>());
    EXPECT_FALSE(copy->isEqual(sourcePtr));
    EXPECT_FALSE(copy->isEqual(std::make_shared<MaterialSingleBRDF>()));
}

TEST_F(MaterialTest, LayeredOwnXmlWithAnEmptyListHasAnEmptyBrdfsList) {
    MaterialLayeredBRDF material;
    material.name = u"Bare";
    std::string text;
    AssetXmlWriter writer(text);
    material.writeXML(writer, u"");
    const std::string expected =
        "  <Asset layout=\"defommat\" renderer=\"ombra\" type=\"material\" url=\"/Bare\" >\n"
        "    <plugin>\n"
        "      <ombraplugin name=\"MtlCORVANE\" type=\"material\">\n"
        "        <parameters>\n"
        "          <parameter type=\"integer\" name=\"double_sided\" handler=\"default\" "
        "listType=\"none\" label=\"double_sided\">\n"
        "            <value>1</value>\n"
        "          </parameter>\n"
        "          <parameter type=\"list\" name=\"brdfs\" handler=\"default\" "
        "listType=\"plugin\" label=\"brdfs\">\n"
        "            <value>\n"
        "            <list>\n"
        "            </list>\n"
        "            </value>\n"
        "          </parameter>\n"
        "        </parameters>\n"
        "      </ombraplugin>\n"
        "    </plugin>\n"
        "  </Asset>\n";
    EXPECT_EQ(writer.stream(), expected);
}

TEST_F(MaterialTest, BrickRecordConvertsToTheFoldedDocument) {
    const RecordBuilder brick = brickRecord();
    EXPECT_EQ(sampleBytes("material_type1_brick.json"), brick.bytes());  // the bundled sample
    EXPECT_EQ(convert(brick, MaterialLayeredBRDF::kType), expectedBrickDocument());
    auto material = readAs<MaterialLayeredBRDF>(brick);
    expectWritesBack(material, brick);
}

// U+1F9F1 is a surrogate pair in the model and four bytes in the record and the XML.
TEST_F(MaterialTest, NameOutsideTheBasicPlaneRoundTripsIntoTheXml) {
    const std::string name = "Brick \xF0\x9F\xA7\xB1";
    RecordBuilder r;
    plainLayered(r, name, "BRDFDiffuse");
    auto material = readAs<MaterialLayeredBRDF>(r);
    EXPECT_EQ(material.name, u"Brick \U0001F9F1");
    EXPECT_EQ(material.name.size(), 8u);
    expectWritesBack(material, r);
    const std::string xml = convert(r, MaterialLayeredBRDF::kType);
    EXPECT_EQ(outline(xml).urls, (Names{"/" + name + "/BRDFDiffuse", "/" + name}));
    EXPECT_NE(xml.find(foldedHead("/" + name, {"BRDFDiffuse"})), std::string::npos);
}

TEST_F(MaterialTest, SingleMaterialGivesAnEmptyDocument) {
    RecordBuilder r;
    diffuseLayer(r.version(2).i32(0).i32(0), "Layer").version(2).text("Solo").text("");
    EXPECT_EQ(convert(r, MaterialSingleBRDF::kType), document(""));
    std::string text;
    AssetXmlWriter writer(text);
    EXPECT_EQ(MtlCORVANEConverter(nullptr).writeXML(writer, u"ignored"), 0);
    EXPECT_TRUE(writer.stream().empty());
}
