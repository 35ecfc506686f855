#include "lights/omni_light.h"

#include "lights/light_fields.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

void OmniLight::setDefaults() {
    color = Color(1, 1, 1);
    shadowColor = Color(0, 0, 0);
    cutoffThreshold = 0.005f;
    shadowBias = 0.0f;
    decay = 0.0f;
    intensity = 30.0f;
    carriedScale = 1.0f;
    units = 0;
    photonSubdivs = 500;
    causticSubdivs = 1000;
    carriedMode = 3;
    enabled = true;
    shadows = true;
    shadowSubdivs = 8;
    shadowRadius = 0.0f;
    transform = Transform::identity();
    affectDiffuse = true;
    affectSpecular = true;
}

int OmniLight::writeXML(AssetXmlWriter& writer, std::u16string name) {
    name += u"/" + pluginType();
    beginLightXml(writer, name, *this);
    writer.writeColor("color", color);
    writer.writeColor("shadowColor", shadowColor);
    writer.writeFloat("cutoffThreshold", cutoffThreshold);
    writer.writeFloat("shadowBias", shadowBias);
    writer.writeFloat("decay", decay);
    writer.writeFloat("intensity", intensity);
    writer.writeFloat("shadowRadius", shadowRadius);
    // Kept as it always was: the units go out under this name, ahead of the real caustic
    // subdivisions, and there is no "units" parameter for this light.
    writer.writeInteger("causticSubdivs", units);
    writer.writeInteger("photonSubdivs", static_cast<int32_t>(photonSubdivs));
    writer.writeInteger("causticSubdivs", static_cast<int32_t>(causticSubdivs));
    writer.writeInteger("shadowSubdivs", static_cast<int32_t>(shadowSubdivs));
    writer.writeBool("enabled", enabled);
    writer.writeBool("shadows", shadows);
    writer.writeBool("affectDiffuse", affectDiffuse);
    writer.writeBool("affectSpecular", affectSpecular);
    writer.writeTransform("transform", transform);
    endLightXml(writer);
    return 0;
}

}  // namespace CorvaneCore
