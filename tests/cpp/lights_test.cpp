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
            EXPECT_SINCE(sunName, std::wstring(L"Noon"), std::wstring(), 2);
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
        EXPECT_SINCE(ies_file, std::wstring(L"C:\\ies\\caf\u00e9 & bar.ies"), std::wstring(), 1);
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
    roundTrip<SunLight>(sunRecord(4), [](auto& l) { l.sunName = L"Dusk"; });
    roundTrip<SunLight>(sunRecord(4), [](auto& l) { l.transform.setValue(kPlace, 1.0); });
    roundTrip<IESLight>(iesRecord(3), [](auto& l) { l.ies_file = L"other.ies"; });
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
    EXPECT_EQ(lightDisplayName(1), L"Positional Direct Light");  // a name without a class
    EXPECT_EQ(lightDisplayName(8), L"Invalid Light");
}

// ------------------------------------------------------------ XML

namespace {

const std::vector<const wchar_t*> kPlaceText = {L"1", L"2", L"3", L"4",  L"5",  L"6",
                                                L"7", L"8", L"9", L"10", L"11", L"12"};

// convert_light writes one asset without "Assets" around it, two blanks further left.
Xml lightAsset(const std::wstring& plugin) {
    Xml e(-2);
    e.assetOpen(L"/" + plugin, L"light", plugin);
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

std::string xmlOf(BaseLight& light, AssetXmlWriter& writer, const std::wstring& name = L"") {
    size_t before = writer.stream().size();
    light.writeXML(writer, name);
    return wideToUtf8(writer.stream().substr(before));
}

std::string assetLine(const std::string& url) {
    return "  <Asset layout=\"\" renderer=\"ombra\" type=\"light\" url=\"" + url + "\" >\n";
}

}  // namespace

TEST(LightXml, MayaDirectLightLeavesOutItsTransform) {
    Xml e = lightAsset(L"MayaLightDirect");
    e.color(L"color", L"0.1", L"0.2", L"0.3").color(L"shadowColor", L"0.4", L"0.5", L"0.6");
    e.real(L"shadowBias", L"0.125").real(L"shadowRadius", L"1.5").real(L"intensity", L"42");
    e.integer(L"causticSubdivs", L"222").integer(L"photonSubdivs", L"111");
    e.integer(L"shadowSubdivs", L"33").flag(L"enabled", L"0").flag(L"shadows", L"0");
    EXPECT_EQ(convert(mayaRecord(4), 0), closed(e));
}

// Fresh lights write the defaults of their field tables.
TEST(LightXml, DefaultOmniAndSpotLights) {
    const std::vector<const wchar_t*> identity = {L"1", L"0", L"0", L"0", L"1", L"0",
                                                  L"0", L"0", L"1", L"0", L"0", L"0"};
    Xml omni = lightAsset(L"LightOmni");
    omni.color(L"color", L"1", L"1", L"1").color(L"shadowColor", L"0", L"0", L"0");
    omni.real(L"cutoffThreshold", L"0.005").real(L"shadowBias", L"0").real(L"decay", L"0");
    omni.real(L"intensity", L"30").real(L"shadowRadius", L"0");
    omni.integer(L"causticSubdivs", L"0").integer(L"photonSubdivs", L"500");
    omni.integer(L"causticSubdivs", L"1000").integer(L"shadowSubdivs", L"8");
    omni.flag(L"enabled", L"1").flag(L"shadows", L"1").flag(L"affectDiffuse", L"1");
    omni.flag(L"affectSpecular", L"1").transform(L"transform", identity);
    std::wstring text;
    AssetXmlWriter writer(text);
    OmniLight omniLight;
    EXPECT_EQ(xmlOf(omniLight, writer), closed(omni));

    Xml spot = lightAsset(L"LightSpot");
    spot.color(L"color", L"1", L"1", L"1").color(L"shadowColor", L"0", L"0", L"0");
    spot.real(L"cutoffThreshold", L"0.005").real(L"barnDoorLeft", L"20");
    spot.real(L"barnDoorRight", L"20").real(L"barnDoorTop", L"20").real(L"barnDoorBottom", L"20");
    spot.real(L"shadowBias", L"0").real(L"decay", L"0").real(L"intensity", L"50");
    spot.real(L"shadowRadius", L"0").real(L"coneAngle", L"1").real(L"penumbraAngle", L"0");
    spot.integer(L"units", L"0").integer(L"photonSubdivs", L"500");
    spot.integer(L"causticSubdivs", L"1000").integer(L"shadowSubdivs", L"8");
    spot.flag(L"enabled", L"1").flag(L"barnDoor", L"0").flag(L"shadows", L"1");
    spot.flag(L"affectDiffuse", L"1").flag(L"affectSpecular", L"1");
    spot.transform(L"transform", identity);
    const std::string legacy =
        "          <parameter type=\"bool\" name=\"legacyMode\" handler=\"default\" "
        "listType=\"none\" isUserData=\"1\" label=\"Legacy Mode\">\n";
    std::wstring spotText;
    AssetXmlWriter spotWriter(spotText);
    SpotLight spotLight;
    const std::string written = xmlOf(spotLight, spotWriter);
    const std::string head = wideToUtf8(spot.out);
    EXPECT_EQ(written.substr(0, head.size()), head);
    EXPECT_NE(written.find(legacy, head.size()), std::string::npos);
}

TEST(LightXml, OmniLightWritesUnitsAsTheFirstCausticSubdivs) {
    Xml e = lightAsset(L"LightOmni");
    e.color(L"color", L"0.1", L"0.2", L"0.3").color(L"shadowColor", L"0.4", L"0.5", L"0.6");
    e.real(L"cutoffThreshold", L"0.25").real(L"shadowBias", L"0.125").real(L"decay", L"2");
    e.real(L"intensity", L"42").real(L"shadowRadius", L"1.5");
    e.integer(L"causticSubdivs", L"2").integer(L"photonSubdivs", L"111");
    e.integer(L"causticSubdivs", L"222").integer(L"shadowSubdivs", L"33");
    e.flag(L"enabled", L"0").flag(L"shadows", L"0").flag(L"affectDiffuse", L"0");
    e.flag(L"affectSpecular", L"0").transform(L"transform", kPlaceText);
    EXPECT_EQ(convert(omniRecord(4), 2), closed(e));
}

TEST(LightXml, SpotLightEndsWithTheLabelledLegacyFlag) {
    Xml e = lightAsset(L"LightSpot");
    e.color(L"color", L"0.1", L"0.2", L"0.3").color(L"shadowColor", L"0.4", L"0.5", L"0.6");
    e.real(L"cutoffThreshold", L"0.25").real(L"barnDoorLeft", L"11");
    e.real(L"barnDoorRight", L"12").real(L"barnDoorTop", L"13").real(L"barnDoorBottom", L"14");
    e.real(L"shadowBias", L"0.125").real(L"decay", L"2").real(L"intensity", L"42");
    e.real(L"shadowRadius", L"1.5").real(L"coneAngle", L"0.75").real(L"penumbraAngle", L"0.2");
    e.integer(L"units", L"2").integer(L"photonSubdivs", L"111");
    e.integer(L"causticSubdivs", L"222").integer(L"shadowSubdivs", L"33");
    e.flag(L"enabled", L"0").flag(L"barnDoor", L"1").flag(L"shadows", L"0");
    e.flag(L"affectDiffuse", L"0").flag(L"affectSpecular", L"0");
    e.transform(L"transform", kPlaceText);
    e.line(12,
           L"<parameter type=\"bool\" name=\"legacyMode\" handler=\"default\" "
           L"listType=\"none\" isUserData=\"1\" label=\"Legacy Mode\">");
    e.line(14, L"<value>1</value>").paramClose();
    EXPECT_EQ(convert(spotRecord(4), 4), closed(e));
}

TEST(LightXml, RectangleLightParameterOrder) {
    Xml e = lightAsset(L"LightRectangle");
    e.color(L"color", L"0.1", L"0.2", L"0.3").color(L"shadowColor", L"0.4", L"0.5", L"0.6");
    e.real(L"cutoffThreshold", L"0.25").real(L"shadowBias", L"0.125").real(L"intensity", L"42");
    e.real(L"u_size", L"2.5").real(L"v_size", L"3.5").integer(L"units", L"2");
    e.integer(L"photonSubdivs", L"111").integer(L"causticSubdivs", L"222");
    e.integer(L"subdivs", L"44").flag(L"enabled", L"0").flag(L"doubleSided", L"1");
    e.flag(L"invisible", L"1").flag(L"lightPortal", L"1").flag(L"noDecay", L"1");
    e.flag(L"storeWithIrradianceMap", L"1").flag(L"ignoreLightNormals", L"0");
    e.flag(L"shadows", L"0").flag(L"affectDiffuse", L"0").flag(L"affectSpecular", L"0");
    e.flag(L"affectReflections", L"0").transform(L"transform", kPlaceText);
    EXPECT_EQ(convert(rectangleRecord(4), 3), closed(e));
}

TEST(LightXml, IESLightEscapesItsFilePath) {
    Xml e = lightAsset(L"LightIES");
    e.transform(L"transform", kPlaceText);
    e.color(L"color", L"0.1", L"0.2", L"0.3").color(L"shadowColor", L"0.4", L"0.5", L"0.6");
    e.color(L"filter_color", L"0.7", L"0.8", L"0.9");
    e.real(L"shadowBias", L"0.125").real(L"cutoffThreshold", L"0.25").real(L"intensity", L"7");
    e.integer(L"photonSubdivs", L"111").integer(L"causticSubdivs", L"222");
    e.integer(L"shadow_subdivs", L"33").flag(L"enabled", L"0").flag(L"shadows", L"0");
    e.flag(L"soft_shadows", L"1").flag(L"affectDiffuse", L"0").flag(L"affectSpecular", L"0");
    e.inlineParam(L"string", L"ies_file", L"C:\\ies\\caf\u00e9 &amp; bar.ies",
                  L"FileBrowserHandler");
    EXPECT_EQ(convert(iesRecord(3), 6), closed(e));
}

TEST(LightXml, SunLightWritesItsTransformAtTimeZero) {
    Xml e = lightAsset(L"SunLight");
    e.vectorParam(L"up_vector", L"0.1", L"0.2", L"0.9").real(L"shadowBias", L"0.125");
    e.real(L"turbidity", L"4").real(L"water_vapour", L"2.5");
    e.real(L"intensity_multiplier", L"1.25").real(L"size_multiplier", L"2");
    e.real(L"photon_radius", L"60").real(L"photon_emit_distance", L"170").real(L"ozone", L"0.5");
    e.integer(L"photonSubdivs", L"111").integer(L"causticSubdivs", L"222");
    e.integer(L"shadow_subdivs", L"33").flag(L"enabled", L"0").flag(L"shadows", L"0");
    e.flag(L"invisible", L"1").transform(L"transform", kPlaceText);
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
    Xml e = lightAsset(L"SunLight");
    e.vectorParam(L"up_vector", L"0.1", L"0.2", L"0.9").real(L"shadowBias", L"0.125");
    e.real(L"turbidity", L"4").real(L"water_vapour", L"2.5");
    e.real(L"intensity_multiplier", L"1.25").real(L"size_multiplier", L"2");
    e.real(L"photon_radius", L"60").real(L"photon_emit_distance", L"170").real(L"ozone", L"0.5");
    e.integer(L"photonSubdivs", L"111").integer(L"causticSubdivs", L"222");
    e.integer(L"shadow_subdivs", L"33").flag(L"enabled", L"0").flag(L"shadows", L"0");
    e.flag(L"invisible", L"1")
        .transform(L"transform",
                   {L"2", L"0", L"0", L"0", L"2", L"0", L"0", L"0", L"0", L"0", L"0", L"0"});
    EXPECT_EQ(convert(cut, 5), closed(e));
}

TEST(LightXml, SphereDomeAndRefusedRecordsWriteNothing) {
    EXPECT_EQ(convert(sphereRecord(2), 7), "");
    std::wstring text;
    AssetXmlWriter writer(text);
    DomeLight dome;
    EXPECT_EQ(xmlOf(dome, writer, L"/anything"), "");
    SphereLight sphere;
    EXPECT_EQ(xmlOf(sphere, writer, L"/anything"), "");
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
    std::wstring text;
    AssetXmlWriter writer(text);
    SunLight first, again, second;
    first.sunId = again.sunId = L"{AAAA}";
    second.sunId = L"{BBBB}";
    const std::string firstText = xmlOf(first, writer, L"/ignored");
    EXPECT_EQ(firstText.rfind(assetLine("/SunLight"), 0), 0u) << firstText;
    EXPECT_EQ(xmlOf(again, writer, L"/other"), "");
    // The second sun differs from the first by its URL only.
    EXPECT_EQ(xmlOf(second, writer),
              assetLine("/SunLight1") + firstText.substr(assetLine("/SunLight").size()));
    EXPECT_EQ(writer.sunUrls.size(), 2u);
    EXPECT_EQ(writer.sunUrls[L"{AAAA}"], L"/SunLight");
    EXPECT_EQ(writer.sunUrls[L"{BBBB}"], L"/SunLight1");

    // Other hosts name suns by their identity.
    std::wstring otherText;
    AssetXmlWriter other(otherText);
    other.targetHost = 1;
    SunLight given, byDefault, byId;
    given.sunId = L"{AAAA}";
    byDefault.sunId = L"{d3be9766-e4aa-418b-81a9-23414a2ba98d}";
    byId.sunId = L"{CCCC}";
    EXPECT_EQ(xmlOf(given, other, L"/Given Sun").rfind(assetLine("/Given Sun"), 0), 0u);
    EXPECT_EQ(xmlOf(byDefault, other), "");
    EXPECT_EQ(other.sunUrls.count(byDefault.sunId), 0u);
    EXPECT_EQ(xmlOf(byId, other).rfind(assetLine("/{CCCC}"), 0), 0u);
    EXPECT_EQ(other.sunUrls[L"{CCCC}"], L"/{CCCC}");
}
