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

bool FresnelTexture::serialize(QuickArchive& archive) {
    writeVersion(archive, 2);
    archive.write(frontColor);
    archive.write(sideColor);
    for (float f : {fresnel_ior, refract_ior, black_color_tex_mult, white_color_tex_mult,
                    fresnel_ior_tex_mult, refract_ior_tex_mult}) {
        archive.write(f);
    }
    return writeOptionalChild(archive, black_color_tex) &&
           writeOptionalChild(archive, white_color_tex) &&
           writeOptionalChild(archive, fresnel_ior_tex) &&
           writeOptionalChild(archive, refract_ior_tex);
}

bool FresnelTexture::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readTextureVersion(archive, *this, 2, major)) return false;
    archive.read(frontColor);
    archive.read(sideColor);
    archive.read(fresnel_ior);
    archive.read(refract_ior);
    if (major < 2) return true;
    for (float* f : {&black_color_tex_mult, &white_color_tex_mult, &fresnel_ior_tex_mult,
                     &refract_ior_tex_mult}) {
        archive.read(*f);
    }
    return readOptionalChild(archive, black_color_tex, createTexture) &&
           readOptionalChild(archive, white_color_tex, createTexture) &&
           readOptionalChild(archive, fresnel_ior_tex, createTexture) &&
           readOptionalChild(archive, refract_ior_tex, createTexture);
}

void FresnelTexture::cloneChildren() {
    black_color_tex = cloneChild(black_color_tex);
    white_color_tex = cloneChild(white_color_tex);
    fresnel_ior_tex = cloneChild(fresnel_ior_tex);
    refract_ior_tex = cloneChild(refract_ior_tex);
}

bool FresnelTexture::sameAs(const FresnelTexture& o) const {
    return sameChild(black_color_tex, o.black_color_tex) &&
           sameChild(white_color_tex, o.white_color_tex) &&
           sameChild(fresnel_ior_tex, o.fresnel_ior_tex) &&
           sameChild(refract_ior_tex, o.refract_ior_tex) && sameColor(frontColor, o.frontColor) &&
           sameColor(sideColor, o.sideColor) && sameFloat(fresnel_ior, o.fresnel_ior) &&
           sameFloat(refract_ior, o.refract_ior) &&
           sameFloat(black_color_tex_mult, o.black_color_tex_mult) &&
           sameFloat(white_color_tex_mult, o.white_color_tex_mult) &&
           sameFloat(fresnel_ior_tex_mult, o.fresnel_ior_tex_mult) &&
           sameFloat(refract_ior_tex_mult, o.refract_ior_tex_mult);
}

// The colour textures' assets live under "reflection_tex" and "refraction_tex", while their
// parameters keep the colour names.
int FresnelTexture::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    const std::u16string blackUrl = url + u"/reflection_tex";
    const std::u16string whiteUrl = url + u"/refraction_tex";
    const std::u16string fresnelUrl = url + u"/fresnel_ior_tex";
    const std::u16string refractUrl = url + u"/refract_ior_tex";
    writeChildXML(writer, black_color_tex, blackUrl);
    writeChildXML(writer, white_color_tex, whiteUrl);
    writeChildXML(writer, fresnel_ior_tex, fresnelUrl);
    writeChildXML(writer, refract_ior_tex, refractUrl);

    beginAssetFrame(writer, url, pluginType(), pluginKind());
    writer.writeColor("white_color", inverted(frontColor));
    writer.writeColor("black_color", inverted(sideColor));
    writer.writeFloat("fresnel_ior", fresnel_ior);
    writer.writeFloat("refract_ior", refract_ior);
    writer.writeFloat("black_color_tex_mult", black_color_tex_mult);
    writer.writeFloat("white_color_tex_mult", white_color_tex_mult);
    writer.writeFloat("fresnel_ior_tex_mult", fresnel_ior_tex_mult);
    writer.writeFloat("refract_ior_tex_mult", refract_ior_tex_mult);
    writer.writePlugin("black_color_tex", black_color_tex, blackUrl);
    writer.writePlugin("white_color_tex", white_color_tex, whiteUrl);
    writer.writePlugin("fresnel_ior_tex", fresnel_ior_tex, fresnelUrl);
    writer.writePlugin("refract_ior_tex", refract_ior_tex, refractUrl);
    endAssetFrame(writer);
    return 0;
}

