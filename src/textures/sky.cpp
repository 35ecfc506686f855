#include "textures/sky.h"

#include "archive/field_list.h"
#include "archive/read_helpers.h"
#include "lights/sun_light.h"
#include "xml/text.h"

namespace CorvaneCore {

void SkyTexture::setDefaults() {
    sun = defaultSunLight();
    setSunDefaults();
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

// The sun's data follows whenever a sun is held; the sky only ever holds sun lights.
bool SkyTexture::serialize(QuickArchive& archive) {
    writeVersion(archive, kNewestVersion);
    archive.write(hasSun());
    if (sun && !sun->serialize(archive)) return false;
    writeListedFields(archive, *this);
    if (!transform.serialize(archive)) return false;
    if (!defaultSunLight()->serialize(archive)) return false;
    archive.write(usesDefaultSun());
    return true;
}

// No id is stored: the sun's data follows the flag directly. The new sun takes the slot before
// it reads, as every optional child does.
bool SkyTexture::readSun(QuickArchive& archive) {
    bool present = false;
    archive.read(present);
    if (!present) return true;
    return readChildInPlace(archive, kSunLightType, archive.readPos(), createLight, sun);
}

// What only version 3 stores behind the listed block: the curve, the shared default sun, and
// whether this sky uses that sun.
bool SkyTexture::readNewestTail(QuickArchive& archive) {
    if (!transform.deserialize(archive)) return false;
    if (!defaultSunLight()->deserialize(archive)) return false;
    bool usesDefault = false;
    archive.read(usesDefault);
    if (usesDefault) sun = defaultSunLight();
    return true;
}

bool SkyTexture::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readTextureVersion(archive, *this, kNewestVersion, major)) return false;
    if (!readSun(archive)) return false;
    if (major == 1) return true;
    if (major == 2) {
        // Before the curve, the placement was one plain transform ahead of the block.
        Transform placement;
        archive.read(placement);
        transform.setValue(placement, 0.0);
        readListedFields(archive, major, *this);
        return true;
    }
    readListedFields(archive, major, *this);
    return readNewestTail(archive);
}

void SkyTexture::deepenUnlisted() { deepenField(sun); }

bool SkyTexture::sameUnlisted(const SkyTexture& o) const {
    return sameField(sun, o.sun) && transform.sameKeys(o.transform);
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
    beginAssetFrame(writer, url, *this);
    writer.writePlugin("sun", sun, sunUrl);
    endAssetFrame(writer);
    return 0;
}

}  // namespace CorvaneCore
