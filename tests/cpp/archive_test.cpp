#include <gtest/gtest.h>

#include <sstream>
#include <tuple>

#include "archive/quick_archive.h"

using namespace CorvaneCore;

TEST(QuickArchive, PrimitivesAreLittleEndianAndUnaligned) {
    QuickArchive a;
    const auto values = std::make_tuple(true, int32_t(-2), 0x01020304u, 1.5f, 0.25, Color(1, 2, 3),
                                        AColor(1, 2, 3, 4));
    std::apply([&](const auto&... v) { (a.write(v), ...); }, values);
    EXPECT_EQ(a.writePos(), 1u + 4 + 4 + 4 + 8 + 12 + 16);
    std::string head(9, '\0');
    a.readBytes(&head[0], 9);
    EXPECT_EQ(head, std::string("\x01\xFE\xFF\xFF\xFF\x04\x03\x02\x01", 9));

    a.setReadPos(0);
    std::decay_t<decltype(values)> back;
    std::apply([&](auto&... v) { (a.read(v), ...); }, back);
    EXPECT_EQ(back, values);
    EXPECT_EQ(a.readPos(), a.writePos());

    const char bytes[] = {0, 7};  // any non-zero byte reads as true
    QuickArchive flags(bytes, 2);
    bool x = true, y = false;
    flags.read(x), flags.read(y);
    EXPECT_EQ(std::make_pair(x, y), std::make_pair(false, true));
}

TEST(QuickArchive, BlocksGrowOneAtATimeAreSharedByCopiesAndANewOneIsCleared) {
    QuickArchive a(1);
    for (int k = 0; k < 4094; ++k) a.write(char(0));
    a.write(int32_t(0x11223344));
    EXPECT_EQ(
        std::make_tuple(a.blockCount(), a.writePos(), (*a.getBlock(0))[4095], (*a.getBlock(1))[0]),
        std::make_tuple(size_t(2), uint64_t(4098), '\x33', '\x22'));
    a.setReadPos(4094);
    int32_t v = 0;
    a.read(v);
    EXPECT_EQ(v, 0x11223344);

    QuickArchive b;
    std::string data(4097, 'x');
    b.writeBytes(data.data(), data.size());
    EXPECT_EQ(std::make_pair(b.blockCount(), b.writePos()),
              std::make_pair(size_t(2), uint64_t(4097)));

    // A read that spans blocks keeps every byte in order.
    QuickArchive spanned;
    std::string pattern(2 * 4096 + 100, '\0');
    for (size_t k = 0; k < pattern.size(); ++k) pattern[k] = char('a' + k % 23);
    spanned.writeBytes(pattern.data(), pattern.size());
    spanned.setReadPos(10);
    std::string back(pattern.size() - 10, '\0');
    spanned.readBytes(&back[0], back.size());
    EXPECT_EQ(back, pattern.substr(10));

    QuickArchive original(1), copy = original;  // copies share their blocks
    original.write(int32_t(42));
    copy.read(v);
    EXPECT_EQ(v, 42);

    QuickArchive fresh(1);  // one cleared block
    EXPECT_EQ(fresh.remaining(), 4096u);
    unsigned char byte = 9;
    EXPECT_TRUE(fresh.peekByte(4095, byte) && byte == 0);
    EXPECT_FALSE(fresh.peekByte(4096, byte));
    fresh.setReadPos(4095);
    EXPECT_TRUE(fresh.readByte(byte));
    EXPECT_FALSE(fresh.readByte(byte));
}

TEST(QuickArchive, ReadsPastTheEndFollowTheFormat) {
    QuickArchive empty;
    // Scalars keep their earlier bytes.
    std::tuple<int32_t, float, double, bool, bool> scalars(77, 2.5f, 3.5, true, false);
    std::apply([&](auto&... v) { (empty.read(v), ...); }, scalars);
    EXPECT_EQ(scalars, std::make_tuple(77, 2.5f, 3.5, true, false));
    EXPECT_EQ(empty.readPos(), 4u + 4 + 8 + 1 + 1);
    // Compound values are built in cleared temporaries.
    std::tuple<Color, Vector, AColor, Matrix> compound(Color(5, 5, 5), Vector(5, 5, 5),
                                                       AColor(5, 5, 5, 5), Matrix());
    std::apply([&](auto&... v) { (empty.read(v), ...); }, compound);
    EXPECT_EQ(compound,
              std::make_tuple(Color(0, 0, 0), Vector(0, 0, 0), AColor(0, 0, 0, 0), Matrix::zero()));

    std::string s = "keep";
    std::u16string w = u"keep";
    uint64_t size = 99;
    empty.read(s), empty.read(w), empty.readSize(size);
    EXPECT_EQ(std::make_tuple(s, w, size), std::make_tuple("", u"", uint64_t(0)));

    // A value cut by the end keeps only its missing bytes.
    QuickArchive a(1);
    a.setReadPos(4094);  // two bytes of the block are left, both zero
    int32_t cut = int32_t(0xAABBCCDD);
    a.read(cut);
    EXPECT_EQ(uint32_t(cut), 0xAABB0000u);
}

