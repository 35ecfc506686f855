#include "archive/read_helpers.h"
#include "materials/brdf_slots.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

void ReflectionBRDF::setDefaults() {
    resetBase();
    color = Color(1, 1, 1);
    reflectFilter = Color(1, 1, 1);
    hilightGlossiness = 1.0f;
    reflectionGlossiness = 1.0f;
    cutoff = 0.01f;
    subdivs = 8;
    back_side = 0;
    traceDepth = 5;
    color_tex_mult = 1.0f;
    hilightGlossiness_tex_mult = 1.0f;
    reflectionGlossiness_tex_mult = 1.0f;
    transparency_tex_mult = 1.0f;
    color_tex.reset();
    hilightGlossiness_tex.reset();
    reflectionGlossiness_tex.reset();
    transparency_tex = newFresnelTexture();
    anisotropy = 0.0f;
    anisotropy_rotation = 0.0f;
}

bool ReflectionBRDF::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readVersionThenReset(archive, kNewestVersion, major)) return false;
    // The default fresnel texture is not part of any stored layout: a stored slot or the old
    // fresnel flag alone decides.
    transparency_tex.reset();
    switch (major) {
        case 1:
            return readVersion1(archive);
        case 2:
            return readVersion2(archive);
        case 3:
            return readVersion3(archive);
        case 4:
            return readVersion4(archive);
        case 5:
            return readVersion4(archive) && readBaseSection(archive);
        default:
            return readListedFields(archive, major, *this) && readBaseSection(archive);
    }
}

// Fields 1 to 8 of versions 1 to 5, with the fresnel index and flag among them.
OldFresnelFields ReflectionBRDF::readOldHead(QuickArchive& archive) {
    OldFresnelFields fresnel;
    archive.read(color);
    archive.read(reflectFilter);
    archive.read(hilightGlossiness);
    archive.read(reflectionGlossiness);
    archive.read(fresnel.ior);
    archive.read(cutoff);
    archive.read(subdivs);
    archive.read(fresnel.on);
    archive.read(back_side);
    archive.read(traceDepth);
    return fresnel;
}

// Fields 9 to 11; the transparency multiplier came only with version 6.
void ReflectionBRDF::readOldMultipliers(QuickArchive& archive) {
    archive.read(color_tex_mult);
    archive.read(hilightGlossiness_tex_mult);
    archive.read(reflectionGlossiness_tex_mult);
}

void ReflectionBRDF::readAnisotropy(QuickArchive& archive) {
    archive.read(anisotropy);
    archive.read(anisotropy_rotation);
}

bool ReflectionBRDF::readVersion1(QuickArchive& archive) {
    applyOldFresnel(readOldHead(archive), transparency_tex);
    return true;
}

// Paths where three of the slots stand today.
bool ReflectionBRDF::readVersion2(QuickArchive& archive) {
    const OldFresnelFields fresnel = readOldHead(archive);
    readOldMultipliers(archive);
    readPathSlot(archive, color_tex);
    readPathSlot(archive, hilightGlossiness_tex);
    readPathSlot(archive, reflectionGlossiness_tex);
    applyOldFresnel(fresnel, transparency_tex);
    return true;
}

bool ReflectionBRDF::readVersion3(QuickArchive& archive) {
    readVersion2(archive);
    readAnisotropy(archive);
    return true;
}

bool ReflectionBRDF::readVersion4(QuickArchive& archive) {
    const OldFresnelFields fresnel = readOldHead(archive);
    readOldMultipliers(archive);
    if (!readField(archive, color_tex) || !readField(archive, hilightGlossiness_tex) ||
        !readField(archive, reflectionGlossiness_tex)) {
        return false;
    }
    applyOldFresnel(fresnel, transparency_tex);
    readAnisotropy(archive);
    return true;
}

int ReflectionBRDF::writeXML(AssetXmlWriter& writer, std::u16string url) {
    const TextureSlots slots = {
        {color_tex, "color_texture", "color_tex"},
        {hilightGlossiness_tex, "hilight_glossiness_texture", "hilightGlossiness_tex"},
        {reflectionGlossiness_tex, "reflection_glossiness_texture", "reflectionGlossiness_tex"},
        {transparency_tex, "transparency_texture", "transparency_tex"},
    };
    beginLayerBlock(writer, *this, url, slots);
    writer.writeColor("color", color);
    writer.writeColor("transparency", invertedFilter(reflectFilter));
    writer.writeFloat("hilightGlossiness", hilightGlossiness);
    writer.writeFloat("reflectionGlossiness", reflectionGlossiness);
    writer.writeFloat("cutoff", cutoff);
    writer.writeInteger("subdivs", subdivs);
    writer.writeInteger("back_side", back_side);
    writer.writeFloat("color_tex_mult", color_tex_mult);
    writer.writeFloat("hilightGlossiness_tex_mult", hilightGlossiness_tex_mult);
    writer.writeFloat("reflectionGlossiness_tex_mult", reflectionGlossiness_tex_mult);
    writer.writeFloat("transparency_tex_mult", transparency_tex_mult);
    writer.writeFloat("anisotropy", anisotropy);
    writer.writeFloat("anisotropy_rotation", anisotropy_rotation);
    endLayerBlock(writer, url, slots);
    return 0;
}

}  // namespace CorvaneCore
