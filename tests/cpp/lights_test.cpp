#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <type_traits>
#include <vector>

#include "convert/conversions.h"
#include "lights/dome_light.h"
#include "lights/ies_light.h"
#include "lights/light_names.h"
#include "lights/maya_direct_light.h"
#include "lights/omni_light.h"
#include "lights/rectangle_light.h"
#include "lights/sphere_light.h"
#include "lights/spot_light.h"
#include "lights/sun_light.h"
#include "record_builder.h"
#include "texture_bytes.h"
#include "xml/asset_xml_writer.h"
#include "xml/text.h"

using namespace CorvaneCore;
using Bytes = RecordBuilder;
using texture_test::Xml;

namespace {

// Stored values that differ from every default.
const Color kColorA(0.1f, 0.2f, 0.3f);
const Color kColorB(0.4f, 0.5f, 0.6f);
const Color kColorC(0.7f, 0.8f, 0.9f);
const Color kWhite(1, 1, 1), kBlack(0, 0, 0);
const Transform kPlace = countingTransform(1);
const Vector kUp(0.1f, 0.2f, 0.9f);

Bytes versionWord(uint32_t major) {
    Bytes b;
    b.u32(major << 16);
    return b;
}

// A transform curve with one key.
void curve(Bytes& b, double time, const Transform& value, uint32_t keySize = 8) {
    b.u32(0x10000).u32(1).u32(keySize).f64(time).transform(value);
}

#define EXPECT_SINCE(field, stored, fallback, since) \
    EXPECT_EQ(l.field, v >= (since) ? (stored) : (fallback)) << #field << ", version " << v

// ------------------------------------------------------------ records of each version

Bytes mayaRecord(uint32_t v, uint32_t curveKeySize = 8) {
    Bytes b = versionWord(v);
    b.color(kColorA);
    if (v >= 4) b.color(kColorB);
    b.f32(0.125f).f32(42).f32(3).u32(222).u32(111).i32(5).boolean(false);
    if (v >= 2) b.boolean(false).u32(33).f32(1.5f);
    if (v == 2) b.transform(kPlace);
    if (v >= 3) curve(b, 2.0, kPlace, curveKeySize);
    return b;
}

Bytes omniRecord(uint32_t v) {
    Bytes b = versionWord(v);
    b.color(kColorA);
    if (v >= 3) b.color(kColorB).f32(0.25f);
    b.f32(0.125f).f32(2).f32(42).f32(3);
    if (v >= 3) b.i32(2);
    b.u32(111).u32(222).i32(5).boolean(false);
    if (v >= 2) b.boolean(false).u32(33).f32(1.5f).transform(kPlace);
    if (v >= 4) b.boolean(false).boolean(false);
    return b;
}

Bytes spotRecord(uint32_t v) {
    Bytes b = versionWord(v);
    b.color(kColorA);
    if (v >= 3) b.color(kColorB).f32(0.25f).f32(11).f32(12).f32(13).f32(14);
    b.f32(0.125f).f32(2).f32(42).f32(3);
    if (v >= 3) b.i32(2);
    b.u32(111).u32(222).i32(5).boolean(false);
    if (v >= 3) b.boolean(true);
    if (v >= 2) b.boolean(false).u32(33).f32(1.5f).transform(kPlace).f32(0.75f).f32(0.2f);
    if (v >= 4) b.boolean(false).boolean(false);
    return b;
}

Bytes rectangleRecord(uint32_t v) {
    Bytes b = versionWord(v);
    b.color(kColorA);
    if (v >= 3) b.color(kColorB).f32(0.25f);
    b.f32(0.125f).f32(42).f32(3);
    if (v >= 3) b.i32(2);
    b.u32(44).u32(222).u32(111).i32(5);
    b.boolean(true).boolean(true).boolean(true).boolean(true);  // doubleSided .. noDecay
    b.boolean(false).boolean(true).boolean(false);  // enabled, storeWith.., ignoreLightNormals
    if (v >= 2) b.boolean(false).transform(kPlace).f32(2.5f).f32(3.5f);
    if (v >= 4) b.boolean(false).boolean(false).boolean(false);
    return b;
}

const char kStoredSunId[] = "{0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0}";

Bytes sunRecord(uint32_t v, const std::string& id = kStoredSunId) {
    Bytes b = versionWord(v);
    if (v < 4) b.transform(kPlace);
    b.vec(kUp).f32(0.125f).f32(4).f32(2.5f).f32(1.25f).f32(2).f32(60).f32(170).f32(0.5f);
    b.i32(111).i32(222).i32(33).boolean(false);
    if (v >= 2) b.text(id).text("Noon");
    if (v >= 3) b.boolean(false).boolean(true);
    if (v >= 4) curve(b, 0.0, kPlace);
    return b;
}

const char kIesFile[] = "C:\\ies\\caf\xC3\xA9 & bar.ies";

Bytes iesRecord(uint32_t v) {
    Bytes b = versionWord(v);
    b.transform(kPlace).color(kColorA).color(kColorB).color(kColorC).f32(0.125f).f32(0.25f);
    b.u32(111).u32(222).u32(33).boolean(false).boolean(false).boolean(true).text(kIesFile);
    if (v >= 2) b.boolean(false).boolean(false);
    if (v >= 3) b.f32(7);
    return b;
}

Bytes sphereRecord(uint32_t v) {
    Bytes b = versionWord(v);
    b.transform(kPlace).color(kColorA).color(kColorB).f32(0.5f).f32(0.25f).f32(2).f32(3);
    b.u32(111).u32(222).u32(1).u32(33);
    b.boolean(false).boolean(false).boolean(true).boolean(true).boolean(true);
    if (v >= 2) b.boolean(false).boolean(false).boolean(false);
    return b;
}

// Reads every version of a class from hand-made records; each must be consumed exactly. `check`
// tests one field of each version: stored from that version on, the default before.
template <class Light, class Build, class Check>
void readEveryVersion(const char* name, uint32_t newest, Build build, Check check) {
    SCOPED_TRACE(name);
    for (uint32_t v = 1; v <= newest; ++v) {
        Light l;
        ASSERT_TRUE(readAll(l, build(v))) << "version " << v;
        check(l, v);
    }
}

}  // namespace