TEST(QuickArchive, StringsCountBytesStopAtAZeroAndAHugeCountStaysBounded) {
    QuickArchive a;
    a.write(std::u16string(u"h\u00e9"));  // UTF-8 takes three bytes
    a.write(uint32_t(5));
    a.writeBytes("ab\0cd", 5);
    a.write(std::string("tail"));
    uint32_t count = 0;
    a.read(count);
    EXPECT_EQ(count, 3u);
    a.setReadPos(0);
    std::u16string w;
    std::string s, tail;
    a.read(w), a.read(s), a.read(tail);
    EXPECT_EQ(std::make_tuple(w, s, tail), std::make_tuple(u"h\u00e9", "ab", "tail"));

    QuickArchive ansi;  // a string that is no UTF-8 falls back to the ANSI code page
    ansi.write(std::string("caf\xE9"));
    ansi.read(w);
    EXPECT_EQ(w, u"caf\u00e9");

    QuickArchive huge;
    huge.write(uint32_t(0xFFFFFFF0));
    huge.writeBytes("xyz", 3);
    huge.read(s);
    EXPECT_EQ(s, "xyz");  // the cleared rest of the block ends the text
    EXPECT_EQ(huge.readPos(), 4u + 0xFFFFFFF0u);
}

TEST(QuickArchive, ReadBufferCopiesAtMostItsCapacity) {
    QuickArchive a;
    a.write(uint32_t(10));
    a.writeBytes("0123456789", 10);
    a.write(uint32_t(0xCAFE));
    for (const bool peek : {false, true}) {
        char buf[4] = {};
        a.setReadPos(0);
        EXPECT_EQ(a.readBuffer(buf, 4, peek), 10u);
        EXPECT_EQ(std::string(buf, 4), "0123");
        EXPECT_EQ(a.readPos(), peek ? 0u : 14u);
    }

    QuickArchive small;
    small.writeBuffer("ab", 2);
    char big[4] = {'w', 'x', 'y', 'z'};
    EXPECT_EQ(small.readBuffer(big, 4, false), 2u);
    EXPECT_EQ(std::string(big, 4), "abyz");
    EXPECT_EQ(small.readPos(), 6u);
}

TEST(QuickArchive, DoubleTransformOffsetIsStoredAsFloatsAndARectangleDerivesItsSize) {
    QuickArchive a;
    DoubleTransform t;
    t.offset[0] = 0.1, t.offset[1] = -2.0, t.offset[2] = 1e10;
    IntRect r;
    r.left = 10, r.top = 20, r.right = 110, r.bottom = 70;
    a.write(t), a.write(r);
    EXPECT_EQ(a.writePos(), 48u + 16u);
    DoubleTransform back;
    IntRect rect;
    a.read(back), a.read(rect);
    EXPECT_EQ(std::make_tuple(back.offset[0], back.offset[1], back.offset[2]),
              std::make_tuple(double(0.1f), -2.0, double(1e10f)));
    EXPECT_EQ(std::make_pair(rect.width, rect.height), std::make_pair(100, 50));
}

TEST(QuickArchive, WholeArchiveStreamAndFileForms) {
    QuickArchive a;
    a.write(int32_t(7));
    std::stringstream out;
    EXPECT_TRUE(a.saveToStream(out));
    const std::string data = out.str();
    ASSERT_EQ(data.size(), 4u + 4096u);
    EXPECT_EQ(data.substr(0, 4), std::string("\x01\0\0\0", 4));

    QuickArchive back;
    std::stringstream in(data);
    EXPECT_TRUE(back.loadFromStream(in));
    EXPECT_EQ(std::make_tuple(back.blockCount(), back.readPos(), back.writePos()),
              std::make_tuple(size_t(1), uint64_t(0), uint64_t(0)));
    int32_t v = 0;
    back.read(v);
    EXPECT_EQ(v, 7);

    QuickArchive none;
    std::stringstream emptyOut;
    EXPECT_TRUE(none.saveToStream(emptyOut));
    EXPECT_EQ(emptyOut.str(), std::string(4, '\0'));

    std::stringstream zero(std::string(4, '\0'));
    QuickArchive z(2);
    EXPECT_FALSE(z.loadFromStream(zero));
    EXPECT_EQ(z.blockCount(), 0u);

    // A truncated stream: the count is not trusted.
    std::stringstream cut(std::string("\xFF\xFF\xFF\xFF", 4) + std::string(100, 'q'));
    QuickArchive fromCut;
    EXPECT_TRUE(fromCut.loadFromStream(cut));
    char c = 0;
    fromCut.read(c);
    EXPECT_EQ(std::make_pair(fromCut.blockCount(), c), std::make_pair(size_t(1), 'q'));

    const std::string path = ::testing::TempDir() + "archive_roundtrip.bin";
    ASSERT_TRUE(a.saveToFile(path));
    QuickArchive fromFile;
    ASSERT_TRUE(fromFile.loadFromFile(path));
    fromFile.read(v);
    EXPECT_EQ(v, 7);
    EXPECT_FALSE(fromFile.loadFromFile(path + ".missing"));
}

// Equality of the stored value types needs every component: a change in any one of them,
// the transform's offset and each matrix column included, makes two values differ.
TEST(ValueTypes, EqualityNeedsEveryComponent) {
    const float base[4] = {1, 2, 3, 4};
    for (int i = 0; i < 4; ++i) {
        float changed[4] = {1, 2, 3, 4};
        changed[i] = 9;
        const AColor a(base[0], base[1], base[2], base[3]);
        const AColor b(changed[0], changed[1], changed[2], changed[3]);
        EXPECT_TRUE(a != b && !(a == b)) << i;
        if (i == 3) continue;
        EXPECT_NE(Color(base[0], base[1], base[2]), Color(changed[0], changed[1], changed[2]));
        EXPECT_NE(Vector(base[0], base[1], base[2]), Vector(changed[0], changed[1], changed[2]));
    }
    for (int part = 0; part < 4; ++part) {
        Transform t;
        if (part < 3) t.m.v[part] = Vector(5, 5, 5);
        if (part == 3) t.offset = Vector(5, 5, 5);
        EXPECT_TRUE(t != Transform() && !(t == Transform())) << part;
    }
    EXPECT_EQ(Transform(), Transform::identity());
}
