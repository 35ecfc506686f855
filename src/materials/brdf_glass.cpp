#include "archive/compare.h"
#include "archive/read_helpers.h"
#include "materials/brdf_slots.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

namespace {
constexpr uint32_t kGlassVersion = 6;
}  // namespace

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

// Fields 1 to 11, which every version begins with.
void Glass_BRDF::readCommonFields(QuickArchive& archive) {
    archive.read(color);
    archive.read(fog_color);
    archive.read(ior);
    archive.read(secondIor);
    archive.read(cutoff);
    archive.read(fog_color_mult);
    archive.read(glossiness);
    archive.read(traceDepth);
    archive.read(subdivs);
    archive.read(affect_shadows);
    archive.read(affect_alpha);
}

// Fields 15 to 20.
void Glass_BRDF::readTranslucencyFields(QuickArchive& archive) {
    archive.read(translucency_on);
    archive.read(thickness);
    archive.read(scatter_coeff);
    archive.read(scatter_direction);
    archive.read(translucency_tex_mult);
    archive.read(translucency);
}

bool Glass_BRDF::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    const bool minorOk = readVersion(archive, major);
    resetBase();
    if (!minorOk || major < 1 || major > kGlassVersion) return false;

    readCommonFields(archive);
    if (major == 1) return true;

    if (major <= 4) {
        // Until version 5 the transparency multiplier stood where the colour multiplier
        // stands now.
        archive.read(transparency_tex_mult);
        archive.read(glossiness_tex_mult);
        archive.read(ior_tex_mult);
        if (major == 4) {
            readTranslucencyFields(archive);
            return readTextureSlot(archive, transparency_tex) &&
                   readTextureSlot(archive, glossiness_tex) &&
                   readTextureSlot(archive, ior_texture) &&
                   readTextureSlot(archive, translucency_tex);
        }
        const std::u16string transparencyPath = readPathText(archive);
        const std::u16string glossinessPath = readPathText(archive);
        const std::u16string iorPath = readPathText(archive);
        transparency_tex = textureFromPath(transparencyPath);
        glossiness_tex = textureFromPath(glossinessPath);
        ior_texture = textureFromPath(iorPath);
        if (major == 3) {
            readTranslucencyFields(archive);
            readPathSlot(archive, translucency_tex);
        }
        return true;
    }

    archive.read(color_tex_mult);
    archive.read(glossiness_tex_mult);
    archive.read(ior_tex_mult);
    readTranslucencyFields(archive);
    if (!readTextureSlot(archive, color_tex) || !readTextureSlot(archive, glossiness_tex) ||
        !readTextureSlot(archive, ior_texture) || !readTextureSlot(archive, translucency_tex)) {
        return false;
    }
    archive.read(transparency);
    archive.read(transparency_tex_mult);
    if (!readTextureSlot(archive, transparency_tex)) return false;
    return major == 5 || readBaseSection(archive);
}

bool Glass_BRDF::serialize(QuickArchive& archive) {
    writeVersion(archive, kGlassVersion);
    archive.write(color);
    archive.write(fog_color);
    archive.write(ior);
    archive.write(secondIor);
    archive.write(cutoff);
    archive.write(fog_color_mult);
    archive.write(glossiness);
    archive.write(traceDepth);
    archive.write(subdivs);
    archive.write(affect_shadows);
    archive.write(affect_alpha);
    archive.write(color_tex_mult);
    archive.write(glossiness_tex_mult);
    archive.write(ior_tex_mult);
    archive.write(translucency_on);
    archive.write(thickness);
    archive.write(scatter_coeff);
    archive.write(scatter_direction);
    archive.write(translucency_tex_mult);
    archive.write(translucency);
    if (!writeTextureSlot(archive, color_tex) || !writeTextureSlot(archive, glossiness_tex) ||
        !writeTextureSlot(archive, ior_texture) || !writeTextureSlot(archive, translucency_tex)) {
        return false;
    }
    archive.write(transparency);
    archive.write(transparency_tex_mult);
    if (!writeTextureSlot(archive, transparency_tex)) return false;
    writeBaseSection(archive);
    return true;
}

std::shared_ptr<Base_BRDF> Glass_BRDF::clone() {
    auto copy = std::make_shared<Glass_BRDF>(*this);
    copy->color_tex = cloneTexture(color_tex);
    copy->glossiness_tex = cloneTexture(glossiness_tex);
    copy->ior_texture = cloneTexture(ior_texture);
    copy->translucency_tex = cloneTexture(translucency_tex);
    copy->transparency_tex = cloneTexture(transparency_tex);
    return copy;
}

bool Glass_BRDF::isEqual(const std::shared_ptr<Base_BRDF>& other) {
    if (!other || other->getType() != getType()) return false;
    const auto& o = static_cast<const Glass_BRDF&>(*other);
    return sameTexture(color_tex, o.color_tex) && sameTexture(glossiness_tex, o.glossiness_tex) &&
           sameTexture(ior_texture, o.ior_texture) &&
           sameTexture(translucency_tex, o.translucency_tex) &&
           sameTexture(transparency_tex, o.transparency_tex) && sameColor(color, o.color) &&
           sameColor(fog_color, o.fog_color) && sameFloat(ior, o.ior) &&
           sameFloat(secondIor, o.secondIor) && sameFloat(cutoff, o.cutoff) &&
           sameFloat(fog_color_mult, o.fog_color_mult) && sameFloat(glossiness, o.glossiness) &&
           traceDepth == o.traceDepth && subdivs == o.subdivs &&
           affect_shadows == o.affect_shadows && affect_alpha == o.affect_alpha &&
           sameFloat(color_tex_mult, o.color_tex_mult) &&
           sameFloat(glossiness_tex_mult, o.glossiness_tex_mult) &&
           sameFloat(ior_tex_mult, o.ior_tex_mult) && translucency_on == o.translucency_on &&
           sameFloat(thickness, o.thickness) && sameFloat(scatter_coeff, o.scatter_coeff) &&
           sameFloat(scatter_direction, o.scatter_direction) &&
           sameFloat(translucency_tex_mult, o.translucency_tex_mult) &&
           sameColor(translucency, o.translucency) && sameColor(transparency, o.transparency) &&
           sameFloat(transparency_tex_mult, o.transparency_tex_mult);
}

int Glass_BRDF::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + name;
    const TextureSlots slots = {
        {transparency_tex, "transparency_texture", "transparency_tex"},
        {color_tex, "color_texture", "color_tex"},
        {glossiness_tex, "glossy_texture", "glossiness_tex"},
        {ior_texture, "ior_texture", "ior_texture"},
        {translucency_tex, "translucency_texture", "translucency_tex"},
    };
    writeSlotChildren(writer, url, slots);
    beginLayerAsset(writer, *this, url);
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
    writeSlotParameters(writer, url, slots);
    endLayerAsset(writer);
    return 0;
}

}  // namespace CorvaneCore
