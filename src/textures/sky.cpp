#include "textures/sky.h"

#include "archive/compare.h"
#include "archive/read_helpers.h"
#include "lights/sun_light.h"
#include "xml/text.h"

namespace CorvaneCore {

void SkyTexture::setDefaults() {
    sun = defaultSunLight();
    up_vector = Vector(0.0f, 0.0f, 1.0f);
    shadowBias = 0.0f;
    turbidity = 3.0f;
    water_vapour = 2.0f;
    intensity_multiplier = 1.0f;
    size_multiplier = 1.0f;
    photon_radius = 50.0f;
    photon_emit_distance = 150.0f;
    ozone = 0.35f;
    photonSubdivs = 500;
    causticSubdivs = 1000;
    shadow_subdivs = 8;
    shadows = true;
    enabled = false;
    skyId = newUuidText();
    transform.reset();
}

std::u16string SkyTexture::sunId() const {
    const auto* light = dynamic_cast<const SunLight*>(sun.get());
    return light ? light->sunId : std::u16string();
}

bool SkyTexture::hasSun() const { return sun && sun->getType() == kSunLightType; }

bool SkyTexture::usesDefaultSun() const {
    return hasSun() && equalsIgnoreCase(sunId(), defaultSunLight()->sunId);
}

void SkyTexture::writeFields(QuickArchive& archive) const {
    archive.write(up_vector);
    for (float f : {shadowBias, turbidity, water_vapour, intensity_multiplier, size_multiplier,
                    photon_radius, photon_emit_distance, ozone}) {
        archive.write(f);
    }
    for (int32_t i : {photonSubdivs, causticSubdivs, shadow_subdivs}) archive.write(i);
    archive.write(shadows);
    archive.write(enabled);
    archive.write(skyId);
}

void SkyTexture::readFields(QuickArchive& archive) {
    archive.read(up_vector);
    for (float* f : {&shadowBias, &turbidity, &water_vapour, &intensity_multiplier,
                     &size_multiplier, &photon_radius, &photon_emit_distance, &ozone}) {
        archive.read(*f);
    }
    for (int32_t* i : {&photonSubdivs, &causticSubdivs, &shadow_subdivs}) archive.read(*i);
    archive.read(shadows);
    archive.read(enabled);
    archive.read(skyId);
}

// The sun's data follows whenever a sun is held; the sky only ever holds sun lights.
bool SkyTexture::serialize(QuickArchive& archive) {
    writeVersion(archive, kNewestVersion);
    archive.write(hasSun());
    if (sun && !sun->serialize(archive)) return false;
    writeFields(archive);
    if (!transform.serialize(archive)) return false;
    if (!defaultSunLight()->serialize(archive)) return false;
    archive.write(usesDefaultSun());
    return true;
}

bool SkyTexture::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readTextureVersion(archive, *this, kNewestVersion, major)) return false;
    bool present = false;
    archive.read(present);
    if (present) {
        // No id is stored: the sun's data follows the flag directly. The new sun takes the
        // slot before it reads, as every optional child does.
        if (!readChildInPlace(archive, kSunLightType, archive.readPos(), createLight, sun)) {
            return false;
        }
    }
    if (major == 1) return true;
    if (major == 2) {
        // Before the curve, the placement was one plain transform.
        Transform placement;
        archive.read(placement);
        transform.setValue(placement, 0.0);
        readFields(archive);
        return true;
    }
    readFields(archive);
    if (!transform.deserialize(archive)) return false;
    if (!defaultSunLight()->deserialize(archive)) return false;
    bool usesDefault = false;
    archive.read(usesDefault);
    if (usesDefault) sun = defaultSunLight();
    return true;
}

void SkyTexture::cloneChildren() { sun = cloneChild(sun); }

bool SkyTexture::sameAs(const SkyTexture& o) const {
    return sameChild(sun, o.sun) && sameVector(up_vector, o.up_vector) &&
           sameFloat(shadowBias, o.shadowBias) && sameFloat(turbidity, o.turbidity) &&
           sameFloat(water_vapour, o.water_vapour) &&
           sameFloat(intensity_multiplier, o.intensity_multiplier) &&
           sameFloat(size_multiplier, o.size_multiplier) &&
           sameFloat(photon_radius, o.photon_radius) &&
           sameFloat(photon_emit_distance, o.photon_emit_distance) && sameFloat(ozone, o.ozone) &&
           photonSubdivs == o.photonSubdivs && causticSubdivs == o.causticSubdivs &&
           shadow_subdivs == o.shadow_subdivs && shadows == o.shadows && enabled == o.enabled &&
           skyId == o.skyId && transform.sameKeys(o.transform);
}

// Writes the sun at the document's root, once per writer, and gives the URL to refer to it by.
std::u16string SkyTexture::sunReference(AssetXmlWriter& writer) {
    const std::u16string id = sunId();
    if (writer.targetHost == 0) {
        if (sun) sun->writeXML(writer, u"");
        const auto written = writer.sunUrls.find(id);
        return written != writer.sunUrls.end() ? written->second : u"/SunLight";
    }
    // Other hosts keep a document sun of their own in place of the default one.
    if (sun && equalsIgnoreCase(id, kDefaultSunId)) {
        sun->writeXML(writer, u"");
        return u"/Rhino Document Sun";
    }
    const auto entry = writer.sunUrls.find(id);
    return entry != writer.sunUrls.end() ? entry->second : u"/" + id;
}

int SkyTexture::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    const std::u16string sunUrl = sunReference(writer);
    beginAssetFrame(writer, url, pluginType(), pluginKind());
    writer.writePlugin("sun", sun, sunUrl);
    endAssetFrame(writer);
    return 0;
}

}  // namespace CorvaneCore
