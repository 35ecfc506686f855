#include "archive/read_helpers.h"
#include "materials/brdf_slots.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

void Diffuse_BRDF::setDefaults() {
    resetBase();
    color = Color(0.5f, 0.5f, 0.5f);
    transparency = Color(0, 0, 0);
    color_tex_mult = 1.0f;
    transparency_tex_mult = 1.0f;
    color_tex.reset();
    transparency_tex.reset();
    use_color_tex_alpha_as_transparency = false;
}

bool Diffuse_BRDF::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readVersionThenReset(archive, kNewestVersion, major)) return false;
    if (major == 1) return readVersion1(archive);
    if (!readListedFields(archive, major, *this)) return false;
    if (major == 2) return true;
    const bool sectionRead = readBaseSection(archive);
    // The last field was appended behind the section and is read even when the section failed.
    return readTrailingFields(archive, major, *this) && sectionRead;
}

// Paths where the slots stand today.
bool Diffuse_BRDF::readVersion1(QuickArchive& archive) {
    readListedFields(archive, 1, *this);
    readPathSlot(archive, color_tex);
    readPathSlot(archive, transparency_tex);
    return true;
}

int Diffuse_BRDF::writeXML(AssetXmlWriter& writer, std::u16string url) {
    const TextureSlots slots = {
        {color_tex, "color_texture", "color_tex"},
        {transparency_tex, "transparency_texture", "transparency_tex"},
    };
    beginLayerBlock(writer, *this, url, slots);
    writer.writeColor("color", color);
    writer.writeColor("transparency", transparency);
    writer.writeFloat("color_tex_mult", color_tex_mult);
    writer.writeFloat("transparency_tex_mult", transparency_tex_mult);
    // The one scalar that stands behind the slots' parameters.
    writeSlotParameters(writer, url, slots);
    writer.writeBool("use_color_tex_alpha_as_transparency", use_color_tex_alpha_as_transparency);
    endLayerBlock(writer, url, {});
    return 0;
}

}  // namespace CorvaneCore
