#include "materials/wrappers_xml.h"

namespace CorvaneCore {

std::u16string beginWrapperBlock(AssetXmlWriter& writer, BaseMaterial& wrapper, std::u16string url,
                                 NamedChildren children, TextureSlots textures) {
    url += u"/" + wrapper.name;
    for (const NamedChild& child : children) writeChildMaterial(writer, child.material, url);
    writeSlotChildren(writer, url, textures);
    beginAssetFrame(writer, url, wrapper);
    return url;
}

void beginWrapperParameters(AssetXmlWriter& writer, BaseMaterial& wrapper, std::u16string url,
                            NamedChildren children, TextureSlots textures) {
    url = beginWrapperBlock(writer, wrapper, url, children, textures);
    writeChildParameters(writer, url, children);
    writeSlotParameters(writer, url, textures);
}

void writeChildParameters(AssetXmlWriter& writer, const std::u16string& url,
                          NamedChildren children) {
    for (const NamedChild& child : children) {
        writeMaterialParameter(writer, child.parameter, child.material, url);
    }
}

}  // namespace CorvaneCore
