// Bitmap textures: the image buffer, the texture that places it, and the display words of the
// texture family.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "archive/quick_archive.h"
#include "textures/base_texture.h"
#include "textures/base_uvw.h"
#include "textures/family_helpers.h"

namespace CorvaneCore {

class BitmapBuffer : public BaseBitmap {
public:
    int32_t filter_type = 1;  // index into kFilterTypeWords
    float filter_blur = 0.15f;
    float gamma = 1.0f;
    std::u16string file;

    BitmapBuffer() { setDefaults(); }
    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    int getType() override { return 0; }
    std::shared_ptr<BaseBitmap> clone() override;
    bool isEqual(const std::shared_ptr<BaseBitmap>& other) override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"BitmapBuffer"; }
};

class BitmapTexture : public TextureClass<BitmapTexture> {
public:
    std::shared_ptr<BaseUVW> uvwgen;
    std::shared_ptr<BaseBitmap> bitmap;
    bool tile = true;

    BitmapTexture() { setDefaults(); }
    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    int getType() override { return 0; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexBitmap"; }

    void cloneChildren();
    bool sameAs(const BitmapTexture& other) const;
};

// A bitmap texture for a bare file path, as old records stored them: a default channel
// generator and a buffer holding `path`. An empty path gives no texture.
std::shared_ptr<BaseTexture> makeBitmapTexture(const std::u16string& path);

// Display words for the plug-in's interface; nothing in the conversions reads them.
extern const std::map<int32_t, std::u16string> kTextureTypeWords;  // by texture type id
extern const std::map<int32_t, std::u16string> kFilterTypeWords;   // by BitmapBuffer::filter_type

}  // namespace CorvaneCore
