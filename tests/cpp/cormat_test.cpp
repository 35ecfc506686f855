// The .cormat material file: its header and three payload forms, what it refuses, and the
// document that the command-line tool makes of it.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include "convert/conversions.h"
#include "material_bytes.h"
#include "materials/material.h"
#include "materials/material_file.h"
#include "materials/wrappers.h"

using namespace CorvaneCore;
using namespace material_test;

namespace {

class CorMatTest : public MaterialSetTest {};

std::string bytesOf(const RecordBuilder& r) {
    return std::string(r.bytes().begin(), r.bytes().end());
}

// Header of a file: version word and count.
std::string header(uint32_t word, uint32_t count) {
    return bytesOf(RecordBuilder().u32(word).u32(count));
}

// One archive entry: a layered material with one layer, named and with the given uuid.
RecordBuilder layeredEntry(const std::string& name, const std::string& uuid) {
    RecordBuilder r;
    plainLayered(r.i32(1), name, "Layer", uuid);
    return r;
}

bool readFile(CorMatFile& file, const std::string& bytes) {
    std::istringstream in(bytes);
    return file.read(in);
}

MaterialPtr readBrick() {
    auto material = std::make_shared<MaterialLayeredBRDF>();
    EXPECT_TRUE(readAll(*material, brickRecord()));
    return material;
}

}  // namespace

TEST_F(CorMatTest, WritesVersionThreeInOneBlockAndReadsItBack) {
    CorMatFile file;
    auto toon = std::make_shared<MaterialToon>();
    toon->name = u"Toon";
    toon->base_mtl = readBrick();
    file.materials = {readBrick(), toon};
    std::ostringstream out;
    ASSERT_TRUE(file.write(out));
    const std::string bytes = out.str();
    EXPECT_EQ(bytes.substr(0, 12), header(0x30000, 2) + std::string("\x01\x00\x00\x00", 4));
    ASSERT_EQ(bytes.size(), 8u + 4 + 4096);
    CorMatFile back;
    ASSERT_TRUE(readFile(back, bytes));
    ASSERT_EQ(back.materials.size(), 2u);
    for (size_t i = 0; i < 2; ++i) {
        EXPECT_TRUE(back.materials[i]->isEqual(file.materials[i])) << i;
        EXPECT_EQ(back.materials[i]->name, file.materials[i]->name);
    }
}

TEST_F(CorMatTest, SaveAndLoadByPath) {
    const std::string path = ::testing::TempDir() + "cormat_test.cormat";
    CorMatFile file;
    file.materials = {readBrick()};
    ASSERT_TRUE(file.save(utf8ToWide(path)));
    CorMatFile back;
    ASSERT_TRUE(back.load(utf8ToWide(path)));
    EXPECT_EQ(back.materials.at(0)->name, u"Brick");
    std::remove(path.c_str());
    EXPECT_FALSE(back.load(u"/nonexistent/dir/file.cormat"));
    EXPECT_FALSE(file.save(u"/nonexistent/dir/file.cormat"));
    EXPECT_EQ(back.materials.size(), 1u);
}

TEST_F(CorMatTest, WriteRefusesAnEmptyListAndMaterialsThatCannotBeWritten) {
    // No material, a null one, and a bump without the base it needs.
    for (auto list : {std::vector<MaterialPtr>{}, std::vector<MaterialPtr>{readBrick(), nullptr},
                      std::vector<MaterialPtr>{readBrick(), std::make_shared<MaterialBump>()}}) {
        CorMatFile file;
        file.materials = list;
        std::ostringstream out;
        EXPECT_FALSE(file.write(out)) << list.size();
        EXPECT_TRUE(out.str().empty());
    }
    CorMatFile file;
    file.materials = {readBrick(), std::make_shared<MaterialBump>()};
    const std::string path = ::testing::TempDir() + "cormat_refused.cormat";
    std::remove(path.c_str());
    EXPECT_FALSE(file.save(utf8ToWide(path)));
    EXPECT_FALSE(std::ifstream(path).good());  // nothing reached the file
}

