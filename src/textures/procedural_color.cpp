// Textures that produce or mix colours: Fresnel, AColor, Invert and Blend.
#include "archive/compare.h"
#include "archive/read_helpers.h"
#include "textures/procedural.h"

namespace CorvaneCore {

namespace {

// One minus the component, never below zero; a NaN becomes zero as well.
float inverted(float component) {
    const float value = 1.0f - component;
    return value >= 0.0f ? value : 0.0f;
}

Color inverted(const Color& c) { return Color(inverted(c.r), inverted(c.g), inverted(c.b)); }

}  // namespace

// ---------------------------------------------------------------- FresnelTexture

void FresnelTexture::setDefaults() {
    frontColor = Color(1.0f, 1.0f, 1.0f);
    const float grey = 65.0f / 255.0f;
    sideColor = Color(grey, grey, grey);
    fresnel_ior = 1.55f;
    refract_ior = 1.55f;
    black_color_tex_mult = 1.0f;
    white_color_tex_mult = 1.0f;
    fresnel_ior_tex_mult = 1.0f;
    refract_ior_tex_mult = 1.0f;
    black_color_tex.reset();
    white_color_tex.reset();
    fresnel_ior_tex.reset();
    refract_ior_tex.reset();
}

// The colour textures' assets live under "reflection_tex" and "refraction_tex", while their
// parameters keep the colour names.
int FresnelTexture::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    const std::initializer_list<ChildAsset> children = {
        {"black_color_tex", black_color_tex, u"reflection_tex"},
        {"white_color_tex", white_color_tex, u"refraction_tex"},
        {"fresnel_ior_tex", fresnel_ior_tex, u"fresnel_ior_tex"},
        {"refract_ior_tex", refract_ior_tex, u"refract_ior_tex"},
    };
    writeChildAssets(writer, url, children);
    beginAssetFrame(writer, url, *this);
    writer.writeColor("white_color", inverted(frontColor));
    writer.writeColor("black_color", inverted(sideColor));
    writer.writeFloat("fresnel_ior", fresnel_ior);
    writer.writeFloat("refract_ior", refract_ior);
    writer.writeFloat("black_color_tex_mult", black_color_tex_mult);
    writer.writeFloat("white_color_tex_mult", white_color_tex_mult);
    writer.writeFloat("fresnel_ior_tex_mult", fresnel_ior_tex_mult);
    writer.writeFloat("refract_ior_tex_mult", refract_ior_tex_mult);
    writeChildReferences(writer, url, children);
    endAssetFrame(writer);
    return 0;
}

// ---------------------------------------------------------------- AColorTexture

void AColorTexture::setDefaults() { texture = AColor(1.0f, 1.0f, 1.0f, 1.0f); }

int AColorTexture::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    beginAssetFrame(writer, url, *this);
    writer.writeAColor("texture", texture);
    endAssetFrame(writer);
    return 0;
}

// ---------------------------------------------------------------- InvertTexture

void InvertTexture::setDefaults() {
    texture.reset();
    invert_alpha = false;
}

// The child's asset lives under "base_texture"; the parameter is "texture".
int InvertTexture::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    beginFrameAfterChildren(writer, url, *this, {{"texture", texture, u"base_texture"}});
    writer.writeBool("invert_alpha", invert_alpha);
    endAssetFrame(writer);
    return 0;
}

// ---------------------------------------------------------------- BlendTexture

void BlendTexture::setDefaults() {
    color_a.reset();
    colorAMult = 1.0f;
    color_b.reset();
    colorBMult = 1.0f;
    blend_amount = 0.5f;
}

int BlendTexture::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    beginFrameAfterChildren(writer, url, *this,
                            {{"color_a", color_a, u"color_a"}, {"color_b", color_b, u"color_b"}});
    writer.writeFloat("blend_amount", blend_amount);
    endAssetFrame(writer);
    return 0;
}

}  // namespace CorvaneCore
