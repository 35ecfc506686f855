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

TEST_F(CorMatTest, WriteAndReadRoundTrip) {
    CorMatFile file;
    auto toon = std::make_shared<MaterialToon>();
    toon->name = L"Toon";
    toon->base_mtl = readBrick();
    file.materials = {readBrick(), toon};

    std::ostringstream out;
    ASSERT_TRUE(file.write(out));
    const std::string bytes = out.str();
    EXPECT_EQ(bytes.substr(0, 8), header(0x30000, 2));
    ASSERT_EQ(bytes.size(), 8u + 4 + 4096);
    EXPECT_EQ(bytes.substr(8, 4), std::string("\x01\x00\x00\x00", 4));

    CorMatFile back;
    ASSERT_TRUE(readFile(back, bytes));
    ASSERT_EQ(back.materials.size(), 2u);
    for (size_t i = 0; i < 2; ++i) {
        EXPECT_TRUE(back.materials[i]->isEqual(file.materials[i])) << i;
        EXPECT_EQ(back.materials[i]->name, file.materials[i]->name);
    }
    EXPECT_EQ(back.materials[0]->uuid, L"6f1c2d3e-0000-4000-8000-00000000b41c");
}

TEST_F(CorMatTest, SaveAndLoadByPath) {
    const std::string path = ::testing::TempDir() + "cormat_test.cormat";
    CorMatFile file;
    file.materials = {readBrick()};
    ASSERT_TRUE(file.save(utf8ToWide(path)));
    CorMatFile back;
    ASSERT_TRUE(back.load(utf8ToWide(path)));
    ASSERT_EQ(back.materials.size(), 1u);
    EXPECT_EQ(back.materials[0]->name, L"Brick");
    std::remove(path.c_str());

    EXPECT_FALSE(back.load(L"/nonexistent/dir/file.cormat"));
    EXPECT_FALSE(file.save(L"/nonexistent/dir/file.cormat"));
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

TEST_F(CorMatTest, ReadRefusesBadHeadersAndLeavesTheListAlone) {
    const std::string entry = bytesOf(layeredEntry("One", ""));
    CorMatFile file;
    ASSERT_TRUE(readFile(file, header(0x20000, 1) + entry));
    ASSERT_EQ(file.materials.size(), 1u);
    const MaterialPtr kept = file.materials[0];

    EXPECT_FALSE(readFile(file, header(0x20000, 0) + entry));  // count zero
    EXPECT_FALSE(readFile(file, header(0x20001, 1) + entry));  // minor half
    EXPECT_FALSE(readFile(file, header(0x40000, 1) + entry));  // unknown version
    EXPECT_FALSE(readFile(file, header(0x00000, 1) + entry));
    EXPECT_FALSE(readFile(file, std::string("\0\0\x02", 3)));  // short header
    EXPECT_FALSE(readFile(file, header(0x30000, 1)));          // no blocks

    EXPECT_FALSE(readFile(file, header(0x20000, 1) + bytesOf(RecordBuilder().i32(15).version(1))));
    const RecordBuilder failing = layeredEntry("Two", "").i32(1).version(7);
    EXPECT_FALSE(readFile(file, header(0x20000, 2) + bytesOf(failing)));
    ASSERT_EQ(file.materials.size(), 1u);
    EXPECT_EQ(file.materials[0], kept);
}

TEST_F(CorMatTest, CountsAndBlockCountsAreClaimsNotSizes) {
    CorMatFile file;
    const std::string entry = bytesOf(layeredEntry("One", ""));
    EXPECT_FALSE(readFile(file, header(0x20000, 0xFFFFFFFFu) + entry));
    EXPECT_FALSE(readFile(file, header(0x10000, 0xFFFFFFFFu) + entry));
    // Version 3 with a block count far beyond the data: the blocks end with the data.
    RecordBuilder blocks;
    blocks.u32(0x7FFFFFFFu).append(layeredEntry("One", ""));
    std::string payload = bytesOf(blocks);
    payload.resize(4 + 4096, '\0');
    EXPECT_FALSE(readFile(file, header(0x30000, 0xFFFFFFFFu) + payload));
    ASSERT_TRUE(readFile(file, header(0x30000, 1) + payload));
    EXPECT_EQ(file.materials[0]->name, L"One");
}

TEST_F(CorMatTest, VersionOneCollapsesLineBreakPairsAndVersionTwoKeepsThem) {
    // A version 1 file went through a text stream: every line feed of the archive (here in the
    // name's count, 10, and inside the uuid) was written as "\r\n".
    const std::string archive = bytesOf(layeredEntry("TenLetters", "a\nb"));
    std::string textForm;
    for (char c : archive) textForm += c == '\n' ? std::string("\r\n") : std::string(1, c);
    CorMatFile v1;
    ASSERT_TRUE(readFile(v1, header(0x10000, 1) + textForm));
    EXPECT_EQ(v1.materials[0]->name, L"TenLetters");
    EXPECT_EQ(v1.materials[0]->uuid, L"a\nb");

    // The same bytes, "\r\n" inside a uuid: kept by version 2, collapsed by version 1.
    const std::string kept = bytesOf(layeredEntry("Plain", "a\r\nb"));
    CorMatFile v2;
    ASSERT_TRUE(readFile(v2, header(0x20000, 1) + kept));
    EXPECT_EQ(v2.materials[0]->uuid, L"a\r\nb");
    CorMatFile collapsed;
    ASSERT_TRUE(readFile(collapsed, header(0x10000, 1) + kept));
    EXPECT_EQ(collapsed.materials[0]->uuid, L"a\nb");
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
    EXPECT_EQ(file.materials[0]->name, L"Brick");
    EXPECT_EQ(file.materials[1]->name, L"B1");
    EXPECT_EQ(file.materials[2]->getType(), Material2Sided::kType);
    std::ostringstream out;
    ASSERT_TRUE(file.write(out));
    EXPECT_EQ(out.str(), bytes);  // written back byte for byte
}
