#include "archive/read_helpers.h"
#include "materials/brdf_slots.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

void Light_BRDF::setDefaults() {
    resetBase();
    color = Color(1, 1, 1);
    transparency = Color(0, 0, 0);
    intensity = 1.0f;
    glowLevel = 1.0f;
    color_tex_mult = 1.0f;
    transparency_tex_mult = 1.0f;
    color_tex.reset();
    transparency_tex.reset();
    doubleSided = 1;
}

// Versions 1 and 2 hold paths where the slots stand today; from version 3 on the layout is the
// newest list cut at the version.
bool Light_BRDF::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readVersionThenReset(archive, kNewestVersion, major)) return false;
    const bool listRead = readListedFields(archive, major, *this);
    switch (major) {
        case 1:
            readPathSlot(archive, transparency_tex);
            return true;
        case 2:
            readPathSlot(archive, color_tex);
            readPathSlot(archive, transparency_tex);
            return true;
        case 3:
            return listRead;
        default:
            return listRead && readBaseSection(archive) &&
                   readTrailingFields(archive, major, *this);
    }
}

int Light_BRDF::writeXML(AssetXmlWriter& writer, std::u16string url) {
    const TextureSlots slots = {
        {color_tex, "color_texture", "color_tex"},
        {transparency_tex, "transp_texture", "transparency_tex"},
    };
    beginLayerBlock(writer, *this, url, slots);
    writer.writeColor("color", color);
    writer.writeColor("transparency", transparency);
    writer.writeFloat("intensity", intensity);
    writer.writeFloat("transparency_tex_mult", transparency_tex_mult);
    writer.writeFloat("color_tex_mult", color_tex_mult);
    writer.writeBool("doubleSided", doubleSided != 0);
    endLayerBlock(writer, url, slots);
    return 0;
}

}  // namespace CorvaneCore
