#include "textures/procedural.h"
#include "textures/sky.h"
#include "textures/texture.h"

namespace CorvaneCore {

const std::map<int32_t, std::u16string> kTextureTypeWords = {
    {0, u"Bitmap"}, {1, u"Fresnel"}, {2, u"UVW"},   {3, u"Noise"}, {4, u"Checker"},
    {5, u"AColor"}, {6, u"Grid"},    {7, u"Cloth"}, {8, u"Bulge"}, {9, u"Invert"},
    {10, u"Blend"}, {11, u"Ramp"},   {12, u"Sky"}};

// -1 stands for "no texture" in stored records and, like any unknown id, gives none.
std::shared_ptr<BaseTexture> createTexture(int id) {
    switch (id) {
        case 0:
            return std::make_shared<BitmapTexture>();
        case 1:
            return std::make_shared<FresnelTexture>();
        case 2:
            return std::make_shared<UVWTexture>();
        case 3:
            return std::make_shared<NoiseTexture>();
        case 4:
            return std::make_shared<CheckerTexture>();
        case 5:
            return std::make_shared<AColorTexture>();
        case 6:
            return std::make_shared<GridTexture>();
        case 7:
            return std::make_shared<ClothTexture>();
        case 8:
            return std::make_shared<BulgeTexture>();
        case 9:
            return std::make_shared<InvertTexture>();
        case 10:
            return std::make_shared<BlendTexture>();
        case 11:
            return std::make_shared<RampTexture>();
        case 12:
            return std::make_shared<SkyTexture>();
        default:
            return nullptr;
    }
}

}  // namespace CorvaneCore
