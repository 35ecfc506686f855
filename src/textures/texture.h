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
#include "textures/child_slots.h"
#include "textures/family_helpers.h"

namespace CorvaneCore {

// Unlike the textures it returns to its defaults before it reads its version word.
class BitmapBuffer : public ListedFamilyClass<BitmapBuffer, BaseBitmap> {
public:
    static constexpr uint32_t kNewestVersion = 1;
    static constexpr bool kChecksChildrenFirst = false;

    int32_t filter_type;  // index into kFilterTypeWords
    float filter_blur;
    float gamma;
    std::u16string file;

    BitmapBuffer() { setDefaults(); }
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    static constexpr int kType = 0;
    int getType() override { return kType; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"BitmapBuffer"; }

    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        fn(1, s.filter_type...);
        fn(1, s.filter_blur...);
        fn(1, s.gamma...);
        fn(1, s.file...);
    }
};

// The ids of both children stand together ahead of their data.
class BitmapTexture : public TextureClass<BitmapTexture> {
public:
    static constexpr uint32_t kNewestVersion = 1;
    static constexpr bool kChecksChildrenFirst = true;

    std::shared_ptr<BaseUVW> uvwgen;
    std::shared_ptr<BaseBitmap> bitmap;
    bool tile;

    BitmapTexture() { setDefaults(); }
    void setDefaults() override;
    static constexpr int kType = 0;
    int getType() override { return kType; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexBitmap"; }

    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        visitSlot(fn, 1, mandatoryPair(s.uvwgen, s.bitmap)...);
        fn(1, s.tile...);
    }
};

// A bitmap texture for a bare file path, as old records stored them: a default channel
// generator and a buffer holding `path`. An empty path gives no texture.
std::shared_ptr<BaseTexture> makeBitmapTexture(const std::u16string& path);

// Display words for the plug-in's interface; nothing in the conversions reads them.
extern const std::map<int32_t, std::u16string> kTextureTypeWords;  // by texture type id
extern const std::map<int32_t, std::u16string> kFilterTypeWords;   // by BitmapBuffer::filter_type

}  // namespace CorvaneCore
