#include "archive/type_factory.h"
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
    return makeByType<BaseTexture, BitmapTexture, FresnelTexture, UVWTexture, NoiseTexture,
                      CheckerTexture, AColorTexture, GridTexture, ClothTexture, BulgeTexture,
                      InvertTexture, BlendTexture, RampTexture, SkyTexture>(id);
}

}  // namespace CorvaneCore
