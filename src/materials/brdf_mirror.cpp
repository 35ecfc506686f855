#include "archive/read_helpers.h"
#include "materials/brdf_slots.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

void Mirror_BRDF::setDefaults() {
    resetBase();
    color = Color(1, 1, 1);
    reflectFilter = Color(1, 1, 1);
    transparency_tex_mult = 1.0f;
    cutoff = 0.01f;
    mirrorMode = 1;
    color_tex_mult = 1.0f;
    transparency_tex = newFresnelTexture();
    color_tex.reset();
}

bool Mirror_BRDF::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readVersionThenReset(archive, kNewestVersion, major)) return false;
    // Only a stored slot or the old fresnel flag may fill the slot again.
    transparency_tex.reset();
    switch (major) {
        case 1:
            return readVersion1(archive);
        case 2:
            return readVersion2(archive);
        case 3:
            return readVersion3(archive);
        case 4:
            return readVersion3(archive) && readBaseSection(archive);
        default:
            return readListedFields(archive, major, *this) && readBaseSection(archive);
    }
}

// Fields 1 to 5 of versions 1 to 4, with the fresnel index and flag among them.
OldFresnelFields Mirror_BRDF::readOldHead(QuickArchive& archive) {
    OldFresnelFields fresnel;
    archive.read(color);
    archive.read(reflectFilter);
    archive.read(transparency_tex_mult);
    archive.read(fresnel.ior);
    archive.read(cutoff);
    archive.read(fresnel.on);
    archive.read(mirrorMode);
    return fresnel;
}

bool Mirror_BRDF::readVersion1(QuickArchive& archive) {
    const OldFresnelFields fresnel = readOldHead(archive);
    readPathSlot(archive, transparency_tex);
    applyOldFresnel(fresnel, transparency_tex);
    return true;
}

// The colour multiplier stands between the two paths.
bool Mirror_BRDF::readVersion2(QuickArchive& archive) {
    const OldFresnelFields fresnel = readOldHead(archive);
    const std::u16string transparencyPath = readPathText(archive);
    archive.read(color_tex_mult);
    const std::u16string colorPath = readPathText(archive);
    color_tex = textureFromPath(colorPath);
    transparency_tex = textureFromPath(transparencyPath);
    applyOldFresnel(fresnel, transparency_tex);
    return true;
}

bool Mirror_BRDF::readVersion3(QuickArchive& archive) {
    const OldFresnelFields fresnel = readOldHead(archive);
    archive.read(color_tex_mult);
    if (!readField(archive, transparency_tex) || !readField(archive, color_tex)) return false;
    applyOldFresnel(fresnel, transparency_tex);
    return true;
}

int Mirror_BRDF::writeXML(AssetXmlWriter& writer, std::u16string url) {
    const TextureSlots slots = {
        {transparency_tex, "transparency_texture", "transparency_tex"},
        {color_tex, "color_texture", "color_tex"},
    };
    beginLayerBlock(writer, *this, url, slots);
    writer.writeColor("color", color);
    writer.writeColor("transparency", invertedFilter(reflectFilter));
    writer.writeFloat("color_tex_mult", color_tex_mult);
    writer.writeFloat("transparency_tex_mult", transparency_tex_mult);
    writer.writeFloat("cutoff", cutoff);
    endLayerBlock(writer, url, slots);
    return 0;
}

}  // namespace CorvaneCore
