#include "lights/light_fields.h"

#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

void beginLightXml(AssetXmlWriter& writer, const std::u16string& url, BaseLight& light) {
    writer.beginAsset(url, light.pluginKind(), std::u16string());
    writer.beginPlugin(light.pluginType(), light.pluginKind());
    writer.beginParameters();
}

void endLightXml(AssetXmlWriter& writer) {
    writer.endParameters();
    writer.endPlugin();
    writer.endAsset();
}

}  // namespace CorvaneCore