TEST(LightRecords, EveryClassReadsEveryVersion) {
    readEveryVersion<MayaDirectLight>(
        "maya", 4, [](uint32_t v) { return mayaRecord(v); },
        [](const MayaDirectLight& l, uint32_t v) {
            EXPECT_SINCE(photonSubdivs, 111u, 500u, 1);
            EXPECT_SINCE(shadowRadius, 1.5f, 0.0f, 2);
            ASSERT_EQ(l.transform.keyCount(), 1);
            EXPECT_EQ(l.transform.keyTime(0), v >= 3 ? 2.0 : 0.0);
            EXPECT_EQ(l.transform.getValue(l.transform.keyTime(0)), v >= 2 ? kPlace : Transform());
            EXPECT_SINCE(shadowColor, kColorB, kBlack, 4);
        });
    readEveryVersion<OmniLight>("omni", 4, omniRecord, [](const OmniLight& l, uint32_t v) {
        EXPECT_SINCE(carriedMode, 5, 3, 1);
        EXPECT_SINCE(transform, kPlace, Transform(), 2);
        EXPECT_SINCE(units, 2, 0, 3);
        EXPECT_SINCE(affectSpecular, false, true, 4);
    });
    readEveryVersion<SpotLight>("spot", 4, spotRecord, [](const SpotLight& l, uint32_t v) {
        EXPECT_SINCE(enabled, false, true, 1);
        EXPECT_SINCE(penumbraAngle, 0.2f, 0.0f, 2);
        EXPECT_SINCE(barnDoorBottom, 14.0f, 20.0f, 3);
        EXPECT_SINCE(barnDoor, true, false, 3);
        EXPECT_SINCE(affectSpecular, false, true, 4);
    });
    readEveryVersion<RectangleLight>("rectangle", 4, rectangleRecord,
                                     [](const RectangleLight& l, uint32_t v) {
                                         EXPECT_SINCE(ignoreLightNormals, false, true, 1);
                                         EXPECT_SINCE(v_size, 3.5f, 1.0f, 2);
                                         EXPECT_SINCE(units, 2, 0, 3);
                                         EXPECT_SINCE(affectReflections, false, true, 4);
                                     });
    readEveryVersion<SunLight>(
        "sun", 4, [](uint32_t v) { return sunRecord(v); },
        [](const SunLight& l, uint32_t v) {
            EXPECT_SINCE(shadows, false, true, 1);
            EXPECT_SINCE(sunName, std::u16string(u"Noon"), std::u16string(), 2);
            if (v >= 2) {
                EXPECT_EQ(l.sunId, utf8ToWide(kStoredSunId));
            } else {
                EXPECT_EQ(l.sunId.size(), 36u) << "a fresh identity";
            }
            EXPECT_SINCE(invisible, true, false, 3);
            ASSERT_EQ(l.transform.keyCount(), 1);  // the head transform before version 4
            EXPECT_EQ(l.transform.getValue(0.0), kPlace);
        });
    readEveryVersion<IESLight>("ies", 3, iesRecord, [](const IESLight& l, uint32_t v) {
        EXPECT_SINCE(ies_file, std::u16string(u"C:\\ies\\caf\u00e9 & bar.ies"), std::u16string(),
                     1);
        EXPECT_SINCE(affectSpecular, false, true, 2);
        EXPECT_SINCE(intensity, 7.0f, 1.0f, 3);
    });
    readEveryVersion<SphereLight>("sphere", 2, sphereRecord, [](const SphereLight& l, uint32_t v) {
        EXPECT_SINCE(sphereFlag4, true, false, 1);
        EXPECT_SINCE(sphereFlag7, false, true, 2);
    });
}

