// Textures laid out by a UVW generator: UVW, Ramp, Bulge, Grid, Cloth, Noise and Checker.
#include "archive/compare.h"
#include "archive/read_helpers.h"
#include "textures/procedural.h"

namespace CorvaneCore {

// ---------------------------------------------------------------- UVWTexture

void UVWTexture::setDefaults() { uvwgen.reset(); }

bool UVWTexture::serialize(QuickArchive& archive) {
    writeVersion(archive, 1);
    return writeRequiredChild(archive, uvwgen);
}

bool UVWTexture::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readTextureVersion(archive, *this, 1, major)) return false;
    return readRequiredChildInPlace(archive, uvwgen, createUVW);
}

void UVWTexture::cloneChildren() { uvwgen = cloneChild(uvwgen); }

bool UVWTexture::sameAs(const UVWTexture& o) const { return sameChild(uvwgen, o.uvwgen); }

int UVWTexture::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    const std::u16string uvwUrl = url + u"/uvwgen";
    writeChildXML(writer, uvwgen, uvwUrl);
    beginAssetFrame(writer, url, pluginType(), pluginKind());
    writer.writePlugin("uvwgen", uvwgen, uvwUrl);
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

bool RampTexture::serialize(QuickArchive& archive) {
    writeVersion(archive, 1);
    if (!writeRequiredChild(archive, uvwgen) || !writeRequiredChild(archive, colors)) {
        return false;
    }
    archive.write(positions);
    archive.write(u_wave);
    archive.write(v_wave);
    archive.write(type);
    archive.write(interpolation);
    return true;
}

bool RampTexture::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readTextureVersion(archive, *this, 1, major)) return false;
    if (!readRequiredChildInPlace(archive, uvwgen, createUVW) ||
        !readRequiredChildInPlace(archive, colors, createTexture)) {
        return false;
    }
    archive.read(positions);
    archive.read(u_wave);
    archive.read(v_wave);
    archive.read(type);
    archive.read(interpolation);
    return true;
}

void RampTexture::cloneChildren() {
    uvwgen = cloneChild(uvwgen);
    colors = cloneChild(colors);
}

bool RampTexture::sameAs(const RampTexture& o) const {
    return sameChild(uvwgen, o.uvwgen) && sameChild(colors, o.colors) &&
           sameFloat(positions, o.positions) && sameFloat(u_wave, o.u_wave) &&
           sameFloat(v_wave, o.v_wave) && type == o.type && interpolation == o.interpolation;
}

int RampTexture::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    const std::u16string uvwUrl = url + u"/uvwgen";
    const std::u16string colorsUrl = url + u"/colors";
    writeChildXML(writer, uvwgen, uvwUrl);
    writeChildXML(writer, colors, colorsUrl);
    beginAssetFrame(writer, url, pluginType(), pluginKind());
    writer.writePlugin("uvwgen", uvwgen, uvwUrl);
    writer.writePlugin("colors", colors, colorsUrl);
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

// Unlike its sisters it tests its generator only after the version word.
bool BulgeTexture::serialize(QuickArchive& archive) {
    writeVersion(archive, 1);
    if (!writeRequiredChild(archive, uvwgen)) return false;
    archive.write(u_width);
    archive.write(v_width);
    return true;
}

bool BulgeTexture::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readTextureVersion(archive, *this, 1, major)) return false;
    if (!readRequiredChildInPlace(archive, uvwgen, createUVW)) return false;
    archive.read(u_width);
    archive.read(v_width);
    return true;
}

void BulgeTexture::cloneChildren() { uvwgen = cloneChild(uvwgen); }

bool BulgeTexture::sameAs(const BulgeTexture& o) const {
    return sameChild(uvwgen, o.uvwgen) && sameFloat(u_width, o.u_width) &&
           sameFloat(v_width, o.v_width);
}

int BulgeTexture::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    const std::u16string uvwUrl = url + u"/uvwgen";
    writeChildXML(writer, uvwgen, uvwUrl);
    beginAssetFrame(writer, url, pluginType(), pluginKind());
    writer.writePlugin("uvwgen", uvwgen, uvwUrl);
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

bool GridTexture::serialize(QuickArchive& archive) {
    if (!uvwgen || !line_color || !fill_color) return false;
    writeVersion(archive, 2);
    if (!writeRequiredChild(archive, uvwgen) || !writeRequiredChild(archive, line_color) ||
        !writeRequiredChild(archive, fill_color)) {
        return false;
    }
    archive.write(lineColorMult);
    archive.write(fillColorMult);
    archive.write(u_width);
    archive.write(v_width);
    return true;
}

