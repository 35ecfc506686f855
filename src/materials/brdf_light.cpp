#include "archive/compare.h"
#include "archive/read_helpers.h"
#include "materials/brdf_slots.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

namespace {
constexpr uint32_t kLightVersion = 5;
}  // namespace

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

bool Light_BRDF::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    const bool minorOk = readVersion(archive, major);
    setDefaults();
    if (!minorOk || major < 1 || major > kLightVersion) return false;

    if (major == 1) {
        archive.read(color);
        archive.read(intensity);
        archive.read(transparency_tex_mult);
        readPathSlot(archive, transparency_tex);
        return true;
    }
    archive.read(color);
    archive.read(transparency);
    archive.read(intensity);
    archive.read(glowLevel);
    archive.read(color_tex_mult);
    archive.read(transparency_tex_mult);
    if (major == 2) {
        readPathSlot(archive, color_tex);
        readPathSlot(archive, transparency_tex);
        return true;
    }
    if (!readTextureSlot(archive, color_tex) || !readTextureSlot(archive, transparency_tex)) {
        return false;
    }
    if (major == 3) return true;
    if (!readBaseSection(archive)) return false;
    if (major == 5) archive.read(doubleSided);
    return true;
}

bool Light_BRDF::serialize(QuickArchive& archive) {
    writeVersion(archive, kLightVersion);
    archive.write(color);
    archive.write(transparency);
    archive.write(intensity);
    archive.write(glowLevel);
    archive.write(color_tex_mult);
    archive.write(transparency_tex_mult);
    if (!writeTextureSlot(archive, color_tex) || !writeTextureSlot(archive, transparency_tex)) {
        return false;
    }
    writeBaseSection(archive);
    archive.write(doubleSided);
    return true;
}

std::shared_ptr<Base_BRDF> Light_BRDF::clone() {
    auto copy = std::make_shared<Light_BRDF>(*this);
    copy->color_tex = cloneTexture(color_tex);
    copy->transparency_tex = cloneTexture(transparency_tex);
    return copy;
}

bool Light_BRDF::isEqual(const std::shared_ptr<Base_BRDF>& other) {
    if (!other || other->getType() != getType()) return false;
    const auto& o = static_cast<const Light_BRDF&>(*other);
    return sameTexture(color_tex, o.color_tex) &&
           sameTexture(transparency_tex, o.transparency_tex) && sameColor(color, o.color) &&
           sameColor(transparency, o.transparency) && sameFloat(intensity, o.intensity) &&
           sameFloat(glowLevel, o.glowLevel) && sameFloat(color_tex_mult, o.color_tex_mult) &&
           sameFloat(transparency_tex_mult, o.transparency_tex_mult) &&
           doubleSided == o.doubleSided;
}

int Light_BRDF::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + name;
    const TextureSlots slots = {
        {color_tex, "color_texture", "color_tex"},
        {transparency_tex, "transp_texture", "transparency_tex"},
    };
    writeSlotChildren(writer, url, slots);
    beginLayerAsset(writer, *this, url);
    writer.writeColor("color", color);
    writer.writeColor("transparency", transparency);
    writer.writeFloat("intensity", intensity);
    writer.writeFloat("transparency_tex_mult", transparency_tex_mult);
    writer.writeFloat("color_tex_mult", color_tex_mult);
    writer.writeBool("doubleSided", doubleSided != 0);
    writeSlotParameters(writer, url, slots);
    endLayerAsset(writer);
    return 0;
}

}  // namespace CorvaneCore