TEST(LightRecords, AFailingCurveFailsTheReadAndKeepsTheFieldsBefore) {
    for (uint32_t v : {3u, 4u}) {
        MayaDirectLight light;
        EXPECT_FALSE(deserializeFrom(light, mayaRecord(v, 4)));
        EXPECT_EQ(light.color, kColorA);
        EXPECT_EQ(light.shadowRadius, 1.5f);
    }
    Bytes sun = sunRecord(4);
    sun.data[sun.data.size() - 56 - 4] = 4;  // the curve's key size
    SunLight light;
    EXPECT_FALSE(deserializeFrom(light, sun));
    EXPECT_EQ(light.invisible, true);
}

TEST(LightRecords, RefusedVersionWordsResetUsedLightsToTheDefaults) {
    const struct {
        int type;
        uint32_t newest;
    } kinds[] = {{0, 4}, {2, 4}, {3, 4}, {4, 4}, {5, 4}, {6, 3}, {7, 2}};
    for (const auto& kind : kinds) {
        const uint32_t words[] = {0, 0x40001, (kind.newest << 16) | 0x8000u,
                                  (kind.newest + 1) << 16, 0xFFFF0000u};
        for (uint32_t word : words) {
            std::shared_ptr<BaseLight> light = createLight(kind.type);
            ASSERT_TRUE(light);
            // First a newest record of filler bytes, so that the refused read starts from a
            // light whose fields are far from their defaults.
            Bytes used;
            used.version(kind.newest).data.resize(400, 0x41);
            deserializeFrom(*light, used);
            Bytes b;
            b.u32(word).data.resize(400, 0x41);
            EXPECT_FALSE(deserializeFrom(*light, b)) << "type " << kind.type << " word " << word;
            std::shared_ptr<BaseLight> fresh = createLight(kind.type);
            if (auto* sun = dynamic_cast<SunLight*>(fresh.get())) {
                sun->sunId = static_cast<SunLight&>(*light).sunId;
            }
            EXPECT_TRUE(light->isEqual(fresh)) << "type " << kind.type << " word " << word;
        }
    }
}