bool GridTexture::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readTextureVersion(archive, *this, 2, major)) return false;
    if (!readRequiredChildInPlace(archive, uvwgen, createUVW) ||
        !readRequiredChildInPlace(archive, line_color, createTexture) ||
        !readRequiredChildInPlace(archive, fill_color, createTexture)) {
        return false;
    }
    if (major >= 2) {
        archive.read(lineColorMult);
        archive.read(fillColorMult);
    }
    archive.read(u_width);
    archive.read(v_width);
    return true;
}

void GridTexture::cloneChildren() {
    uvwgen = cloneChild(uvwgen);
    line_color = cloneChild(line_color);
    fill_color = cloneChild(fill_color);
}

bool GridTexture::sameAs(const GridTexture& o) const {
    return sameChild(uvwgen, o.uvwgen) && sameChild(line_color, o.line_color) &&
           sameChild(fill_color, o.fill_color) && sameFloat(lineColorMult, o.lineColorMult) &&
           sameFloat(fillColorMult, o.fillColorMult) && sameFloat(u_width, o.u_width) &&
           sameFloat(v_width, o.v_width);
}

int GridTexture::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    const std::u16string uvwUrl = url + u"/uvwgen";
    const std::u16string lineUrl = url + u"/line_color";
    const std::u16string fillUrl = url + u"/fill_color";
    writeChildXML(writer, uvwgen, uvwUrl);
    writeChildXML(writer, line_color, lineUrl);
    writeChildXML(writer, fill_color, fillUrl);
    beginAssetFrame(writer, url, pluginType(), pluginKind());
    writer.writePlugin("uvwgen", uvwgen, uvwUrl);
    writer.writePlugin("line_color", line_color, lineUrl);
    writer.writePlugin("fill_color", fill_color, fillUrl);
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

bool ClothTexture::serialize(QuickArchive& archive) {
    if (!uvwgen) return false;
    writeVersion(archive, 2);
    if (!writeRequiredChild(archive, uvwgen)) return false;
    archive.write(gap_color);
    archive.write(u_color);
    archive.write(v_color);
    archive.write(u_width);
    archive.write(v_width);
    archive.write(tile);
    return true;
}

bool ClothTexture::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readTextureVersion(archive, *this, 2, major)) return false;
    if (!readRequiredChildInPlace(archive, uvwgen, createUVW)) return false;
    archive.read(gap_color);
    archive.read(u_color);
    archive.read(v_color);
    archive.read(u_width);
    archive.read(v_width);
    if (major >= 2) archive.read(tile);
    return true;
}

void ClothTexture::cloneChildren() { uvwgen = cloneChild(uvwgen); }

bool ClothTexture::sameAs(const ClothTexture& o) const {
    return sameChild(uvwgen, o.uvwgen) && sameAColor(gap_color, o.gap_color) &&
           sameAColor(u_color, o.u_color) && sameAColor(v_color, o.v_color) &&
           sameFloat(u_width, o.u_width) && sameFloat(v_width, o.v_width) && tile == o.tile;
}

// The one stored flag tiles both directions.
int ClothTexture::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    const std::u16string uvwUrl = url + u"/uvwgen";
    writeChildXML(writer, uvwgen, uvwUrl);
    beginAssetFrame(writer, url, pluginType(), pluginKind());
    writer.writePlugin("uvwgen", uvwgen, uvwUrl);
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

bool NoiseTexture::serialize(QuickArchive& archive) {
    if (!uvwgen) return false;
    writeVersion(archive, 1);
    if (!writeRequiredChild(archive, uvwgen) || !writeOptionalChild(archive, color1_tex) ||
        !writeOptionalChild(archive, color2_tex)) {
        return false;
    }
    archive.write(color1);
    archive.write(color2);
    for (float f : {persistence, amplitude_ratio, frequency_ratio, frequency1, amplitude1, size,
                    mix_ratio, bias, color1_tex_mult, color2_tex_mult}) {
        archive.write(f);
    }
    for (int32_t i : {octaves, noiseType, inflection}) archive.write(i);
    return true;
}

bool NoiseTexture::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readTextureVersion(archive, *this, 1, major)) return false;
    if (!readRequiredChildInPlace(archive, uvwgen, createUVW) ||
        !readOptionalChild(archive, color1_tex, createTexture) ||
        !readOptionalChild(archive, color2_tex, createTexture)) {
        return false;
    }
    archive.read(color1);
    archive.read(color2);
    for (float* f : {&persistence, &amplitude_ratio, &frequency_ratio, &frequency1, &amplitude1,
                     &size, &mix_ratio, &bias, &color1_tex_mult, &color2_tex_mult}) {
        archive.read(*f);
    }
    for (int32_t* i : {&octaves, &noiseType, &inflection}) archive.read(*i);
    return true;
}

