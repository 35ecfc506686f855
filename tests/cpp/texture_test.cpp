#include "textures/texture.h"

#include <gtest/gtest.h>

#include "material_bytes.h"
#include "texture_bytes.h"
#include "textures/procedural.h"
#include "textures/uvw.h"
#include "xml/asset_xml_writer.h"

using namespace CorvaneCore;
using texture_test::Bytes;
using texture_test::expectRefusesWords;
using texture_test::Xml;

namespace {

// BitmapBuffer version 1: filter_type, filter_blur, gamma, file.
Bytes bufferRecord(int32_t filter, float blur, float gamma, const std::string& file) {
    Bytes b;
    b.version(1).i32(filter).f32(blur).f32(gamma).text(file);
    return b;
}

// GenChannelUVW version 2 at its defaults.
Bytes defaultChannelRecord() {
    Bytes b;
    b.version(2).identityTransform().identityTransform().ints({0, 0, 1});
    b.defaultComponents().defaultComponents();
    return b;
}

}  // namespace

TEST(BitmapBuffer, ReadsVersionOneAndRefusesOthers) {
    const Bytes record = bufferRecord(2, 0.25f, 2.2f, "C:\\maps\\wood&grain \xC3\xA9.png");
    BitmapBuffer buffer;
    ASSERT_TRUE(readAll(buffer, record));
    EXPECT_EQ(buffer.gamma, 2.2f);
    EXPECT_EQ(buffer.file, u"C:\\maps\\wood&grain \u00e9.png");

    expectWritesBack(buffer, record);
    expectRefusesWords<BitmapBuffer>({0x20000, 0x10001});
}

// Both child ids stand ahead of both children; other ids are refused.
TEST(BitmapTexture, ReadsBothIdsAheadOfBothChildren) {
    auto record = [](int32_t uvwId, int32_t bitmapId) {
        Bytes b;
        b.version(1).ints({uvwId, bitmapId}).append(defaultChannelRecord());
        b.append(bufferRecord(0, 0.5f, 1.0f, "a.png")).flag(false);  // tile
        return b;
    };
    BitmapTexture texture;
    ASSERT_TRUE(readAll(texture, record(4, 0)));
    ASSERT_TRUE(std::dynamic_pointer_cast<GenChannelUVW>(texture.uvwgen));
    auto buffer = std::dynamic_pointer_cast<BitmapBuffer>(texture.bitmap);
    ASSERT_TRUE(buffer);
    EXPECT_EQ(buffer->file, u"a.png");
    EXPECT_FALSE(texture.tile);
    expectWritesBack(texture, record(4, 0));

    for (auto ids : {std::pair<int32_t, int32_t>{2, 0}, {4, 1}, {-1, 0}}) {
        EXPECT_FALSE(deserializeFrom(BitmapTexture(), record(ids.first, ids.second)))
            << ids.first << "," << ids.second;
    }
    expectRefusesWords<BitmapTexture>({0x20000, 0x10001});

    // A bitmap that refuses its version stays in its slot beside the generator that read.
    Bytes badBitmap;
    badBitmap.version(1).ints({4, 0}).append(defaultChannelRecord()).version(2);
    BitmapTexture partly;
    EXPECT_FALSE(deserializeFrom(partly, badBitmap));
    EXPECT_TRUE(std::dynamic_pointer_cast<GenChannelUVW>(partly.uvwgen));
    EXPECT_TRUE(std::dynamic_pointer_cast<BitmapBuffer>(partly.bitmap));
}

TEST(BitmapTexture, WithoutBothChildrenWritesNoRecordButStillItsAsset) {
    BitmapTexture texture;
    texture.uvwgen = createUVW(4);
    QuickArchive out(1);
    EXPECT_FALSE(texture.serialize(out));
    EXPECT_EQ(out.writePos(), 0u);

    const std::u16string text = texture_test::assetsOf(texture, u"/M");
    Xml tail;
    tail.emptyPlugin(u"bitmap").inlineParam(u"bool", u"tile", u"1").assetClose();
    EXPECT_NE(text.find(tail.out), std::u16string::npos) << std::string(text.begin(), text.end());
}

// The whole chain: generator and buffer first, then the texture that refers to them. The path is
// escaped only on output.
TEST(MakeBitmapTexture, BuildsAndWritesChainOfThreeAssets) {
    EXPECT_EQ(makeBitmapTexture(u""), nullptr);
    auto texture = std::dynamic_pointer_cast<BitmapTexture>(makeBitmapTexture(u"C:/maps/a&b.png"));
    ASSERT_TRUE(texture);
    auto buffer = std::dynamic_pointer_cast<BitmapBuffer>(texture->bitmap);
    ASSERT_TRUE(buffer);
    EXPECT_EQ(buffer->file, u"C:/maps/a&b.png");
    // The same three blocks as every material's bitmap texture.
    const std::string expected =
        material_test::bitmapBlocks("/Wood/TexBitmap", "C:/maps/a&amp;b.png");
    EXPECT_EQ(wideToUtf8(texture_test::assetsOf(*texture, u"/Wood")),
              "  <Assets>\n" + expected + "  </Assets>\n");
}

TEST(BitmapTexture, CloneIsEqualAndSharesNoChild) {
    auto source = std::dynamic_pointer_cast<BitmapTexture>(makeBitmapTexture(u"x.png"));
    auto copy = std::dynamic_pointer_cast<BitmapTexture>(source->clone());
    ASSERT_TRUE(copy);
    EXPECT_TRUE(copy->isEqual(source));
    EXPECT_NE(copy->uvwgen, source->uvwgen);
    EXPECT_NE(copy->bitmap, source->bitmap);

    std::dynamic_pointer_cast<BitmapBuffer>(copy->bitmap)->gamma = 2;
    EXPECT_FALSE(copy->isEqual(source));
    copy->bitmap.reset();
    EXPECT_FALSE(source->isEqual(copy));  // a missing child on either side
    EXPECT_FALSE(copy->isEqual(source));
}

TEST(TextureFactory, KnowsEveryIdOfItsTable) {
    const std::pair<int, const char16_t*> table[] = {
        {0, u"TexBitmap"},  {1, u"TexFresnel"}, {2, u"TexUVW"},    {3, u"TexNoise"},
        {4, u"TexChecker"}, {5, u"TexAColor"},  {6, u"TexGrid"},   {7, u"TexCloth"},
        {8, u"TexBulge"},   {9, u"TexInvert"},  {10, u"TexBlend"}, {11, u"TexRamp"}};
    for (const auto& entry : table) {
        auto texture = createTexture(entry.first);
        ASSERT_TRUE(texture) << entry.first;
        EXPECT_EQ(texture->pluginType(), entry.second);
    }
    EXPECT_EQ(createTexture(-1), nullptr);
    EXPECT_EQ(createTexture(13), nullptr);
    EXPECT_TRUE(createBitmap(0));
    EXPECT_EQ(createBitmap(1), nullptr);
}
