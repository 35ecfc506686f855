#include "lights/spot_light.h"

#include "lights/light_fields.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

void SpotLight::setDefaults() {
    resetPointEmitter(50.0f);
    barnDoorLeft = 20.0f;
    barnDoorRight = 20.0f;
    barnDoorTop = 20.0f;
    barnDoorBottom = 20.0f;
    barnDoor = false;
    coneAngle = 1.0f;
    penumbraAngle = 0.0f;
}

int SpotLight::writeXML(AssetXmlWriter& writer, std::u16string name) {
    name += u"/" + pluginType();
    beginAssetFrame(writer, name, *this);
    writeEmitterHead(writer);
    writer.writeFloat("barnDoorLeft", barnDoorLeft);
    writer.writeFloat("barnDoorRight", barnDoorRight);
    writer.writeFloat("barnDoorTop", barnDoorTop);
    writer.writeFloat("barnDoorBottom", barnDoorBottom);
    writeFalloff(writer);
    writer.writeFloat("coneAngle", coneAngle);
    writer.writeFloat("penumbraAngle", penumbraAngle);
    writer.writeInteger("units", units);
    writeSubdivs(writer);
    writer.writeBool("enabled", enabled);
    writer.writeBool("barnDoor", barnDoor);
    writer.writeBool("shadows", shadows);
    writer.writeBool("affectDiffuse", affectDiffuse);
    writer.writeBool("affectSpecular", affectSpecular);
    writer.writeTransform("transform", transform);
    // Constant: marks a spot that came from an old record. The one labelled user-data flag.
    writer.writeBool("legacyMode", true, "Legacy Mode", true);
    endAssetFrame(writer);
    return 0;
}

}  // namespace CorvaneCore