TEST(LightRecords, DomeLightWritesItsWordAndReadsNothing) {
    DomeLight dome;
    Bytes word;
    word.version(1);
    expectWritesBack(dome, word);
    QuickArchive archive = word.archive();
    EXPECT_TRUE(dome.deserialize(archive));
    EXPECT_EQ(archive.readPos(), 0u);
    EXPECT_FALSE(dome.isEqual(std::make_shared<OmniLight>()));
}

// ------------------------------------------------------------ round trips

// The newest hand-made record read, written back byte for byte, read again and compared; a clone
// compares equal until `mutate` changes it.
template <class Light>
std::vector<uint8_t> bytesOf(Light& light) {
    QuickArchive out(1);
    if (!light.serialize(out)) return {};
    std::vector<uint8_t> bytes(static_cast<size_t>(out.writePos()));
    out.setReadPos(0);
    if (!bytes.empty()) out.readBytes(bytes.data(), bytes.size());
    return bytes;
}

// The record with one byte changed at a time: whenever that changes a compared field (the
// light is written differently), the two lights compare unequal.
template <class Light>
void expectEveryStoredChangeIsUnequal(const std::shared_ptr<Light>& light, const Bytes& record) {
    const std::vector<uint8_t> original = bytesOf(*light);
    for (size_t i = 4; i < record.size(); ++i) {
        Bytes changed = record;
        changed.data[i] ^= 0x01;
        auto other = std::make_shared<Light>();
        QuickArchive archive = changed.archive();
        if (!other->deserialize(archive) || archive.readPos() != changed.size()) continue;
        // The one field a comparison leaves out.
        if constexpr (std::is_same_v<Light, MayaDirectLight>) other->transform = light->transform;
        if (bytesOf(*other) == original) continue;
        EXPECT_FALSE(light->isEqual(other)) << "byte " << i;
    }
}

template <class Light, class Mutate>
void roundTrip(const Bytes& newest, Mutate mutate) {
    auto light = std::make_shared<Light>(), back = std::make_shared<Light>();
    ASSERT_TRUE(deserializeFrom(*light, newest));
    expectWritesBack(*light, newest);
    ASSERT_TRUE(deserializeFrom(*back, newest));
    EXPECT_TRUE(back->isEqual(light));
    std::shared_ptr<BaseLight> copy = light->clone();
    EXPECT_TRUE(copy->isEqual(light));
    mutate(static_cast<Light&>(*copy));
    EXPECT_FALSE(copy->isEqual(light));
    EXPECT_FALSE(light->isEqual(std::make_shared<DomeLight>()));
    expectEveryStoredChangeIsUnequal(light, newest);
}

TEST(LightRoundTrip, EveryClassWritesTheNewestLayout) {
    roundTrip<MayaDirectLight>(mayaRecord(4), [](auto& l) { l.shadowRadius = 9; });
    roundTrip<OmniLight>(omniRecord(4), [](auto& l) { l.affectSpecular = true; });
    roundTrip<SpotLight>(spotRecord(4), [](auto& l) { l.barnDoorBottom = 1; });
    roundTrip<RectangleLight>(rectangleRecord(4), [](auto& l) { l.carriedMode = 0; });
    roundTrip<SunLight>(sunRecord(4), [](auto& l) { l.sunName = u"Dusk"; });
    roundTrip<SunLight>(sunRecord(4), [](auto& l) { l.transform.setValue(kPlace, 1.0); });
    roundTrip<IESLight>(iesRecord(3), [](auto& l) { l.ies_file = u"other.ies"; });
    roundTrip<SphereLight>(sphereRecord(2), [](auto& l) { l.sphereFlag7 = true; });
}

TEST(LightRoundTrip, MayaDirectLightComparesWithoutItsTransform) {
    MayaDirectLight light;
    auto other = std::make_shared<MayaDirectLight>();
    other->transform.setValue(kPlace, 0.0);
    EXPECT_TRUE(light.isEqual(other));
    other->intensity = std::nanf("");
    EXPECT_TRUE(light.isEqual(other));  // a NaN equals anything
}

// ------------------------------------------------------------ factory

