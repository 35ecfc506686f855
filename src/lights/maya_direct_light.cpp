#include "lights/maya_direct_light.h"

#include "lights/light_fields.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

void MayaDirectLight::setDefaults() {
    color = Color(1, 1, 1);
    shadowColor = Color(0, 0, 0);
    shadowBias = 0.0f;
    intensity = 1.0f;
    carriedScale = 1.0f;
    causticSubdivs = 1000;
    photonSubdivs = 500;
    carriedMode = 3;
    enabled = true;
    shadows = true;
    shadowSubdivs = 8;
    shadowRadius = 0.0f;
    transform.reset();
}

bool MayaDirectLight::serialize(QuickArchive& archive) {
    writeFields(archive);
    return transform.serialize(archive);
}

// The placement follows the listed fields: none in version 1, a plain transform in version 2,
// the curve from version 3 on.
bool MayaDirectLight::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readFields(archive, major)) return false;
    switch (major) {
        case 1:
            return true;
        case 2:
            readPlainTransform(archive);
            return true;
        default:
            return transform.deserialize(archive);
    }
}

void MayaDirectLight::readPlainTransform(QuickArchive& archive) {
    Transform plain;
    archive.read(plain);
    transform.setValue(plain, 0.0);
}

int MayaDirectLight::writeXML(AssetXmlWriter& writer, std::u16string name) {
    name += u"/" + pluginType();
    beginAssetFrame(writer, name, *this);
    writer.writeColor("color", color);
    writer.writeColor("shadowColor", shadowColor);
    writer.writeFloat("shadowBias", shadowBias);
    writer.writeFloat("shadowRadius", shadowRadius);
    writer.writeFloat("intensity", intensity);
    writer.writeInteger("causticSubdivs", static_cast<int32_t>(causticSubdivs));
    writer.writeInteger("photonSubdivs", static_cast<int32_t>(photonSubdivs));
    writer.writeInteger("shadowSubdivs", static_cast<int32_t>(shadowSubdivs));
    writer.writeBool("enabled", enabled);
    writer.writeBool("shadows", shadows);
    endAssetFrame(writer);
    return 0;
}

}  // namespace CorvaneCore
