// Batch names, byte findings and the XML check.
#include <gtest/gtest.h>

#include "batch_plan.h"
#include "findings.h"

namespace quillon_cli {
namespace {

TEST(BatchNames, KindTypeAndOutputNameComeFromTheFileName) {
    struct Case {
        const char* file;
        RecordKind kind;
        int32_t type;
        bool hasType;
        const char* name;
    } cases[] = {
        {"dir/light_type2_omni.json", RecordKind::Light, 2, true, "light_type2_omni"},
        {"material_type14.bin", RecordKind::Material, 14, true, "material_type14"},
        {"old/scene_type0_major6.json", RecordKind::Scene, 0, false, "scene_type0_major6"},
        {"lib.cormat", RecordKind::Cormat, 0, false, "lib"},
        {"night.coropt", RecordKind::Coropt, 0, false, "night"},
    };
    for (const Case& c : cases) {
        const BatchRecord r = recordFromName(c.file);
        EXPECT_EQ(r.problem, "") << c.file;
        EXPECT_EQ(r.kind, c.kind) << c.file;
        EXPECT_EQ(r.type, c.type) << c.file;
        EXPECT_EQ(r.hasType, c.hasType) << c.file;
        EXPECT_EQ(r.name, c.name) << c.file;
    }
}

TEST(BatchNames, NamesThatTellNothingAreProblems) {
    for (const char* file :
         {"lamp.json", "light_omni.json", "light_type.json", "material_typeX_a.json",
          "light_type99999999999.json", "cormat_type1.json", "light_type2.xml"}) {
        EXPECT_NE(recordFromName(file).problem, "") << file;
    }
}

Conversion measured(uint64_t size, uint64_t readEnd, uint64_t padding = 0) {
    Conversion c;
    c.measured = true;
    c.recordSize = size;
    c.readEnd = readEnd;
    c.padding = padding;
    return c;
}

TEST(ByteFindings, PastTheEndAndLeftOverButNotPadding) {
    EXPECT_EQ(byteFindings(measured(116, 124)),
              std::vector<std::string>{
                  "read 8 bytes past the end of the record (116 bytes); they were taken as zeros"});
    EXPECT_EQ(
        byteFindings(measured(127, 124)),
        std::vector<std::string>{"3 bytes after the last byte read (at byte 124) were not used"});
    EXPECT_TRUE(byteFindings(measured(124, 124)).empty());
    EXPECT_TRUE(byteFindings(measured(4096, 1611, 4096 - 1611)).empty());
    EXPECT_EQ(byteFindings(measured(8192, 1611, 4096 - 1611)).size(), 1u);
    EXPECT_TRUE(byteFindings(Conversion()).empty());
}

TEST(XmlFindings, NamesTheLineAndTextWhereTheDocumentBreaks) {
    if (!xmlCheckBuiltIn()) GTEST_SKIP() << "built without the XML parser";
    // Several top-level elements, as a light's document has, are well-formed here.
    EXPECT_TRUE(xmlFindings("  <Asset a=\"1\" >\n  </Asset>\n  <Asset/>\n").empty());
    const std::pair<std::string, std::string> cases[] = {
        {"<a>\n  <b url=\"/x\"y\" />\n</a>\n", "line 2: "},
        {"<a>\n<v>1 < 2</v>\n</a>\n", "line 2: "},
        {"<a>\n\n<v>R&D</v>\n</a>\n", "line 3: "},
        {"<a>\n<v>bell\x07</v>\n</a>\n", "line 2: "},
    };
    for (const auto& [doc, line] : cases) {
        const std::vector<std::string> found = xmlFindings(doc);
        ASSERT_EQ(found.size(), 1u) << doc;
        EXPECT_EQ(found[0].compare(0, line.size(), line), 0) << found[0];
    }
    EXPECT_NE(xmlFindings("<a>\n  <b url=\"/x\"y\" />\n</a>\n")[0].find("<b url=\"/x\"y\" />"),
              std::string::npos);
}

}  // namespace
}  // namespace quillon_cli
