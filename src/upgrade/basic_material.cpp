#include "upgrade/basic_material.h"

#include "materials/brdf.h"
#include "textures/procedural.h"
#include "textures/texture.h"
#include "textures/uvw.h"

using namespace CorvaneCore;

namespace {

// A channel generator and a buffer of the record's file, even an empty one: unlike the old
// material layouts, the record asks for a bitmap whenever its type says so.
std::shared_ptr<BaseTexture> recordBitmap(const BasicMaterialRecord& record) {
    auto buffer = std::make_shared<BitmapBuffer>();
    buffer->file = record.texture;
    auto bitmap = std::make_shared<BitmapTexture>();
    bitmap->uvwgen = createUVW(4);
    bitmap->bitmap = buffer;
    return bitmap;
}

std::shared_ptr<BaseTexture> recordTexture(const BasicMaterialRecord& record) {
    std::shared_ptr<BaseTexture> bitmap = recordBitmap(record);
    if (record.type != BasicMaterialRecord::kBitmapBlendedWithColor) return bitmap;
    auto blend = std::make_shared<BlendTexture>();
    blend->color_a = bitmap;
    blend->color_b = std::make_shared<AColorTexture>(
        AColor(record.color.r, record.color.g, record.color.b, 1.0f));
    return blend;
}

std::shared_ptr<Diffuse_BRDF> diffuseLayer(const BasicMaterialRecord& record) {
    auto layer = std::make_shared<Diffuse_BRDF>();
    layer->name = u"Diffuse";
    layer->color = record.color;
    layer->layerFlagB = record.flagB;
    if (record.use_alpha) {
        const float t = 1.0f - record.alpha;
        layer->transparency = Color(t, t, t);
    }
    if (record.type == BasicMaterialRecord::kBitmapOnly ||
        record.type == BasicMaterialRecord::kBitmapBlendedWithColor) {
        layer->color_tex = recordTexture(record);
    }
    return layer;
}

std::shared_ptr<MaterialLayeredBRDF> fill(const BasicMaterialRecord& record,
                                          const std::shared_ptr<Base_BRDF>& mirror,
                                          const std::shared_ptr<Base_BRDF>& diffuse,
                                          const std::shared_ptr<Base_BRDF>& glass) {
    MaterialLayeredBRDF material;
    if (record.use_alpha) material.brdfs.push_back(mirror->clone());
    material.brdfs.push_back(diffuse->clone());
    if (record.use_alpha) material.brdfs.push_back(glass->clone());
    return std::make_shared<MaterialLayeredBRDF>(material);
}

}  // namespace

LayeredPair materialToLayered(const BasicMaterialRecord& record) {
    const std::shared_ptr<Diffuse_BRDF> frontDiffuse = diffuseLayer(record);
    const std::shared_ptr<Diffuse_BRDF> backDiffuse = diffuseLayer(record);
    auto mirror = std::make_shared<Mirror_BRDF>();
    mirror->name = u"Reflection";
    auto glass = std::make_shared<Glass_BRDF>();
    glass->name = u"Refraction";
    if (record.use_alpha) {
        glass->color = Color(1.0f, 1.0f, 1.0f);
        glass->affect_shadows = 1;
        glass->affect_alpha = 1;
    }
    return {fill(record, mirror, frontDiffuse, glass), fill(record, mirror, backDiffuse, glass)};
}
