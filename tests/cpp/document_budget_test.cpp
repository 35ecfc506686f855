// The document budget: a conversion whose XML would pass kMaxDocumentBytes gives nothing, and
// the writer stops as soon as its text passes the budget it was given.
#include <gtest/gtest.h>

#include <string>

#include "archive/limits.h"
#include "convert/conversions.h"
#include "material_bytes.h"
#include "materials/material.h"
#include "xml/asset_xml_writer.h"

using namespace CorvaneCore;
using namespace material_test;

namespace {

class DocumentBudgetTest : public MaterialSetTest {};

// A version 4 layered material of `layers` default diffuse layers under `name`.
RecordBuilder layeredRecord(int layers, const std::string& name) {
    RecordBuilder r;
    r.version(4).u32(static_cast<uint32_t>(layers));
    for (int i = 0; i < layers; ++i) diffuseLayer(r, "L");
    r.i32(1).i32(0).i32(1).i32(1);
    r.version(2).text(name).text("").i32(0);
    return r;
}

}  // namespace

TEST_F(DocumentBudgetTest, WriterStopsAtTheFirstLineAfterItsTextPassesTheBudget) {
    std::string roomy;
    AssetXmlWriter fits(roomy, 4096);
    fits.openAssets();
    EXPECT_NO_THROW(fits.writeString("s", std::string(200, 'v')));
    EXPECT_EQ(fits.stream().substr(fits.stream().size() - 15), "  </parameter>\n");

    std::string text;
    AssetXmlWriter writer(text, 200);
    writer.openAssets();
    EXPECT_THROW(writer.writeString("s", std::string(200, 'v')), DocumentTooLarge);
    EXPECT_EQ(writer.stream().substr(writer.stream().size() - 14),
              "vvvvv</value>\n");  // no "</parameter>"
}

// 1024 layers whose URLs all hold a 128 KiB name would make about 270 MB of XML.
TEST_F(DocumentBudgetTest, AmplifyingRecordIsRefusedAndNamesTheLimit) {
    const RecordBuilder record = layeredRecord(1024, std::string(128 * 1024, 'n'));
    EXPECT_LT(record.size(), 200u * 1024);
    QuickArchive archive = record.archive();
    ReadTrace trace;
    EXPECT_FALSE(convertMaterial(archive, MaterialLayeredBRDF::kType, &trace));
    EXPECT_EQ(trace.failureText(), "the XML document would pass the limit of 64 MiB");
    EXPECT_EQ(kMaxDocumentBytes, size_t(64) << 20);

    // The same layers under a short name stay far inside the budget.
    const std::string small = convert(layeredRecord(1024, "n"), MaterialLayeredBRDF::kType);
    EXPECT_EQ(outline(small).urls.size(), 1025u);
}

// Conversions write into one buffer kept between calls: a short document after a long one, and
// a document after a refused one, hold only their own text.
TEST_F(DocumentBudgetTest, ReusedBufferHoldsOnlyTheCurrentDocument) {
    const std::string brick = convert(brickRecord(), MaterialLayeredBRDF::kType);
    EXPECT_EQ(brick, expectedBrickDocument());
    convert(layeredRecord(200, "Long"), MaterialLayeredBRDF::kType);
    EXPECT_EQ(convert(brickRecord(), MaterialLayeredBRDF::kType), brick);
    QuickArchive archive = layeredRecord(1024, std::string(128 * 1024, 'n')).archive();
    EXPECT_FALSE(convertMaterial(archive, MaterialLayeredBRDF::kType));
    EXPECT_EQ(convert(brickRecord(), MaterialLayeredBRDF::kType), brick);
}
