#include "archive/read_helpers.h"
#include "materials/brdf_slots.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

void Glass_BRDF::setDefaults() {
    resetBase();
    color = Color(1, 1, 1);
    fog_color = Color(1, 1, 1);
    ior = 1.55f;
    secondIor = 1.55f;
    cutoff = 0.001f;
    fog_color_mult = 1.0f;
    glossiness = 1.0f;
    traceDepth = 5;
    subdivs = 8;
    affect_shadows = 0;
    affect_alpha = 0;
    color_tex_mult = 1.0f;
    glossiness_tex_mult = 1.0f;
    ior_tex_mult = 1.0f;
    translucency_on = 0;
    thickness = 1000.0f;
    scatter_coeff = 0.0f;
    scatter_direction = 1.0f;
    translucency_tex_mult = 1.0f;
    translucency = Color(1, 1, 1);
    color_tex.reset();
    glossiness_tex.reset();
    ior_texture.reset();
    translucency_tex.reset();
    transparency = Color(0, 0, 0);
    transparency_tex_mult = 1.0f;
    transparency_tex.reset();
}

bool Glass_BRDF::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readVersionThenReset(archive, kNewestVersion, major, true)) return false;
    switch (major) {
        case 2:
            return readVersion2(archive);
        case 3:
            return readVersion3(archive);
        case 4:
            return readVersion4(archive);
        case 6:
            return readListedFields(archive, major, *this) && readBaseSection(archive);
        default:
            return readListedFields(archive, major, *this);  // 1 and 5
    }
}

void Glass_BRDF::readOldMultipliers(QuickArchive& archive) {
    archive.read(transparency_tex_mult);
    archive.read(glossiness_tex_mult);
    archive.read(ior_tex_mult);
}

void Glass_BRDF::readTranslucencyFields(QuickArchive& archive) {
    FieldReader read{archive, kNewestVersion};
    visitTranslucencyFields(read, kNewestVersion, *this);
}

// Fields 1 to 11, the old multipliers and three paths.
bool Glass_BRDF::readVersion2(QuickArchive& archive) {
    readListedFields(archive, 1, *this);
    readOldMultipliers(archive);
    readPathSlot(archive, transparency_tex);
    readPathSlot(archive, glossiness_tex);
    readPathSlot(archive, ior_texture);
    return true;
}

// Version 2 and the translucency block with its path behind.
bool Glass_BRDF::readVersion3(QuickArchive& archive) {
    readVersion2(archive);
    readTranslucencyFields(archive);
    readPathSlot(archive, translucency_tex);
    return true;
}

// The old multipliers and the translucency block, then four slots where the paths stood.
bool Glass_BRDF::readVersion4(QuickArchive& archive) {
    readListedFields(archive, 1, *this);
    readOldMultipliers(archive);
    readTranslucencyFields(archive);
    return readField(archive, transparency_tex) && readField(archive, glossiness_tex) &&
           readField(archive, ior_texture) && readField(archive, translucency_tex);
}

int Glass_BRDF::writeXML(AssetXmlWriter& writer, std::u16string url) {
    const TextureSlots slots = {
        {transparency_tex, "transparency_texture", "transparency_tex"},
        {color_tex, "color_texture", "color_tex"},
        {glossiness_tex, "glossy_texture", "glossiness_tex"},
        {ior_texture, "ior_texture", "ior_texture"},
        {translucency_tex, "translucency_texture", "translucency_tex"},
    };
    beginLayerBlock(writer, *this, url, slots);
    writer.writeColor("color", color);
    writer.writeColor("transparency", transparency);
    writer.writeColor("fog_color", fog_color);
    writer.writeColor("translucency", translucency);
    writer.writeBool("affect_shadows", affect_shadows != 0);
    writer.writeBool("affect_alpha", affect_alpha != 0);
    writer.writeBool("translucency_on", translucency_on != 0);
    writer.writeFloat("ior", ior);
    writer.writeFloat("fog_color_mult", fog_color_mult);
    writer.writeFloat("glossiness", glossiness);
    writer.writeFloat("glossiness_tex_mult", glossiness_tex_mult);
    writer.writeFloat("ior_tex_mult", ior_tex_mult);
    writer.writeFloat("translucency_tex_mult", translucency_tex_mult);
    writer.writeFloat("scatter_coeff", scatter_coeff);
    writer.writeFloat("scatter_direction", scatter_direction);
    writer.writeFloat("thickness", thickness);
    writer.writeFloat("transparency_tex_mult", transparency_tex_mult);
    writer.writeFloat("cutoff", cutoff);
    writer.writeFloat("color_tex_mult", color_tex_mult);
    writer.writeInteger("subdivs", subdivs);
    endLayerBlock(writer, url, slots);
    return 0;
}

}  // namespace CorvaneCore