void NoiseTexture::cloneChildren() {
    uvwgen = cloneChild(uvwgen);
    color1_tex = cloneChild(color1_tex);
    color2_tex = cloneChild(color2_tex);
}

bool NoiseTexture::sameAs(const NoiseTexture& o) const {
    return sameChild(uvwgen, o.uvwgen) && sameChild(color1_tex, o.color1_tex) &&
           sameChild(color2_tex, o.color2_tex) && sameColor(color1, o.color1) &&
           sameColor(color2, o.color2) && sameFloat(persistence, o.persistence) &&
           sameFloat(amplitude_ratio, o.amplitude_ratio) &&
           sameFloat(frequency_ratio, o.frequency_ratio) && sameFloat(frequency1, o.frequency1) &&
           sameFloat(amplitude1, o.amplitude1) && sameFloat(size, o.size) &&
           sameFloat(mix_ratio, o.mix_ratio) && sameFloat(bias, o.bias) &&
           sameFloat(color1_tex_mult, o.color1_tex_mult) &&
           sameFloat(color2_tex_mult, o.color2_tex_mult) && octaves == o.octaves &&
           noiseType == o.noiseType && inflection == o.inflection;
}

int NoiseTexture::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    const std::u16string uvwUrl = url + u"/uvwgen";
    const std::u16string color1Url = url + u"/color1_tex";
    const std::u16string color2Url = url + u"/color2_tex";
    writeChildXML(writer, uvwgen, uvwUrl);
    writeChildXML(writer, color1_tex, color1Url);
    writeChildXML(writer, color2_tex, color2Url);
    beginAssetFrame(writer, url, pluginType(), pluginKind());
    writer.writePlugin("uvwgen", uvwgen, uvwUrl);
    writer.writePlugin("color1_tex", color1_tex, color1Url);
    writer.writePlugin("color2_tex", color2_tex, color2Url);
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

bool CheckerTexture::serialize(QuickArchive& archive) {
    if (!uvwgen || !white_color || !black_color) return false;
    writeVersion(archive, 2);
    if (!writeRequiredChild(archive, uvwgen) || !writeRequiredChild(archive, white_color) ||
        !writeRequiredChild(archive, black_color)) {
        return false;
    }
    archive.write(tile_u);
    archive.write(tile_v);
    archive.write(whiteColorMult);
    archive.write(blackColorMult);
    return true;
}

bool CheckerTexture::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readTextureVersion(archive, *this, 2, major)) return false;
    if (!readRequiredChildInPlace(archive, uvwgen, createUVW) ||
        !readRequiredChildInPlace(archive, white_color, createTexture) ||
        !readRequiredChildInPlace(archive, black_color, createTexture)) {
        return false;
    }
    archive.read(tile_u);
    archive.read(tile_v);
    if (major >= 2) {
        archive.read(whiteColorMult);
        archive.read(blackColorMult);
    }
    return true;
}

void CheckerTexture::cloneChildren() {
    uvwgen = cloneChild(uvwgen);
    white_color = cloneChild(white_color);
    black_color = cloneChild(black_color);
}

bool CheckerTexture::sameAs(const CheckerTexture& o) const {
    return sameChild(uvwgen, o.uvwgen) && sameChild(white_color, o.white_color) &&
           sameChild(black_color, o.black_color) && tile_u == o.tile_u && tile_v == o.tile_v &&
           sameFloat(whiteColorMult, o.whiteColorMult) &&
           sameFloat(blackColorMult, o.blackColorMult);
}

int CheckerTexture::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + pluginType();
    const std::u16string uvwUrl = url + u"/uvwgen";
    const std::u16string whiteUrl = url + u"/white_color";
    const std::u16string blackUrl = url + u"/black_color";
    writeChildXML(writer, uvwgen, uvwUrl);
    writeChildXML(writer, white_color, whiteUrl);
    writeChildXML(writer, black_color, blackUrl);
    beginAssetFrame(writer, url, pluginType(), pluginKind());
    writer.writePlugin("uvwgen", uvwgen, uvwUrl);
    writer.writePlugin("white_color", white_color, whiteUrl);
    writer.writePlugin("black_color", black_color, blackUrl);
    writer.writeBool("tile_u", tile_u);
    writer.writeBool("tile_v", tile_v);
    endAssetFrame(writer);
    return 0;
}

}  // namespace CorvaneCore
