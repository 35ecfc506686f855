#include "archive/compare.h"
#include "archive/read_helpers.h"
#include "materials/brdf_slots.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

namespace {
constexpr uint32_t kMirrorVersion = 5;
}  // namespace

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
    const bool minorOk = readVersion(archive, major);
    setDefaults();
    if (!minorOk || major < 1 || major > kMirrorVersion) return false;
    // Only a stored slot or the old fresnel flag may fill the slot again.
    transparency_tex.reset();
    if (major < kMirrorVersion) return readOldLayout(archive, major);

    archive.read(color);
    archive.read(reflectFilter);
    archive.read(transparency_tex_mult);
    archive.read(cutoff);
    archive.read(mirrorMode);
    archive.read(color_tex_mult);
    if (!readTextureSlot(archive, transparency_tex) || !readTextureSlot(archive, color_tex)) {
        return false;
    }
    return readBaseSection(archive);
}

// Versions 1 to 4 still hold the fresnel flag and index that became a texture.
bool Mirror_BRDF::readOldLayout(QuickArchive& archive, uint32_t major) {
    float fresnelIor = 0;
    int32_t fresnelOn = 0;
    archive.read(color);
    archive.read(reflectFilter);
    archive.read(transparency_tex_mult);
    archive.read(fresnelIor);
    archive.read(cutoff);
    archive.read(fresnelOn);
    archive.read(mirrorMode);
    if (major == 1) {
        readPathSlot(archive, transparency_tex);
    } else if (major == 2) {
        // The colour multiplier stands between the two paths.
        const std::u16string transparencyPath = readPathText(archive);
        archive.read(color_tex_mult);
        const std::u16string colorPath = readPathText(archive);
        color_tex = textureFromPath(colorPath);
        transparency_tex = textureFromPath(transparencyPath);
    } else {
        archive.read(color_tex_mult);
        if (!readTextureSlot(archive, transparency_tex) || !readTextureSlot(archive, color_tex)) {
            return false;
        }
    }
    if (fresnelOn != 0) transparency_tex = fresnelFromOldFields(fresnelIor);
    return major < 4 || readBaseSection(archive);
}

bool Mirror_BRDF::serialize(QuickArchive& archive) {
    writeVersion(archive, kMirrorVersion);
    archive.write(color);
    archive.write(reflectFilter);
    archive.write(transparency_tex_mult);
    archive.write(cutoff);
    archive.write(mirrorMode);
    archive.write(color_tex_mult);
    if (!writeTextureSlot(archive, transparency_tex) || !writeTextureSlot(archive, color_tex)) {
        return false;
    }
    writeBaseSection(archive);
    return true;
}

std::shared_ptr<Base_BRDF> Mirror_BRDF::clone() {
    auto copy = std::make_shared<Mirror_BRDF>(*this);
    copy->transparency_tex = cloneTexture(transparency_tex);
    copy->color_tex = cloneTexture(color_tex);
    return copy;
}

bool Mirror_BRDF::isEqual(const std::shared_ptr<Base_BRDF>& other) {
    if (!other || other->getType() != getType()) return false;
    const auto& o = static_cast<const Mirror_BRDF&>(*other);
    return sameTexture(transparency_tex, o.transparency_tex) &&
           sameTexture(color_tex, o.color_tex) && sameColor(color, o.color) &&
           sameColor(reflectFilter, o.reflectFilter) &&
           sameFloat(transparency_tex_mult, o.transparency_tex_mult) &&
           sameFloat(cutoff, o.cutoff) && mirrorMode == o.mirrorMode &&
           sameFloat(color_tex_mult, o.color_tex_mult);
}

int Mirror_BRDF::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + name;
    const TextureSlots slots = {
        {transparency_tex, "transparency_texture", "transparency_tex"},
        {color_tex, "color_texture", "color_tex"},
    };
    writeSlotChildren(writer, url, slots);
    beginLayerAsset(writer, *this, url);
    writer.writeColor("color", color);
    writer.writeColor("transparency", invertedFilter(reflectFilter));
    writer.writeFloat("color_tex_mult", color_tex_mult);
    writer.writeFloat("transparency_tex_mult", transparency_tex_mult);
    writer.writeFloat("cutoff", cutoff);
    writeSlotParameters(writer, url, slots);
    endLayerAsset(writer);
    return 0;
}

}  // namespace CorvaneCore