TEST(LightFactory, KnowsTheStoredIdsOnly) {
    for (int id : {0, 2, 3, 4, 5, 6, 7}) {
        std::shared_ptr<BaseLight> light = createLight(id);
        ASSERT_TRUE(light) << id;
        EXPECT_EQ(light->getType(), id);
    }
    for (int id : {-1, 1, 8, 9}) EXPECT_FALSE(createLight(id)) << id;
    EXPECT_EQ(lightDisplayName(1), u"Positional Direct Light");  // a name without a class
    EXPECT_EQ(lightDisplayName(8), u"Invalid Light");
}

// ------------------------------------------------------------ XML

namespace {

const std::vector<const char16_t*> kPlaceText = {u"1", u"2", u"3", u"4",  u"5",  u"6",
                                                 u"7", u"8", u"9", u"10", u"11", u"12"};

// convert_light writes one asset without "Assets" around it, two blanks further left.
Xml lightAsset(const std::u16string& plugin) {
    Xml e(-2);
    e.assetOpen(u"/" + plugin, u"light", plugin);
    return e;
}

// Narrow text, so that a failing comparison shows a line diff.
std::string convert(const Bytes& record, int type) {
    QuickArchive archive = record.archive();
    std::optional<std::string> text = convertLight(archive, type);
    EXPECT_TRUE(text.has_value()) << "type " << type;
    return text.value_or("");
}
std::string closed(Xml& e) { return wideToUtf8(e.assetClose().out); }

std::string xmlOf(BaseLight& light, AssetXmlWriter& writer, const std::u16string& name = u"") {
    size_t before = writer.stream().size();
    light.writeXML(writer, name);
    return writer.stream().substr(before);
}

std::string assetLine(const std::string& url) {
    return "  <Asset layout=\"\" renderer=\"ombra\" type=\"light\" url=\"" + url + "\" >\n";
}

}  // namespace

TEST(LightXml, MayaDirectLightLeavesOutItsTransform) {
    Xml e = lightAsset(u"MayaLightDirect");
    e.color(u"color", u"0.1", u"0.2", u"0.3").color(u"shadowColor", u"0.4", u"0.5", u"0.6");
    e.real(u"shadowBias", u"0.125").real(u"shadowRadius", u"1.5").real(u"intensity", u"42");
    e.integer(u"causticSubdivs", u"222").integer(u"photonSubdivs", u"111");
    e.integer(u"shadowSubdivs", u"33").flag(u"enabled", u"0").flag(u"shadows", u"0");
    EXPECT_EQ(convert(mayaRecord(4), 0), closed(e));
}

// Fresh lights write the defaults of their field tables.
TEST(LightXml, DefaultOmniAndSpotLights) {
    const std::vector<const char16_t*> identity = {u"1", u"0", u"0", u"0", u"1", u"0",
                                                   u"0", u"0", u"1", u"0", u"0", u"0"};
    Xml omni = lightAsset(u"LightOmni");
    omni.color(u"color", u"1", u"1", u"1").color(u"shadowColor", u"0", u"0", u"0");
    omni.real(u"cutoffThreshold", u"0.005").real(u"shadowBias", u"0").real(u"decay", u"0");
    omni.real(u"intensity", u"30").real(u"shadowRadius", u"0");
    omni.integer(u"causticSubdivs", u"0").integer(u"photonSubdivs", u"500");
    omni.integer(u"causticSubdivs", u"1000").integer(u"shadowSubdivs", u"8");
    omni.flag(u"enabled", u"1").flag(u"shadows", u"1").flag(u"affectDiffuse", u"1");
    omni.flag(u"affectSpecular", u"1").transform(u"transform", identity);
    std::string text;
    AssetXmlWriter writer(text);
    OmniLight omniLight;
    EXPECT_EQ(xmlOf(omniLight, writer), closed(omni));

    Xml spot = lightAsset(u"LightSpot");
    spot.color(u"color", u"1", u"1", u"1").color(u"shadowColor", u"0", u"0", u"0");
    spot.real(u"cutoffThreshold", u"0.005").real(u"barnDoorLeft", u"20");
    spot.real(u"barnDoorRight", u"20").real(u"barnDoorTop", u"20").real(u"barnDoorBottom", u"20");
    spot.real(u"shadowBias", u"0").real(u"decay", u"0").real(u"intensity", u"50");
    spot.real(u"shadowRadius", u"0").real(u"coneAngle", u"1").real(u"penumbraAngle", u"0");
    spot.integer(u"units", u"0").integer(u"photonSubdivs", u"500");
    spot.integer(u"causticSubdivs", u"1000").integer(u"shadowSubdivs", u"8");
    spot.flag(u"enabled", u"1").flag(u"barnDoor", u"0").flag(u"shadows", u"1");
    spot.flag(u"affectDiffuse", u"1").flag(u"affectSpecular", u"1");
    spot.transform(u"transform", identity);
    const std::string legacy =
        "          <parameter type=\"bool\" name=\"legacyMode\" handler=\"default\" "
        "listType=\"none\" isUserData=\"1\" label=\"Legacy Mode\">\n";
    std::string spotText;
    AssetXmlWriter spotWriter(spotText);
    SpotLight spotLight;
    const std::string written = xmlOf(spotLight, spotWriter);
    const std::string head = wideToUtf8(spot.out);
    EXPECT_EQ(written.substr(0, head.size()), head);
    EXPECT_NE(written.find(legacy, head.size()), std::string::npos);
}

