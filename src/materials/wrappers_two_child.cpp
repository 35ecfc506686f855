// The wrappers around two materials: two-sided, the host's two-sided, and the angle blend.
// The folded output gives each its own layout block (material_file.cpp); their own writeXML
// below serves the scene's material set.
#include "archive/compare.h"
#include "archive/read_helpers.h"
#include "materials/brdf_slots.h"
#include "materials/wrappers.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

namespace {
constexpr uint32_t k2SidedVersion = 3;
constexpr uint32_t kSkp2SidedVersion = 1;
constexpr uint32_t kAngleBlendVersion = 1;
}  // namespace

// ---------------------------------------------------------------- two-sided

void Material2Sided::setDefaults() {
    front.reset();
    back.reset();
    translucency_tex.reset();
    transparency_tex.reset();
    translucency = Color(0, 0, 0);
    transparency = Color(0, 0, 0);
    translucency_tex_mult = 1.0f;
    transparency_tex_mult = 1.0f;
    force_1sided = false;
}

bool Material2Sided::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readVersion(archive, major) || major < 1 || major > k2SidedVersion) return false;
    if (!readMaterialSlot(archive, front) || !readMaterialSlot(archive, back) ||
        !readTextureSlot(archive, translucency_tex)) {
        return false;
    }
    archive.read(translucency);
    archive.read(translucency_tex_mult);
    archive.read(force_1sided);
    if (major == 1) return true;
    if (!readTextureSlot(archive, transparency_tex)) return false;
    archive.read(transparency);
    archive.read(transparency_tex_mult);
    if (major == 2) return true;
    return readMaterialSection(archive);
}

bool Material2Sided::serialize(QuickArchive& archive) {
    writeVersion(archive, k2SidedVersion);
    if (!writeMaterialSlot(archive, front) || !writeMaterialSlot(archive, back) ||
        !writeTextureSlot(archive, translucency_tex)) {
        return false;
    }
    archive.write(translucency);
    archive.write(translucency_tex_mult);
    archive.write(force_1sided);
    if (!writeTextureSlot(archive, transparency_tex)) return false;
    archive.write(transparency);
    archive.write(transparency_tex_mult);
    writeMaterialSection(archive);
    return true;
}

void Material2Sided::duplicateChildren(MaterialDuplicator duplicate) {
    front = duplicate(front);
    back = duplicate(back);
    translucency_tex = cloneTexture(translucency_tex);
    transparency_tex = cloneTexture(transparency_tex);
}

bool Material2Sided::isEqual(const MaterialPtr& other) {
    if (!other || other->getType() != getType()) return false;
    const auto& o = static_cast<const Material2Sided&>(*other);
    return sameMaterial(front, o.front) && sameMaterial(back, o.back) &&
           sameTexture(translucency_tex, o.translucency_tex) &&
           sameTexture(transparency_tex, o.transparency_tex) &&
           sameColor(translucency, o.translucency) && sameColor(transparency, o.transparency) &&
           sameFloat(translucency_tex_mult, o.translucency_tex_mult) &&
           sameFloat(transparency_tex_mult, o.transparency_tex_mult) &&
           force_1sided == o.force_1sided;
}

int Material2Sided::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + name;
    writeChildMaterial(writer, front, url);
    writeChildMaterial(writer, back, url);
    const TextureSlots slots = {
        {translucency_tex, "translucency_tex", "translucency_tex"},
        {transparency_tex, "transparency_tex", "transparency_tex"},
    };
    writeSlotChildren(writer, url, slots);
    beginMaterialAsset(writer, *this, url);
    writeMaterialParameter(writer, "front", front, url);
    writeMaterialParameter(writer, "back", back, url);
    writeSlotParameters(writer, url, slots);
    writer.writeColor("translucency", translucency);
    writer.writeColor("transparency", transparency);
    writer.writeFloat("translucency_tex_mult", translucency_tex_mult);
    writer.writeFloat("transparency_tex_mult", transparency_tex_mult);
    writer.writeBool("force_1sided", force_1sided);
    endMaterialAsset(writer);
    return 0;
}

