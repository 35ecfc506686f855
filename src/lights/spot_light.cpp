#include "lights/spot_light.h"

#include "lights/light_fields.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

void SpotLight::setDefaults() {
    color = Color(1, 1, 1);
    shadowColor = Color(0, 0, 0);
    cutoffThreshold = 0.005f;
    barnDoorLeft = 20.0f;
    barnDoorRight = 20.0f;
    barnDoorTop = 20.0f;
    barnDoorBottom = 20.0f;
    shadowBias = 0.0f;
    decay = 0.0f;
    intensity = 50.0f;
    carriedScale = 1.0f;
    units = 0;
    photonSubdivs = 500;
    causticSubdivs = 1000;
    carriedMode = 3;
    enabled = true;
    barnDoor = false;
    shadows = true;
    shadowSubdivs = 8;
    shadowRadius = 0.0f;
    transform = Transform::identity();
    coneAngle = 1.0f;
    penumbraAngle = 0.0f;
    affectDiffuse = true;
    affectSpecular = true;
}

int SpotLight::writeXML(AssetXmlWriter& writer, std::u16string name) {
    name += u"/" + pluginType();
    beginLightXml(writer, name, *this);
    writer.writeColor("color", color);
    writer.writeColor("shadowColor", shadowColor);
    writer.writeFloat("cutoffThreshold", cutoffThreshold);
    writer.writeFloat("barnDoorLeft", barnDoorLeft);
    writer.writeFloat("barnDoorRight", barnDoorRight);
    writer.writeFloat("barnDoorTop", barnDoorTop);
    writer.writeFloat("barnDoorBottom", barnDoorBottom);
    writer.writeFloat("shadowBias", shadowBias);
    writer.writeFloat("decay", decay);
    writer.writeFloat("intensity", intensity);
    writer.writeFloat("shadowRadius", shadowRadius);
    writer.writeFloat("coneAngle", coneAngle);
    writer.writeFloat("penumbraAngle", penumbraAngle);
    writer.writeInteger("units", units);
    writer.writeInteger("photonSubdivs", static_cast<int32_t>(photonSubdivs));
    writer.writeInteger("causticSubdivs", static_cast<int32_t>(causticSubdivs));
    writer.writeInteger("shadowSubdivs", static_cast<int32_t>(shadowSubdivs));
    writer.writeBool("enabled", enabled);
    writer.writeBool("barnDoor", barnDoor);
    writer.writeBool("shadows", shadows);
    writer.writeBool("affectDiffuse", affectDiffuse);
    writer.writeBool("affectSpecular", affectSpecular);
    writer.writeTransform("transform", transform);
    // Constant: marks a spot that came from an old record. The one labelled user-data flag.
    writer.writeBool("legacyMode", true, "Legacy Mode", true);
    endLightXml(writer);
    return 0;
}

}  // namespace CorvaneCore
