#include "upgrade/mtl_converter.h"

#include "materials/material_file.h"

int MtlCORVANEConverter::writeXML(AssetXmlWriter& writer, std::u16string name) {
    name.clear();
    if (material) CorvaneCore::convertMaterialTree(writer, material);
    return 0;
}
