// The layers' links to concrete texture classes: bitmaps for old path slots, and the fresnel
// texture that replaced the old fresnel fields.
#include "materials/brdf_slots.h"
#include "textures/procedural.h"
#include "textures/texture.h"

namespace CorvaneCore {

TexturePtr textureFromPath(const std::u16string& path) { return makeBitmapTexture(path); }

TexturePtr newFresnelTexture() { return std::make_shared<FresnelTexture>(); }

TexturePtr fresnelFromOldFields(float fresnelIor) {
    auto fresnel = std::make_shared<FresnelTexture>();
    fresnel->fresnel_ior = fresnelIor;
    return fresnel;
}

}  // namespace CorvaneCore
