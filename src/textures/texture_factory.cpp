#include "textures/procedural.h"
#include "textures/sky.h"
#include "textures/texture.h"

namespace CorvaneCore {

const std::map<int32_t, std::wstring> kTextureTypeWords = {
    {0, L"Bitmap"}, {1, L"Fresnel"}, {2, L"UVW"},   {3, L"Noise"}, {4, L"Checker"},
    {5, L"AColor"}, {6, L"Grid"},    {7, L"Cloth"}, {8, L"Bulge"}, {9, L"Invert"},
    {10, L"Blend"}, {11, L"Ramp"},   {12, L"Sky"}};

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
