#include "archive/compare.h"
#include "archive/read_helpers.h"
#include "materials/brdf_slots.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

namespace {
constexpr uint32_t kReflectionVersion = 6;
}  // namespace

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
    const bool minorOk = readVersion(archive, major);
    setDefaults();
    if (!minorOk || major < 1 || major > kReflectionVersion) return false;
    // The default fresnel texture is not part of any stored layout: a stored slot or the old
    // fresnel flag alone decides.
    transparency_tex.reset();
    return major == kReflectionVersion ? readCurrentLayout(archive) : readOldLayout(archive, major);
}

// Versions 1 to 5 still hold the fresnel flag and index that became a texture.
bool ReflectionBRDF::readOldLayout(QuickArchive& archive, uint32_t major) {
    float fresnelIor = 0;
    int32_t fresnelOn = 0;
    archive.read(color);
    archive.read(reflectFilter);
    archive.read(hilightGlossiness);
    archive.read(reflectionGlossiness);
    archive.read(fresnelIor);
    archive.read(cutoff);
    archive.read(subdivs);
    archive.read(fresnelOn);
    archive.read(back_side);
    archive.read(traceDepth);
    if (major >= 2) {
        archive.read(color_tex_mult);
        archive.read(hilightGlossiness_tex_mult);
        archive.read(reflectionGlossiness_tex_mult);
    }
    if (major == 2 || major == 3) {
        readPathSlot(archive, color_tex);
        readPathSlot(archive, hilightGlossiness_tex);
        readPathSlot(archive, reflectionGlossiness_tex);
    } else if (major >= 4) {
        if (!readTextureSlot(archive, color_tex) ||
            !readTextureSlot(archive, hilightGlossiness_tex) ||
            !readTextureSlot(archive, reflectionGlossiness_tex)) {
            return false;
        }
    }
    if (fresnelOn != 0) transparency_tex = fresnelFromOldFields(fresnelIor);
    if (major >= 3) {
        archive.read(anisotropy);
        archive.read(anisotropy_rotation);
    }
    return major < 5 || readBaseSection(archive);
}

bool ReflectionBRDF::readCurrentLayout(QuickArchive& archive) {
    archive.read(color);
    archive.read(reflectFilter);
    archive.read(hilightGlossiness);
    archive.read(reflectionGlossiness);
    archive.read(cutoff);
    archive.read(subdivs);
    archive.read(back_side);
    archive.read(traceDepth);
    archive.read(color_tex_mult);
    archive.read(hilightGlossiness_tex_mult);
    archive.read(reflectionGlossiness_tex_mult);
    archive.read(transparency_tex_mult);
    if (!readTextureSlot(archive, color_tex) || !readTextureSlot(archive, hilightGlossiness_tex) ||
        !readTextureSlot(archive, reflectionGlossiness_tex) ||
        !readTextureSlot(archive, transparency_tex)) {
        return false;
    }
    archive.read(anisotropy);
    archive.read(anisotropy_rotation);
    return readBaseSection(archive);
}

bool ReflectionBRDF::serialize(QuickArchive& archive) {
    writeVersion(archive, kReflectionVersion);
    archive.write(color);
    archive.write(reflectFilter);
    archive.write(hilightGlossiness);
    archive.write(reflectionGlossiness);
    archive.write(cutoff);
    archive.write(subdivs);
    archive.write(back_side);
    archive.write(traceDepth);
    archive.write(color_tex_mult);
    archive.write(hilightGlossiness_tex_mult);
    archive.write(reflectionGlossiness_tex_mult);
    archive.write(transparency_tex_mult);
    if (!writeTextureSlot(archive, color_tex) ||
        !writeTextureSlot(archive, hilightGlossiness_tex) ||
        !writeTextureSlot(archive, reflectionGlossiness_tex) ||
        !writeTextureSlot(archive, transparency_tex)) {
        return false;
    }
    archive.write(anisotropy);
    archive.write(anisotropy_rotation);
    writeBaseSection(archive);
    return true;
}

void ReflectionBRDF::cloneChildren() {
    color_tex = cloneTexture(color_tex);
    hilightGlossiness_tex = cloneTexture(hilightGlossiness_tex);
    reflectionGlossiness_tex = cloneTexture(reflectionGlossiness_tex);
    transparency_tex = cloneTexture(transparency_tex);
}

std::shared_ptr<Base_BRDF> Blinn_BRDF::clone() {
    auto copy = std::make_shared<Blinn_BRDF>(*this);
    copy->cloneChildren();
    return copy;
}

std::shared_ptr<Base_BRDF> Phong_BRDF::clone() {
    auto copy = std::make_shared<Phong_BRDF>(*this);
    copy->cloneChildren();
    return copy;
}

bool ReflectionBRDF::isEqual(const std::shared_ptr<Base_BRDF>& other) {
    if (!other || other->getType() != getType()) return false;
    const auto& o = static_cast<const ReflectionBRDF&>(*other);
    return sameTexture(color_tex, o.color_tex) &&
           sameTexture(hilightGlossiness_tex, o.hilightGlossiness_tex) &&
           sameTexture(reflectionGlossiness_tex, o.reflectionGlossiness_tex) &&
           sameTexture(transparency_tex, o.transparency_tex) && sameColor(color, o.color) &&
           sameColor(reflectFilter, o.reflectFilter) &&
           sameFloat(hilightGlossiness, o.hilightGlossiness) &&
           sameFloat(reflectionGlossiness, o.reflectionGlossiness) && sameFloat(cutoff, o.cutoff) &&
           subdivs == o.subdivs && back_side == o.back_side && traceDepth == o.traceDepth &&
           sameFloat(color_tex_mult, o.color_tex_mult) &&
           sameFloat(hilightGlossiness_tex_mult, o.hilightGlossiness_tex_mult) &&
           sameFloat(reflectionGlossiness_tex_mult, o.reflectionGlossiness_tex_mult) &&
           sameFloat(transparency_tex_mult, o.transparency_tex_mult) &&
           sameFloat(anisotropy, o.anisotropy) &&
           sameFloat(anisotropy_rotation, o.anisotropy_rotation);
}

int ReflectionBRDF::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + name;
    const TextureSlots slots = {
        {color_tex, "color_texture", "color_tex"},
        {hilightGlossiness_tex, "hilight_glossiness_texture", "hilightGlossiness_tex"},
        {reflectionGlossiness_tex, "reflection_glossiness_texture", "reflectionGlossiness_tex"},
        {transparency_tex, "transparency_texture", "transparency_tex"},
    };
    writeSlotChildren(writer, url, slots);
    beginLayerAsset(writer, *this, url);
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
    writeSlotParameters(writer, url, slots);
    endLayerAsset(writer);
    return 0;
}

}  // namespace CorvaneCore
