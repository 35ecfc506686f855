// The layers' links to concrete texture classes: bitmaps for old path slots, and the fresnel
// texture that replaced the old fresnel fields.
#include "materials/brdf_slots.h"
#include "textures/procedural.h"
#include "textures/texture.h"

namespace CorvaneCore {

TexturePtr textureFromPath(const std::u16string& path) { return makeBitmapTexture(path); }

TexturePtr newFresnelTexture() { return std::make_shared<FresnelTexture>(); }

void applyOldFresnel(const OldFresnelFields& fresnel, TexturePtr& slot) {
    if (fresnel.on == 0) return;
    auto texture = std::make_shared<FresnelTexture>();
    texture->fresnel_ior = fresnel.ior;
    slot = texture;
}

}  // namespace CorvaneCore
