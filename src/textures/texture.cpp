#include "textures/texture.h"

#include "archive/compare.h"
#include "archive/read_helpers.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

const std::map<int32_t, std::u16string> kFilterTypeWords = {
    {0, u"No filter"}, {1, u"Mip-map"}, {2, u"Summed-area"}};

// ---------------------------------------------------------------- BitmapBuffer

void BitmapBuffer::setDefaults() {
    filter_type = 1;
    filter_blur = 0.15f;
    gamma = 1.0f;
    file.clear();
}

bool BitmapBuffer::deserialize(QuickArchive& archive) {
    setDefaults();
    uint32_t major = 0;
    if (!readVersionIn(archive, 1, kNewestVersion, major)) return false;
    return readListedFields(archive, major, *this);
}

int BitmapBuffer::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    beginAssetFrame(writer, url, *this);
    writer.writeInteger("filter_type", filter_type);
    writer.writeFloat("filter_blur", filter_blur);
    writer.writeFloat("gamma", gamma);
    writer.writeFile(u"file", file);
    endAssetFrame(writer);
    return 0;
}

// ---------------------------------------------------------------- BitmapTexture

void BitmapTexture::setDefaults() {
    uvwgen.reset();
    bitmap.reset();
    tile = true;
}

// The image's asset lives under "buffer" while the parameter that refers to it is "bitmap".
int BitmapTexture::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    beginFrameAfterChildren(writer, url, *this,
                            {{"uvwgen", uvwgen, u"uvwgen"}, {"bitmap", bitmap, u"buffer"}});
    writer.writeBool("tile", tile);
    endAssetFrame(writer);
    return 0;
}

std::shared_ptr<BaseTexture> makeBitmapTexture(const std::u16string& path) {
    if (path.empty()) return nullptr;
    auto buffer = std::dynamic_pointer_cast<BitmapBuffer>(createBitmap(0));
    auto texture = std::dynamic_pointer_cast<BitmapTexture>(createTexture(0));
    if (!buffer || !texture) return nullptr;
    buffer->file = path;
    texture->uvwgen = createUVW(4);
    texture->bitmap = buffer;
    return texture;
}

}  // namespace CorvaneCore