// ---------------------------------------------------------------- host two-sided

void MaterialSkp2Sided::setDefaults() {
    front.reset();
    back.reset();
    force_1sided = false;
}

bool MaterialSkp2Sided::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readVersion(archive, major) || major != kSkp2SidedVersion) return false;
    if (!readMaterialSection(archive)) return false;
    if (!readMaterialSlot(archive, front) || !readMaterialSlot(archive, back)) return false;
    archive.read(force_1sided);
    return true;
}

bool MaterialSkp2Sided::serialize(QuickArchive& archive) {
    writeVersion(archive, kSkp2SidedVersion);
    writeMaterialSection(archive);
    if (!writeMaterialSlot(archive, front) || !writeMaterialSlot(archive, back)) return false;
    archive.write(force_1sided);
    return true;
}

void MaterialSkp2Sided::duplicateChildren(MaterialDuplicator duplicate) {
    front = duplicate(front);
    back = duplicate(back);
}

bool MaterialSkp2Sided::isEqual(const MaterialPtr& other) {
    if (!other || other->getType() != getType()) return false;
    const auto& o = static_cast<const MaterialSkp2Sided&>(*other);
    return sameMaterial(front, o.front) && sameMaterial(back, o.back) &&
           force_1sided == o.force_1sided;
}

int MaterialSkp2Sided::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + name;
    writeChildMaterial(writer, front, url);
    writeChildMaterial(writer, back, url);
    beginMaterialAsset(writer, *this, url);
    writeMaterialParameter(writer, "front", front, url);
    writeMaterialParameter(writer, "back", back, url);
    writer.writeBool("force_1sided", force_1sided);
    endMaterialAsset(writer);
    return 0;
}

// ---------------------------------------------------------------- angle blend

void MaterialAngleBlend::setDefaults() {
    mtl_one.reset();
    mtl_two.reset();
    start_angle = 75.0f;
    stop_angle = 150.0f;
}

bool MaterialAngleBlend::deserialize(QuickArchive& archive) {
    setDefaults();
    uint32_t major = 0;
    if (!readVersion(archive, major) || major != kAngleBlendVersion) return false;
    if (!readMaterialSection(archive)) return false;
    if (!readMaterialSlot(archive, mtl_one) || !readMaterialSlot(archive, mtl_two)) return false;
    archive.read(start_angle);
    archive.read(stop_angle);
    return true;
}

bool MaterialAngleBlend::serialize(QuickArchive& archive) {
    writeVersion(archive, kAngleBlendVersion);
    writeMaterialSection(archive);
    if (!writeMaterialSlot(archive, mtl_one) || !writeMaterialSlot(archive, mtl_two)) return false;
    archive.write(start_angle);
    archive.write(stop_angle);
    return true;
}

void MaterialAngleBlend::duplicateChildren(MaterialDuplicator duplicate) {
    mtl_one = duplicate(mtl_one);
    mtl_two = duplicate(mtl_two);
}

bool MaterialAngleBlend::isEqual(const MaterialPtr& other) {
    if (!other || other->getType() != getType()) return false;
    const auto& o = static_cast<const MaterialAngleBlend&>(*other);
    return sameMaterial(mtl_one, o.mtl_one) && sameMaterial(mtl_two, o.mtl_two) &&
           sameFloat(start_angle, o.start_angle) && sameFloat(stop_angle, o.stop_angle);
}

int MaterialAngleBlend::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + name;
    writeChildMaterial(writer, mtl_one, url);
    writeChildMaterial(writer, mtl_two, url);
    beginMaterialAsset(writer, *this, url);
    writeMaterialParameter(writer, "mtl_one", mtl_one, url);
    writeMaterialParameter(writer, "mtl_two", mtl_two, url);
    writer.writeFloat("start_angle", start_angle);
    writer.writeFloat("stop_angle", stop_angle);
    endMaterialAsset(writer);
    return 0;
}

}  // namespace CorvaneCore
