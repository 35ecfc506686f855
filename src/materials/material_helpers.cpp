#include "materials/material_helpers.h"

#include "archive/read_helpers.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

bool readMaterialSlot(QuickArchive& archive, MaterialPtr& slot) {
    return readOptionalChild<BaseMaterial>(archive, slot, &createMaterial);
}

bool writeMaterialSlot(QuickArchive& archive, const MaterialPtr& material) {
    return writeOptionalChild(archive, material);
}

bool readBareMaterial(QuickArchive& archive, MaterialPtr& slot) {
    return readRequiredChild<BaseMaterial>(archive, slot, &createMaterial);
}

bool writeBareMaterial(QuickArchive& archive, const MaterialPtr& material) {
    return writeRequiredChild(archive, material);
}

void writeChildMaterial(AssetXmlWriter& writer, const MaterialPtr& child,
                        const std::u16string& url) {
    if (child) child->writeXML(writer, url);
}

void writeMaterialParameter(AssetXmlWriter& writer, const char* name, const MaterialPtr& child,
                            const std::u16string& url) {
    writer.writePlugin(name, PluginRef(child), url);
}

}  // namespace CorvaneCore