// ---------------------------------------------------------------- AColorTexture

void AColorTexture::setDefaults() { texture = AColor(1.0f, 1.0f, 1.0f, 1.0f); }

bool AColorTexture::serialize(QuickArchive& archive) {
    writeVersion(archive, 1);
    archive.write(texture);
    return true;
}

bool AColorTexture::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readTextureVersion(archive, *this, 1, major)) return false;
    archive.read(texture);
    return true;
}

bool AColorTexture::sameAs(const AColorTexture& o) const { return sameAColor(texture, o.texture); }

int AColorTexture::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    beginAssetFrame(writer, url, pluginType(), pluginKind());
    writer.writeAColor("texture", texture);
    endAssetFrame(writer);
    return 0;
}

// ---------------------------------------------------------------- InvertTexture

void InvertTexture::setDefaults() {
    texture.reset();
    invert_alpha = false;
}

bool InvertTexture::serialize(QuickArchive& archive) {
    if (!texture) return false;
    writeVersion(archive, 1);
    if (!writeRequiredChild(archive, texture)) return false;
    archive.write(invert_alpha);
    return true;
}

bool InvertTexture::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readTextureVersion(archive, *this, 1, major)) return false;
    if (!readRequiredChildInPlace(archive, texture, createTexture)) return false;
    archive.read(invert_alpha);
    return true;
}

void InvertTexture::cloneChildren() { texture = cloneChild(texture); }

bool InvertTexture::sameAs(const InvertTexture& o) const {
    return sameChild(texture, o.texture) && invert_alpha == o.invert_alpha;
}

// The child's asset lives under "base_texture"; the parameter is "texture".
int InvertTexture::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    const std::u16string textureUrl = url + u"/base_texture";
    writeChildXML(writer, texture, textureUrl);
    beginAssetFrame(writer, url, pluginType(), pluginKind());
    writer.writePlugin("texture", texture, textureUrl);
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

bool BlendTexture::serialize(QuickArchive& archive) {
    writeVersion(archive, 2);
    if (!writeOptionalChild(archive, color_a)) return false;
    archive.write(colorAMult);
    if (!writeOptionalChild(archive, color_b)) return false;
    archive.write(colorBMult);
    archive.write(blend_amount);
    return true;
}

bool BlendTexture::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readTextureVersion(archive, *this, 2, major)) return false;
    if (!readOptionalChild(archive, color_a, createTexture)) return false;
    if (major >= 2) archive.read(colorAMult);
    if (!readOptionalChild(archive, color_b, createTexture)) return false;
    if (major >= 2) archive.read(colorBMult);
    archive.read(blend_amount);
    return true;
}

void BlendTexture::cloneChildren() {
    color_a = cloneChild(color_a);
    color_b = cloneChild(color_b);
}

bool BlendTexture::sameAs(const BlendTexture& o) const {
    return sameChild(color_a, o.color_a) && sameChild(color_b, o.color_b) &&
           sameFloat(colorAMult, o.colorAMult) && sameFloat(colorBMult, o.colorBMult) &&
           sameFloat(blend_amount, o.blend_amount);
}

int BlendTexture::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    const std::u16string aUrl = url + u"/color_a";
    const std::u16string bUrl = url + u"/color_b";
    writeChildXML(writer, color_a, aUrl);
    writeChildXML(writer, color_b, bUrl);
    beginAssetFrame(writer, url, pluginType(), pluginKind());
    writer.writePlugin("color_a", color_a, aUrl);
    writer.writePlugin("color_b", color_b, bUrl);
    writer.writeFloat("blend_amount", blend_amount);
    endAssetFrame(writer);
    return 0;
}

}  // namespace CorvaneCore
