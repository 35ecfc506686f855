#include "lights/sun_light.h"

#include "lights/light_fields.h"
#include "xml/asset_xml_writer.h"
#include "xml/number_format.h"
#include "xml/text.h"

namespace CorvaneCore {

void SunLight::setDefaults() {
    setSunDefaults();
    sunId = newUuidText();
    sunName.clear();
    enabled = true;
    invisible = false;
    transform.reset();
}

bool SunLight::serialize(QuickArchive& archive) {
    writeFields(archive);
    return transform.serialize(archive);
}

bool SunLight::deserialize(QuickArchive& archive) {
    setDefaults();
    uint32_t major = 0;
    if (!readLightVersion(archive, kNewestVersion, major)) return false;
    if (major < 4) {
        // Before the curve, the placement was one plain transform at the head of the record.
        Transform plain;
        archive.read(plain);
        transform.setValue(plain, 0.0);
    }
    readListedFields(archive, major, *this);
    if (major >= 4) return transform.deserialize(archive);
    return true;
}

bool SunLight::isEqual(const std::shared_ptr<BaseLight>& other) {
    const SunLight* that = asSameClass<SunLight>(other);
    return that && sameFields(*this, *that) && transform.sameKeys(that->transform);
}

bool SunLight::claimUrl(AssetXmlWriter& writer, std::u16string& name) {
    if (writer.sunUrls.count(sunId)) return false;
    const std::u16string suffix = writer.sunUrls.empty()
                                      ? std::u16string()
                                      : numberText(static_cast<int64_t>(writer.sunUrls.size()));
    if (writer.targetHost == 0) {
        name = u"/" + pluginType() + suffix;
    } else if (name.empty()) {
        // Other hosts keep their own document sun in place of the default one.
        if (equalsIgnoreCase(sunId, kDefaultSunId)) return false;
        name = u"/" + sunId;
    }
    writer.sunUrls[sunId] = name;
    return true;
}

int SunLight::writeXML(AssetXmlWriter& writer, std::u16string name) {
    if (!claimUrl(writer, name)) return 0;
    beginAssetFrame(writer, name, *this);
    writer.writeVector("up_vector", up_vector);
    writer.writeFloat("shadowBias", shadowBias);
    writer.writeFloat("turbidity", turbidity);
    writer.writeFloat("water_vapour", water_vapour);
    writer.writeFloat("intensity_multiplier", intensity_multiplier);
    writer.writeFloat("size_multiplier", size_multiplier);
    writer.writeFloat("photon_radius", photon_radius);
    writer.writeFloat("photon_emit_distance", photon_emit_distance);
    writer.writeFloat("ozone", ozone);
    writer.writeInteger("photonSubdivs", photonSubdivs);
    writer.writeInteger("causticSubdivs", causticSubdivs);
    writer.writeInteger("shadow_subdivs", shadow_subdivs);
    writer.writeBool("enabled", enabled);
    writer.writeBool("shadows", shadows);
    writer.writeBool("invisible", invisible);
    writer.writeTransform("transform", transform.getValue(0.0));
    endAssetFrame(writer);
    return 0;
}

namespace {

std::shared_ptr<SunLight> makeDefaultSun() {
    auto sun = std::make_shared<SunLight>();
    sun->sunId = kDefaultSunId;
    sun->sunName = kDefaultSunName;
    return sun;
}

std::shared_ptr<SunLight>& defaultSunSlot() {
    static std::shared_ptr<SunLight> sun = makeDefaultSun();
    return sun;
}

// Made at load like the rest of the process-wide state; the function-local slot keeps a
// caller from another static initialiser safe from the order of initialisation.
[[maybe_unused]] const bool g_defaultSunMade = static_cast<bool>(defaultSunSlot());

}  // namespace

std::shared_ptr<SunLight> defaultSunLight() { return defaultSunSlot(); }

}  // namespace CorvaneCore
