#include "archive/compare.h"
#include "archive/read_helpers.h"
#include "materials/brdf_slots.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

namespace {
constexpr uint32_t kDiffuseVersion = 4;
}  // namespace

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
    const bool minorOk = readVersion(archive, major);
    setDefaults();
    if (!minorOk || major < 1 || major > kDiffuseVersion) return false;

    archive.read(color);
    archive.read(transparency);
    archive.read(color_tex_mult);
    archive.read(transparency_tex_mult);
    if (major == 1) {
        readPathSlot(archive, color_tex);
        readPathSlot(archive, transparency_tex);
        return true;
    }
    if (!readTextureSlot(archive, color_tex) || !readTextureSlot(archive, transparency_tex)) {
        return false;
    }
    if (major == 2) return true;
    const bool sectionRead = readBaseSection(archive);
    // The last field was appended behind the section and is read even when the section failed.
    if (major == 4) archive.read(use_color_tex_alpha_as_transparency);
    return sectionRead;
}

bool Diffuse_BRDF::serialize(QuickArchive& archive) {
    writeVersion(archive, kDiffuseVersion);
    archive.write(color);
    archive.write(transparency);
    archive.write(color_tex_mult);
    archive.write(transparency_tex_mult);
    if (!writeTextureSlot(archive, color_tex) || !writeTextureSlot(archive, transparency_tex)) {
        return false;
    }
    writeBaseSection(archive);
    archive.write(use_color_tex_alpha_as_transparency);
    return true;
}

std::shared_ptr<Base_BRDF> Diffuse_BRDF::clone() {
    auto copy = std::make_shared<Diffuse_BRDF>(*this);
    copy->color_tex = cloneTexture(color_tex);
    copy->transparency_tex = cloneTexture(transparency_tex);
    return copy;
}

bool Diffuse_BRDF::isEqual(const std::shared_ptr<Base_BRDF>& other) {
    if (!other || other->getType() != getType()) return false;
    const auto& o = static_cast<const Diffuse_BRDF&>(*other);
    return sameTexture(color_tex, o.color_tex) &&
           sameTexture(transparency_tex, o.transparency_tex) && sameColor(color, o.color) &&
           sameColor(transparency, o.transparency) && sameFloat(color_tex_mult, o.color_tex_mult) &&
           sameFloat(transparency_tex_mult, o.transparency_tex_mult) &&
           use_color_tex_alpha_as_transparency == o.use_color_tex_alpha_as_transparency;
}

int Diffuse_BRDF::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + name;
    const TextureSlots slots = {
        {color_tex, "color_texture", "color_tex"},
        {transparency_tex, "transparency_texture", "transparency_tex"},
    };
    writeSlotChildren(writer, url, slots);
    beginLayerAsset(writer, *this, url);
    writer.writeColor("color", color);
    writer.writeColor("transparency", transparency);
    writer.writeFloat("color_tex_mult", color_tex_mult);
    writer.writeFloat("transparency_tex_mult", transparency_tex_mult);
    writeSlotParameters(writer, url, slots);
    writer.writeBool("use_color_tex_alpha_as_transparency", use_color_tex_alpha_as_transparency);
    endLayerAsset(writer);
    return 0;
}

}  // namespace CorvaneCore
