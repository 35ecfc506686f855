#include "textures/sky.h"

#include <gtest/gtest.h>

#include "lights/sun_light.h"
#include "texture_bytes.h"
#include "xml/asset_xml_writer.h"
#include "xml/text.h"

using namespace CorvaneCore;
using texture_test::Bytes;
using texture_test::Xml;

namespace {

const char kOtherSunId[] = "{0F0E0D0C-1111-2222-3333-444455556666}";

// A version 4 sun record: the fields of the sun's table, then a one-key transform curve.
Bytes sunRecord(const std::string& id, float turbidity) {
    Bytes b;
    b.version(4).floats({0, 0, 1}).f32(0).f32(turbidity).floats({2, 1, 1, 50, 150, 0.35f});
    b.ints({500, 1000, 8}).flag(true).text(id).text("Sun").flag(true).flag(false);
    b.version(1).u32(1).u32(8).f64(0.0).identityTransform();
    return b;
}

// Items 3 to 17 of the sky's table.
Bytes skyFields(float turbidity, const std::string& skyId) {
    Bytes b;
    b.floats({0, 1, 0}).f32(0.5f).f32(turbidity).floats({2, 1, 1, 50, 150, 0.35f});
    b.ints({400, 900, 4}).flag(false).flag(true).text(skyId);
    return b;
}

// Restores the shared default sun after a test that reads into it.
class DefaultSunGuard {
public:
    DefaultSunGuard() : saved_(*defaultSunLight()) {}
    ~DefaultSunGuard() { *defaultSunLight() = saved_; }

private:
    SunLight saved_;
};

std::shared_ptr<SkyTexture> readSky(const Bytes& record) {
    auto sky = std::dynamic_pointer_cast<SkyTexture>(createTexture(12));
    auto archive = record.archive();
    if (!sky || !sky->deserialize(archive)) return nullptr;
    EXPECT_EQ(archive.readPos(), record.size());
    return sky;
}

}  // namespace

TEST(SkyTexture, VersionOneKeepsTheDefaultSunOrReadsItsOwn) {
    Bytes record;
    record.version(1).flag(false);
    auto sky = readSky(record);
    ASSERT_TRUE(sky);
    EXPECT_EQ(sky->sun, defaultSunLight());
    EXPECT_TRUE(sky->hasSun() && sky->usesDefaultSun());
    std::string text;
    AssetXmlWriter writer(text);
    sky->writeXML(writer, u"/Env");
    EXPECT_EQ(writer.sunUrls.at(defaultSunLight()->sunId), u"/SunLight");
    EXPECT_NE(writer.stream().find("<value>/SunLight</value>"), std::string::npos);

    record = Bytes();
    record.version(1).flag(true).append(sunRecord(kOtherSunId, 5));
    sky = readSky(record);
    ASSERT_TRUE(sky);
    auto sun = std::dynamic_pointer_cast<SunLight>(sky->sun);
    ASSERT_TRUE(sun);
    EXPECT_EQ(sun->turbidity, 5.0f);
    EXPECT_TRUE(sky->hasSun() && !sky->usesDefaultSun());
}

TEST(SkyTexture, VersionTwoTakesAPlainTransformAheadOfItsFields) {
    Bytes record;
    record.version(2).flag(false).floats({2, 0, 0, 0, 2, 0, 0, 0, 2, 1, 2, 3});
    record.append(skyFields(4.5f, "sky-1"));
    auto sky = readSky(record);
    ASSERT_TRUE(sky);
    EXPECT_EQ(sky->transform.keyCount(), 1);
    const Transform placement = sky->transform.getValue(0.0);
    EXPECT_EQ(placement.offset, Vector(1, 2, 3));
    EXPECT_EQ(placement.m.v[1], Vector(0, 2, 0));
    EXPECT_EQ(sky->turbidity, 4.5f);
    EXPECT_EQ(sky->skyId, u"sky-1");
}

TEST(SkyTexture, VersionThreeReplacesTheSharedDefaultSun) {
    DefaultSunGuard guard;
    auto bystander = std::make_shared<SkyTexture>();  // holds the default sun already

    Bytes record;
    record.version(3).flag(true).append(sunRecord(kOtherSunId, 6));
    record.append(skyFields(3, "sky-2"));
    record.version(1).u32(1).u32(8).f64(0.0).floats({1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 7});
    record.append(sunRecord("{d3be9766-e4aa-418b-81a9-23414a2ba98d}", 9)).flag(true);
    auto sky = readSky(record);
    ASSERT_TRUE(sky);
    EXPECT_EQ(sky->sun, defaultSunLight());
    EXPECT_TRUE(sky->usesDefaultSun());
    EXPECT_EQ(sky->transform.getValue(0.0).offset, Vector(0, 0, 7));
    EXPECT_EQ(defaultSunLight()->turbidity, 9.0f);
    EXPECT_EQ(std::dynamic_pointer_cast<SunLight>(bystander->sun)->turbidity, 9.0f);

    // With the last flag false the sky keeps the sun it read.
    record.data.back() = 0;
    sky = readSky(record);
    ASSERT_TRUE(sky);
    EXPECT_EQ(std::dynamic_pointer_cast<SunLight>(sky->sun)->sunId, utf8ToWide(kOtherSunId));
    EXPECT_FALSE(sky->usesDefaultSun());

    // Written back, it is the same record.
    expectWritesBack(*sky, record);
}

