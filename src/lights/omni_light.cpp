#include "lights/omni_light.h"

#include "lights/light_fields.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

void OmniLight::setDefaults() { resetPointEmitter(30.0f); }

int OmniLight::writeXML(AssetXmlWriter& writer, std::u16string name) {
    name += u"/" + pluginType();
    beginAssetFrame(writer, name, *this);
    writeEmitterHead(writer);
    writeFalloff(writer);
    // Kept as it always was: the units go out under this name, ahead of the real caustic
    // subdivisions, and there is no "units" parameter for this light.
    writer.writeInteger("causticSubdivs", units);
    writeSubdivs(writer);
    writer.writeBool("enabled", enabled);
    writer.writeBool("shadows", shadows);
    writer.writeBool("affectDiffuse", affectDiffuse);
    writer.writeBool("affectSpecular", affectSpecular);
    writer.writeTransform("transform", transform);
    endAssetFrame(writer);
    return 0;
}

}  // namespace CorvaneCore
