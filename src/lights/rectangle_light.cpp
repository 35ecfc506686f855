#include "lights/rectangle_light.h"

#include "lights/light_fields.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

void RectangleLight::setDefaults() {
    resetEmitter(30.0f);
    subdivs = 8;
    doubleSided = false;
    invisible = false;
    lightPortal = false;
    noDecay = false;
    storeWithIrradianceMap = false;
    ignoreLightNormals = true;
    u_size = 1.0f;
    v_size = 1.0f;
    affectReflections = true;
}

int RectangleLight::writeXML(AssetXmlWriter& writer, std::u16string name) {
    name += u"/" + pluginType();
    beginAssetFrame(writer, name, *this);
    writeEmitterHead(writer);
    writer.writeFloat("shadowBias", shadowBias);
    writer.writeFloat("intensity", intensity);
    writer.writeFloat("u_size", u_size);
    writer.writeFloat("v_size", v_size);
    writer.writeInteger("units", units);
    writer.writeInteger("photonSubdivs", static_cast<int32_t>(photonSubdivs));
    writer.writeInteger("causticSubdivs", static_cast<int32_t>(causticSubdivs));
    writer.writeInteger("subdivs", static_cast<int32_t>(subdivs));
    writer.writeBool("enabled", enabled);
    writer.writeBool("doubleSided", doubleSided);
    writer.writeBool("invisible", invisible);
    writer.writeBool("lightPortal", lightPortal);
    writer.writeBool("noDecay", noDecay);
    writer.writeBool("storeWithIrradianceMap", storeWithIrradianceMap);
    writer.writeBool("ignoreLightNormals", ignoreLightNormals);
    writer.writeBool("shadows", shadows);
    writer.writeBool("affectDiffuse", affectDiffuse);
    writer.writeBool("affectSpecular", affectSpecular);
    writer.writeBool("affectReflections", affectReflections);
    writer.writeTransform("transform", transform);
    endAssetFrame(writer);
    return 0;
}

}  // namespace CorvaneCore