TEST(LightXml, OmniLightWritesUnitsAsTheFirstCausticSubdivs) {
    Xml e = lightAsset(u"LightOmni");
    e.color(u"color", u"0.1", u"0.2", u"0.3").color(u"shadowColor", u"0.4", u"0.5", u"0.6");
    e.real(u"cutoffThreshold", u"0.25").real(u"shadowBias", u"0.125").real(u"decay", u"2");
    e.real(u"intensity", u"42").real(u"shadowRadius", u"1.5");
    e.integer(u"causticSubdivs", u"2").integer(u"photonSubdivs", u"111");
    e.integer(u"causticSubdivs", u"222").integer(u"shadowSubdivs", u"33");
    e.flag(u"enabled", u"0").flag(u"shadows", u"0").flag(u"affectDiffuse", u"0");
    e.flag(u"affectSpecular", u"0").transform(u"transform", kPlaceText);
    EXPECT_EQ(convert(omniRecord(4), 2), closed(e));
}

TEST(LightXml, SpotLightEndsWithTheLabelledLegacyFlag) {
    Xml e = lightAsset(u"LightSpot");
    e.color(u"color", u"0.1", u"0.2", u"0.3").color(u"shadowColor", u"0.4", u"0.5", u"0.6");
    e.real(u"cutoffThreshold", u"0.25").real(u"barnDoorLeft", u"11");
    e.real(u"barnDoorRight", u"12").real(u"barnDoorTop", u"13").real(u"barnDoorBottom", u"14");
    e.real(u"shadowBias", u"0.125").real(u"decay", u"2").real(u"intensity", u"42");
    e.real(u"shadowRadius", u"1.5").real(u"coneAngle", u"0.75").real(u"penumbraAngle", u"0.2");
    e.integer(u"units", u"2").integer(u"photonSubdivs", u"111");
    e.integer(u"causticSubdivs", u"222").integer(u"shadowSubdivs", u"33");
    e.flag(u"enabled", u"0").flag(u"barnDoor", u"1").flag(u"shadows", u"0");
    e.flag(u"affectDiffuse", u"0").flag(u"affectSpecular", u"0");
    e.transform(u"transform", kPlaceText);
    e.line(12,
           u"<parameter type=\"bool\" name=\"legacyMode\" handler=\"default\" "
           u"listType=\"none\" isUserData=\"1\" label=\"Legacy Mode\">");
    e.line(14, u"<value>1</value>").paramClose();
    EXPECT_EQ(convert(spotRecord(4), 4), closed(e));
}

