// Textures laid out by a UVW generator: UVW, Ramp, Bulge, Grid, Cloth, Noise and Checker.
#include "archive/compare.h"
#include "archive/read_helpers.h"
#include "textures/procedural.h"

namespace CorvaneCore {

// ---------------------------------------------------------------- UVWTexture

void UVWTexture::setDefaults() { uvwgen.reset(); }

int UVWTexture::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    beginFrameAfterChildren(writer, url, *this, {{"uvwgen", uvwgen, u"uvwgen"}});
    endAssetFrame(writer);
    return 0;
}

// ---------------------------------------------------------------- RampTexture

void RampTexture::setDefaults() {
    uvwgen.reset();
    colors.reset();
    positions = 0.5f;
    u_wave = 0.0f;
    v_wave = 0.0f;
    type = 0;
    interpolation = 1;
}

int RampTexture::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    beginFrameAfterChildren(writer, url, *this,
                            {{"uvwgen", uvwgen, u"uvwgen"}, {"colors", colors, u"colors"}});
    writer.writeFloat("positions", positions);
    writer.writeFloat("u_wave", u_wave);
    writer.writeFloat("v_wave", v_wave);
    writer.writeInteger("type", type);
    writer.writeInteger("interpolation", interpolation);
    endAssetFrame(writer);
    return 0;
}

// ---------------------------------------------------------------- BulgeTexture

void BulgeTexture::setDefaults() {
    uvwgen.reset();
    u_width = 0.1f;
    v_width = 0.1f;
}

int BulgeTexture::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    beginFrameAfterChildren(writer, url, *this, {{"uvwgen", uvwgen, u"uvwgen"}});
    writer.writeFloat("u_width", u_width);
    writer.writeFloat("v_width", v_width);
    endAssetFrame(writer);
    return 0;
}

// ---------------------------------------------------------------- GridTexture

void GridTexture::setDefaults() {
    uvwgen.reset();
    line_color.reset();
    fill_color.reset();
    lineColorMult = 1.0f;
    fillColorMult = 1.0f;
    u_width = 0.1f;
    v_width = 0.1f;
}

int GridTexture::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    beginFrameAfterChildren(writer, url, *this,
                            {{"uvwgen", uvwgen, u"uvwgen"},
                             {"line_color", line_color, u"line_color"},
                             {"fill_color", fill_color, u"fill_color"}});
    writer.writeFloat("u_width", u_width);
    writer.writeFloat("v_width", v_width);
    endAssetFrame(writer);
    return 0;
}

// ---------------------------------------------------------------- ClothTexture

void ClothTexture::setDefaults() {
    uvwgen.reset();
    gap_color = AColor(1.0f, 1.0f, 1.0f, 1.0f);
    u_color = AColor(0.0f, 0.0f, 0.0f, 1.0f);
    v_color = AColor(1.0f, 1.0f, 1.0f, 1.0f);
    u_width = 0.1f;
    v_width = 0.1f;
    tile = true;
}

// The one stored flag tiles both directions.
int ClothTexture::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    beginFrameAfterChildren(writer, url, *this, {{"uvwgen", uvwgen, u"uvwgen"}});
    writer.writeAColor("gap_color", gap_color);
    writer.writeAColor("u_color", u_color);
    writer.writeAColor("v_color", v_color);
    writer.writeFloat("u_width", u_width);
    writer.writeFloat("v_width", v_width);
    writer.writeBool("tile_u", tile);
    writer.writeBool("tile_v", tile);
    endAssetFrame(writer);
    return 0;
}

// ---------------------------------------------------------------- NoiseTexture

void NoiseTexture::setDefaults() {
    uvwgen.reset();
    color1_tex.reset();
    color2_tex.reset();
    color1 = Color(1.0f, 1.0f, 1.0f);
    color2 = Color(0.0f, 0.0f, 0.0f);
    persistence = 1.0f;
    amplitude_ratio = 1.0f;
    frequency_ratio = 2.0f;
    frequency1 = 1.0f;
    amplitude1 = 1.0f;
    size = 1.0f;
    mix_ratio = 0.5f;
    bias = 0.0f;
    color1_tex_mult = 1.0f;
    color2_tex_mult = 1.0f;
    octaves = 3;
    noiseType = 0;
    inflection = 0;
}

int NoiseTexture::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    beginFrameAfterChildren(writer, url, *this,
                            {{"uvwgen", uvwgen, u"uvwgen"},
                             {"color1_tex", color1_tex, u"color1_tex"},
                             {"color2_tex", color2_tex, u"color2_tex"}});
    writer.writeColor("color1", color1);
    writer.writeColor("color2", color2);
    writer.writeFloat("persistence", persistence);
    writer.writeFloat("amplitude_ratio", amplitude_ratio);
    writer.writeFloat("frequency_ratio", frequency_ratio);
    writer.writeFloat("frequency1", frequency1);
    writer.writeFloat("amplitude1", amplitude1);
    writer.writeFloat("size", size);
    writer.writeFloat("mix_ratio", mix_ratio);
    writer.writeFloat("bias", bias);
    writer.writeFloat("color1_tex_mult", color1_tex_mult);
    writer.writeFloat("color2_tex_mult", color2_tex_mult);
    writer.writeInteger("octaves", octaves);
    writer.writeInteger("noiseType", noiseType);
    writer.writeInteger("inflection", inflection);
    endAssetFrame(writer);
    return 0;
}

// ---------------------------------------------------------------- CheckerTexture

void CheckerTexture::setDefaults() {
    uvwgen.reset();
    white_color = std::make_shared<AColorTexture>(AColor(1.0f, 1.0f, 1.0f, 1.0f));
    black_color = std::make_shared<AColorTexture>(AColor(0.0f, 0.0f, 0.0f, 1.0f));
    tile_u = true;
    tile_v = true;
    whiteColorMult = 1.0f;
    blackColorMult = 1.0f;
}

int CheckerTexture::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    beginFrameAfterChildren(writer, url, *this,
                            {{"uvwgen", uvwgen, u"uvwgen"},
                             {"white_color", white_color, u"white_color"},
                             {"black_color", black_color, u"black_color"}});
    writer.writeBool("tile_u", tile_u);
    writer.writeBool("tile_v", tile_v);
    endAssetFrame(writer);
    return 0;
}

}  // namespace CorvaneCore