TEST_F(CorMatTest, ReadRefusesBadHeadersAndClaimedCountsAndLeavesTheListAlone) {
    const std::string entry = bytesOf(layeredEntry("One", ""));
    CorMatFile file;
    ASSERT_TRUE(readFile(file, header(0x20000, 1) + entry));
    const MaterialPtr kept = file.materials.at(0);
    // Count zero, a minor half, unknown versions, a short header, no blocks.
    for (const std::string& bad :
         {header(0x20000, 0) + entry, header(0x20001, 1) + entry, header(0x40000, 1) + entry,
          header(0, 1) + entry, std::string("\0\0\x02", 3), header(0x30000, 1),
          header(0x20000, 1) + bytesOf(RecordBuilder().i32(15).version(1)),
          header(0x20000, 2) + bytesOf(layeredEntry("Two", "").i32(1).version(7)),
          header(0x20000, 0xFFFFFFFFu) + entry, header(0x10000, 0xFFFFFFFFu) + entry}) {
        EXPECT_FALSE(readFile(file, bad));
    }
    ASSERT_EQ(file.materials.size(), 1u);
    EXPECT_EQ(file.materials[0], kept);
    // Version 3 with a block count far beyond the data: the blocks end with the data.
    std::string payload = bytesOf(RecordBuilder().u32(0x7FFFFFFFu).append(layeredEntry("B", "")));
    payload.resize(4 + 4096, '\0');
    EXPECT_FALSE(readFile(file, header(0x30000, 0xFFFFFFFFu) + payload));
    ASSERT_TRUE(readFile(file, header(0x30000, 1) + payload));
    EXPECT_EQ(file.materials[0]->name, u"B");
}

TEST_F(CorMatTest, VersionOneCollapsesLineBreakPairsAndVersionTwoKeepsThem) {
    // A version 1 file went through a text stream: every line feed of the archive (here in the
    // name's count, 10, and inside the uuid) was written as "\r\n".
    std::string textForm;
    for (char c : bytesOf(layeredEntry("TenLetters", "a\nb"))) {
        textForm += c == '\n' ? std::string("\r\n") : std::string(1, c);
    }
    CorMatFile v1;
    ASSERT_TRUE(readFile(v1, header(0x10000, 1) + textForm));
    EXPECT_EQ(v1.materials[0]->name, u"TenLetters");
    EXPECT_EQ(v1.materials[0]->uuid, u"a\nb");
    // The same bytes, "\r\n" inside a uuid: kept by version 2, collapsed by version 1.
    const std::string kept = bytesOf(layeredEntry("Plain", "a\r\nb"));
    ASSERT_TRUE(readFile(v1, header(0x20000, 1) + kept));
    EXPECT_EQ(v1.materials[0]->uuid, u"a\r\nb");
    ASSERT_TRUE(readFile(v1, header(0x10000, 1) + kept));
    EXPECT_EQ(v1.materials[0]->uuid, u"a\nb");
}

TEST_F(CorMatTest, DocumentHoldsEveryMaterialUnderTheCormatRoot) {
    RecordBuilder two;
    two.append(layeredEntry("First", "")).append(layeredEntry("Second", ""));
    const auto xml = convertCorMat(header(0x20000, 2) + bytesOf(two));
    ASSERT_TRUE(xml);
    const std::string blocks = diffuseBlock("/First/Layer") + foldedHead("/First", {"Layer"}) +
                               kAssetTail + diffuseBlock("/Second/Layer") +
                               foldedHead("/Second", {"Layer"}) + kAssetTail;
    EXPECT_EQ(*xml, "<cormat>\n" + document(blocks) + "</cormat>\n");
    EXPECT_FALSE(convertCorMat(header(0x20000, 0) + bytesOf(two)));
    EXPECT_FALSE(convertCorMat(""));
}

TEST_F(CorMatTest, BundledLibraryHoldsTheThreeSamples) {
    std::ifstream in(QUILLON_SAMPLES_DIR "/library.cormat", std::ios::binary);
    ASSERT_TRUE(in);
    const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    CorMatFile file;
    ASSERT_TRUE(readFile(file, bytes));
    ASSERT_EQ(file.materials.size(), 3u);
    EXPECT_EQ(file.materials[1]->name, u"B1");
    EXPECT_EQ(file.materials[2]->getType(), Material2Sided::kType);
    std::ostringstream out;
    ASSERT_TRUE(file.write(out));
    EXPECT_EQ(out.str(), bytes);  // written back byte for byte
}