TEST(LightXml, RectangleLightParameterOrder) {
    Xml e = lightAsset(u"LightRectangle");
    e.color(u"color", u"0.1", u"0.2", u"0.3").color(u"shadowColor", u"0.4", u"0.5", u"0.6");
    e.real(u"cutoffThreshold", u"0.25").real(u"shadowBias", u"0.125").real(u"intensity", u"42");
    e.real(u"u_size", u"2.5").real(u"v_size", u"3.5").integer(u"units", u"2");
    e.integer(u"photonSubdivs", u"111").integer(u"causticSubdivs", u"222");
    e.integer(u"subdivs", u"44").flag(u"enabled", u"0").flag(u"doubleSided", u"1");
    e.flag(u"invisible", u"1").flag(u"lightPortal", u"1").flag(u"noDecay", u"1");
    e.flag(u"storeWithIrradianceMap", u"1").flag(u"ignoreLightNormals", u"0");
    e.flag(u"shadows", u"0").flag(u"affectDiffuse", u"0").flag(u"affectSpecular", u"0");
    e.flag(u"affectReflections", u"0").transform(u"transform", kPlaceText);
    EXPECT_EQ(convert(rectangleRecord(4), 3), closed(e));
}

TEST(LightXml, IESLightEscapesItsFilePath) {
    Xml e = lightAsset(u"LightIES");
    e.transform(u"transform", kPlaceText);
    e.color(u"color", u"0.1", u"0.2", u"0.3").color(u"shadowColor", u"0.4", u"0.5", u"0.6");
    e.color(u"filter_color", u"0.7", u"0.8", u"0.9");
    e.real(u"shadowBias", u"0.125").real(u"cutoffThreshold", u"0.25").real(u"intensity", u"7");
    e.integer(u"photonSubdivs", u"111").integer(u"causticSubdivs", u"222");
    e.integer(u"shadow_subdivs", u"33").flag(u"enabled", u"0").flag(u"shadows", u"0");
    e.flag(u"soft_shadows", u"1").flag(u"affectDiffuse", u"0").flag(u"affectSpecular", u"0");
    e.inlineParam(u"string", u"ies_file", u"C:\\ies\\caf\u00e9 &amp; bar.ies",
                  u"FileBrowserHandler");
    EXPECT_EQ(convert(iesRecord(3), 6), closed(e));
}

TEST(LightXml, SunLightWritesItsTransformAtTimeZero) {
    Xml e = lightAsset(u"SunLight");
    e.vectorParam(u"up_vector", u"0.1", u"0.2", u"0.9").real(u"shadowBias", u"0.125");
    e.real(u"turbidity", u"4").real(u"water_vapour", u"2.5");
    e.real(u"intensity_multiplier", u"1.25").real(u"size_multiplier", u"2");
    e.real(u"photon_radius", u"60").real(u"photon_emit_distance", u"170").real(u"ozone", u"0.5");
    e.integer(u"photonSubdivs", u"111").integer(u"causticSubdivs", u"222");
    e.integer(u"shadow_subdivs", u"33").flag(u"enabled", u"0").flag(u"shadows", u"0");
    e.flag(u"invisible", u"1").transform(u"transform", kPlaceText);
    EXPECT_EQ(convert(sunRecord(4), 5), closed(e));
    // A version 1 sun keeps its head transform as the value at time 0.0.
    std::string old = convert(sunRecord(1), 5);
    EXPECT_NE(old.find("<z>12</z>\n              </vector>\n            </value>"),
              std::string::npos);
}

