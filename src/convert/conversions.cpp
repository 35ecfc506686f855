#include "convert/conversions.h"

#include "lights/base_light.h"
#include "materials/base_material.h"
#include "upgrade/mtl_converter.h"
#include "xml/asset_xml_writer.h"
#include "xml/text.h"

namespace CorvaneCore {

namespace {
constexpr int32_t kLastMaterialType = 14;
constexpr int32_t kLastLightType = 7;
constexpr int32_t kLightTypeWithoutClass = 1;
}  // namespace

std::optional<std::string> convertLight(QuickArchive& archive, int32_t type) {
    if (type < 0 || type > kLastLightType || type == kLightTypeWithoutClass) return std::nullopt;
    std::shared_ptr<BaseLight> light = createLight(type);
    if (!light || !light->deserialize(archive)) return std::nullopt;
    std::wstring text;
    AssetXmlWriter writer(text);
    writer.targetHost = 0;
    light->writeXML(writer, std::wstring());
    return wideToUtf8(text);
}

std::optional<std::string> convertMaterial(QuickArchive& archive, int32_t type) {
    if (type < 0 || type > kLastMaterialType) return std::nullopt;
    std::shared_ptr<BaseMaterial> material = createMaterial(type);
    if (!material || !material->deserialize(archive)) return std::nullopt;
    std::wstring text;
    AssetXmlWriter writer(text);
    writer.targetHost = 0;
    MtlCORVANEConverter converter(material);
    converter.writeXML(writer, std::wstring());
    return wideToUtf8(text);
}

std::string optionsDocument() {
    std::wstring text;
    AssetXmlWriter writer(text);
    writer.targetHost = 0;
    writer.openAssets();
    writer.closeAssets();
    return wideToUtf8(text);
}

bool readSceneRecord(QuickArchive&) {
    // The stored scene record has no reader yet: every record is refused.
    return false;
}

}  // namespace CorvaneCore
