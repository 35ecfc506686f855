#include "lights/ies_light.h"

#include "lights/light_fields.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

void IESLight::setDefaults() {
    transform = Transform::identity();
    color = Color(1, 1, 1);
    shadowColor = Color(0, 0, 0);
    filter_color = Color(1, 1, 1);
    shadowBias = 0.0f;
    cutoffThreshold = 0.005f;
    photonSubdivs = 8;  // not the 500 of the other lights, on purpose
    causticSubdivs = 1000;
    shadow_subdivs = 8;
    enabled = true;
    shadows = true;
    soft_shadows = false;
    ies_file.clear();
    affectDiffuse = true;
    affectSpecular = true;
    intensity = 1.0f;
}

int IESLight::writeXML(AssetXmlWriter& writer, std::u16string name) {
    name += u"/" + pluginType();
    beginAssetFrame(writer, name, *this);
    writer.writeTransform("transform", transform);
    writer.writeColor("color", color);
    writer.writeColor("shadowColor", shadowColor);
    writer.writeColor("filter_color", filter_color);
    writer.writeFloat("shadowBias", shadowBias);
    writer.writeFloat("cutoffThreshold", cutoffThreshold);
    writer.writeFloat("intensity", intensity);
    writer.writeInteger("photonSubdivs", static_cast<int32_t>(photonSubdivs));
    writer.writeInteger("causticSubdivs", static_cast<int32_t>(causticSubdivs));
    writer.writeInteger("shadow_subdivs", static_cast<int32_t>(shadow_subdivs));
    writer.writeBool("enabled", enabled);
    writer.writeBool("shadows", shadows);
    writer.writeBool("soft_shadows", soft_shadows);
    writer.writeBool("affectDiffuse", affectDiffuse);
    writer.writeBool("affectSpecular", affectSpecular);
    writer.writeFile(u"ies_file", ies_file);
    endAssetFrame(writer);
    return 0;
}

}  // namespace CorvaneCore