TEST(LightXml, ASunKeyCutByTheEndOfTheDataIsReadWithZeros) {
    // A version 4 sun of exactly one block: one key at time 0 whose transform holds only its
    // first six numbers (2 0 0 0 2 0); the id pads the record to the block's end.
    auto sunWithId = [](const std::string& id) {
        Bytes b;
        b.version(4).vec(kUp).f32(0.125f).f32(4).f32(2.5f).f32(1.25f).f32(2).f32(60).f32(170).f32(
            0.5f);
        b.i32(111).i32(222).i32(33).boolean(false).text(id).text("Noon");
        b.boolean(false).boolean(true).u32(0x10000).u32(1).u32(8).f64(0.0);
        return b.floats({2, 0, 0, 0, 2, 0});
    };
    const size_t fixed = sunWithId("").size();
    const Bytes cut = sunWithId(std::string(QuickArchive::kBlockSize - fixed, 'i'));
    ASSERT_EQ(cut.size(), QuickArchive::kBlockSize);
    Xml e = lightAsset(u"SunLight");
    e.vectorParam(u"up_vector", u"0.1", u"0.2", u"0.9").real(u"shadowBias", u"0.125");
    e.real(u"turbidity", u"4").real(u"water_vapour", u"2.5");
    e.real(u"intensity_multiplier", u"1.25").real(u"size_multiplier", u"2");
    e.real(u"photon_radius", u"60").real(u"photon_emit_distance", u"170").real(u"ozone", u"0.5");
    e.integer(u"photonSubdivs", u"111").integer(u"causticSubdivs", u"222");
    e.integer(u"shadow_subdivs", u"33").flag(u"enabled", u"0").flag(u"shadows", u"0");
    e.flag(u"invisible", u"1")
        .transform(u"transform",
                   {u"2", u"0", u"0", u"0", u"2", u"0", u"0", u"0", u"0", u"0", u"0", u"0"});
    EXPECT_EQ(convert(cut, 5), closed(e));
}

TEST(LightXml, SphereDomeAndRefusedRecordsWriteNothing) {
    EXPECT_EQ(convert(sphereRecord(2), 7), "");
    std::string text;
    AssetXmlWriter writer(text);
    DomeLight dome;
    EXPECT_EQ(xmlOf(dome, writer, u"/anything"), "");
    SphereLight sphere;
    EXPECT_EQ(xmlOf(sphere, writer, u"/anything"), "");
    EXPECT_EQ(writer.depth(), 0);

    // Types without a class and records of an unknown version convert to nothing.
    for (int type : {1, 8, -1}) {
        QuickArchive archive = omniRecord(4).archive();
        EXPECT_FALSE(convertLight(archive, type)) << type;
    }
    QuickArchive tooNew = omniRecord(5).archive();
    EXPECT_FALSE(convertLight(tooNew, 2));
}

TEST(LightXml, ASunIsWrittenOncePerWriterUnderItsHostsName) {
    std::string text;
    AssetXmlWriter writer(text);
    SunLight first, again, second;
    first.sunId = again.sunId = u"{AAAA}";
    second.sunId = u"{BBBB}";
    const std::string firstText = xmlOf(first, writer, u"/ignored");
    EXPECT_EQ(firstText.rfind(assetLine("/SunLight"), 0), 0u) << firstText;
    EXPECT_EQ(xmlOf(again, writer, u"/other"), "");
    // The second sun differs from the first by its URL only.
    EXPECT_EQ(xmlOf(second, writer),
              assetLine("/SunLight1") + firstText.substr(assetLine("/SunLight").size()));
    EXPECT_EQ(writer.sunUrls.size(), 2u);
    EXPECT_EQ(writer.sunUrls[u"{AAAA}"], u"/SunLight");
    EXPECT_EQ(writer.sunUrls[u"{BBBB}"], u"/SunLight1");

    // Other hosts name suns by their identity.
    std::string otherText;
    AssetXmlWriter other(otherText);
    other.targetHost = 1;
    SunLight given, byDefault, byId;
    given.sunId = u"{AAAA}";
    byDefault.sunId = u"{d3be9766-e4aa-418b-81a9-23414a2ba98d}";
    byId.sunId = u"{CCCC}";
    EXPECT_EQ(xmlOf(given, other, u"/Given Sun").rfind(assetLine("/Given Sun"), 0), 0u);
    EXPECT_EQ(xmlOf(byDefault, other), "");
    EXPECT_EQ(other.sunUrls.count(byDefault.sunId), 0u);
    EXPECT_EQ(xmlOf(byId, other).rfind(assetLine("/{CCCC}"), 0), 0u);
    EXPECT_EQ(other.sunUrls[u"{CCCC}"], u"/{CCCC}");
}