TEST(SkyTexture, RefusesUnknownWordsAndFailingSuns) {
    texture_test::expectRefusesWords<SkyTexture>({0x40000, 0x30001, 0});
    Bytes badSun;
    badSun.version(1).flag(true).version(5);
    EXPECT_FALSE(readSky(badSun));
    // The refused sun has taken the sky's slot already: a sun of its own, not the shared one.
    SkyTexture sky;
    auto archive = badSun.archive();
    EXPECT_FALSE(sky.deserialize(archive));
    ASSERT_TRUE(std::dynamic_pointer_cast<SunLight>(sky.sun));
    EXPECT_NE(sky.sun, defaultSunLight());
}

// The sun stands at the document's root, once; both skies refer to it.
TEST(SkyTexture, TwoSkiesWriteTheirSharedSunOnce) {
    auto sun = std::make_shared<SunLight>();
    sun->sunId = utf8ToWide(kOtherSunId);
    SkyTexture first, second;
    first.sun = sun;
    second.sun = sun;

    Xml expected;
    expected.assetOpen(u"/SunLight", u"light", u"SunLight")
        .vectorParam(u"up_vector", u"0", u"0", u"1");
    expected.real(u"shadowBias", u"0").real(u"turbidity", u"3").real(u"water_vapour", u"2");
    expected.real(u"intensity_multiplier", u"1").real(u"size_multiplier", u"1");
    expected.real(u"photon_radius", u"50").real(u"photon_emit_distance", u"150");
    expected.real(u"ozone", u"0.35").integer(u"photonSubdivs", u"500");
    expected.integer(u"causticSubdivs", u"1000").integer(u"shadow_subdivs", u"8");
    expected.flag(u"enabled", u"1").flag(u"shadows", u"1").flag(u"invisible", u"0");
    expected.transform(u"transform", texture_test::kIdentityText).assetClose();
    for (const char16_t* url : {u"/A/TexSky", u"/B/TexSky"}) {
        expected.assetOpen(url, u"texture", u"TexSky");
        expected.inlineParam(u"plugin", u"sun", u"/SunLight").assetClose();
    }

    std::string text;
    AssetXmlWriter writer(text);
    writer.openAssets();
    first.writeXML(writer, u"/A");
    second.writeXML(writer, u"/B");
    writer.closeAssets();
    EXPECT_EQ(utf8ToWide(writer.stream()), expected.document());
}

TEST(SkyTexture, OtherHostsReferToTheDocumentSunOrTheSunId) {
    auto defaultIdSun = std::make_shared<SunLight>();
    defaultIdSun->sunId = u"{d3be9766-e4aa-418b-81a9-23414a2ba98d}";  // case does not matter
    auto otherSun = std::make_shared<SunLight>();
    otherSun->sunId = utf8ToWide(kOtherSunId);

    std::string text;
    AssetXmlWriter writer(text);
    writer.targetHost = 1;
    SkyTexture documentSky, ownSky;
    documentSky.sun = defaultIdSun;
    ownSky.sun = otherSun;
    documentSky.writeXML(writer, u"");
    ownSky.writeXML(writer, u"");
    EXPECT_EQ(writer.stream().find("type=\"light\""), std::string::npos);  // no sun asset written
    EXPECT_NE(writer.stream().find("<value>/Rhino Document Sun</value>"), std::string::npos);
    EXPECT_NE(writer.stream().find("<value>/" + wideToUtf8(otherSun->sunId) + "</value>"),
              std::string::npos);

    // A sun the writer already knows is referred to by its recorded URL.
    writer.sunUrls[otherSun->sunId] = u"/Suns/Noon";
    ownSky.writeXML(writer, u"");
    EXPECT_NE(writer.stream().find("<value>/Suns/Noon</value>"), std::string::npos);
}

TEST(SkyTexture, FreshSkiesDifferAndClonesShareNoSun) {
    SkyTexture a;
    auto b = std::make_shared<SkyTexture>();
    EXPECT_NE(a.skyId, b->skyId);
    EXPECT_FALSE(a.isEqual(b));

    auto copy = std::dynamic_pointer_cast<SkyTexture>(b->clone());
    ASSERT_TRUE(copy);
    EXPECT_TRUE(copy->isEqual(b));
    EXPECT_NE(copy->sun, b->sun);
    EXPECT_TRUE(copy->usesDefaultSun());  // same identity, own object
    std::dynamic_pointer_cast<SunLight>(copy->sun)->ozone = 0.5f;
    EXPECT_FALSE(copy->isEqual(b));
}
