// The wrappers that the folded output merges into the block of the layered material below
// them: bump, environment override, displacement, object exclusion and alpha contribution.
// Each gives its textures ahead of that block and its parameters behind the layer list.
#include "archive/compare.h"
#include "archive/read_helpers.h"
#include "materials/brdf_slots.h"
#include "materials/wrappers.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

namespace {
constexpr uint32_t kBumpVersion = 3;
constexpr uint32_t kOverrideEnvironmentVersion = 1;
constexpr uint32_t kDisplacedVersion = 2;
constexpr uint32_t kObjectExclusionVersion = 3;
constexpr uint32_t kAlphaContributionVersion = 1;
}  // namespace

// ---------------------------------------------------------------- bump

void MaterialBump::setDefaults() {
    resetMaterialBase();
    base_mtl.reset();
    bump_tex.reset();
    bump_tex_mult = 1.0f;
}

bool MaterialBump::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readVersion(archive, major) || major < 1 || major > kBumpVersion) return false;
    switch (major) {
        case 1: {
            readBareName(archive);
            const std::u16string path = readPathText(archive);
            archive.read(bump_tex_mult);
            bump_tex = textureFromPath(path);
            // The base material becomes base_mtl only once it has read itself.
            return readBareMaterial(archive, base_mtl);
        }
        case 2:
            archive.read(name);
            archive.read(bump_tex_mult);
            return readTextureSlot(archive, bump_tex) && readBareMaterial(archive, base_mtl);
        default:
            archive.read(bump_tex_mult);
            return readTextureSlot(archive, bump_tex) && readBareMaterial(archive, base_mtl) &&
                   readMaterialSection(archive);
    }
}

bool MaterialBump::serialize(QuickArchive& archive) {
    if (!base_mtl) return false;
    writeVersion(archive, kBumpVersion);
    archive.write(bump_tex_mult);
    if (!writeTextureSlot(archive, bump_tex) || !writeBareMaterial(archive, base_mtl)) {
        return false;
    }
    writeMaterialSection(archive);
    return true;
}

void MaterialBump::duplicateChildren(MaterialDuplicator duplicate) {
    base_mtl = duplicate(base_mtl);
    bump_tex = cloneTexture(bump_tex);
}

bool MaterialBump::isEqual(const MaterialPtr& other) {
    if (!other || other->getType() != getType()) return false;
    const auto& o = static_cast<const MaterialBump&>(*other);
    return sameMaterial(base_mtl, o.base_mtl) && sameTexture(bump_tex, o.bump_tex) &&
           sameFloat(bump_tex_mult, o.bump_tex_mult);
}

int MaterialBump::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + name;
    writeChildMaterial(writer, base_mtl, url);
    const TextureSlots slots = {{bump_tex, "bump_tex", "bump_tex"}};
    writeSlotChildren(writer, url, slots);
    beginMaterialAsset(writer, *this, url);
    writer.writeFloat("bump_tex_mult", bump_tex_mult);
    writeMaterialParameter(writer, "base_mtl", base_mtl, url);
    writeSlotParameters(writer, url, slots);
    endMaterialAsset(writer);
    return 0;
}

void MaterialBump::writeFoldedTextures(AssetXmlWriter& writer, const std::u16string& url) {
    writeSlotChildren(writer, url, {{bump_tex, "bump_tex", "bump_tex"}});
}

void MaterialBump::writeFoldedParameters(AssetXmlWriter& writer, const std::u16string& url) {
    writer.writeBool("bump_on", true);
    writer.writeFloat("bump_tex_mult", bump_tex_mult);
    writeSlotParameters(writer, url, {{bump_tex, "bump_tex", "bump_tex"}});
}

// ---------------------------------------------------------------- environment override

void MaterialOverrideEnvironment::setDefaults() {
    base_mtl.reset();
    bg_tex.reset();
    gi_tex.reset();
    reflect_tex.reset();
    refract_tex.reset();
    bg_color = gi_color = reflect_color = refract_color = Color(0, 0, 0);
    bg_tex_mult = gi_tex_mult = reflect_tex_mult = refract_tex_mult = 1.0f;
    override_bg = override_gi = override_reflect = override_refract = false;
}

// In the stream bg stands before gi; the folded output walks the textures gi first.
bool MaterialOverrideEnvironment::deserialize(QuickArchive& archive) {
    setDefaults();
    uint32_t major = 0;
    if (!readVersion(archive, major) || major != kOverrideEnvironmentVersion) return false;
    if (!readMaterialSection(archive) || !readMaterialSlot(archive, base_mtl)) return false;
    for (TexturePtr* slot : {&bg_tex, &gi_tex, &reflect_tex, &refract_tex}) {
        if (!readTextureSlot(archive, *slot)) return false;
    }
    for (Color* color : {&bg_color, &gi_color, &reflect_color, &refract_color}) {
        archive.read(*color);
    }
    for (float* mult : {&bg_tex_mult, &gi_tex_mult, &reflect_tex_mult, &refract_tex_mult}) {
        archive.read(*mult);
    }
    for (bool* flag : {&override_bg, &override_gi, &override_reflect, &override_refract}) {
        archive.read(*flag);
    }
    return true;
}

bool MaterialOverrideEnvironment::serialize(QuickArchive& archive) {
    writeVersion(archive, kOverrideEnvironmentVersion);
    writeMaterialSection(archive);
    if (!writeMaterialSlot(archive, base_mtl)) return false;
    for (const TexturePtr* slot : {&bg_tex, &gi_tex, &reflect_tex, &refract_tex}) {
        if (!writeTextureSlot(archive, *slot)) return false;
    }
    for (const Color* color : {&bg_color, &gi_color, &reflect_color, &refract_color}) {
        archive.write(*color);
    }
    for (float mult : {bg_tex_mult, gi_tex_mult, reflect_tex_mult, refract_tex_mult}) {
        archive.write(mult);
    }
    for (bool flag : {override_bg, override_gi, override_reflect, override_refract}) {
        archive.write(flag);
    }
    return true;
}

void MaterialOverrideEnvironment::duplicateChildren(MaterialDuplicator duplicate) {
    base_mtl = duplicate(base_mtl);
    for (TexturePtr* slot : {&bg_tex, &gi_tex, &reflect_tex, &refract_tex}) {
        *slot = cloneTexture(*slot);
    }
}

bool MaterialOverrideEnvironment::isEqual(const MaterialPtr& other) {
    if (!other || other->getType() != getType()) return false;
    const auto& o = static_cast<const MaterialOverrideEnvironment&>(*other);
    return sameMaterial(base_mtl, o.base_mtl) && sameTexture(bg_tex, o.bg_tex) &&
           sameTexture(gi_tex, o.gi_tex) && sameTexture(reflect_tex, o.reflect_tex) &&
           sameTexture(refract_tex, o.refract_tex) && sameColor(bg_color, o.bg_color) &&
           sameColor(gi_color, o.gi_color) && sameColor(reflect_color, o.reflect_color) &&
           sameColor(refract_color, o.refract_color) && sameFloat(bg_tex_mult, o.bg_tex_mult) &&
           sameFloat(gi_tex_mult, o.gi_tex_mult) &&
           sameFloat(reflect_tex_mult, o.reflect_tex_mult) &&
           sameFloat(refract_tex_mult, o.refract_tex_mult) && override_bg == o.override_bg &&
           override_gi == o.override_gi && override_reflect == o.override_reflect &&
           override_refract == o.override_refract;
}

int MaterialOverrideEnvironment::writeXML(AssetXmlWriter& writer, std::u16string url) {
    writeChildMaterial(writer, base_mtl, url);
    return 0;
}

void MaterialOverrideEnvironment::writeFoldedTextures(AssetXmlWriter& writer,
                                                      const std::u16string& url) {
    writeSlotChildren(writer, url,
                      {{gi_tex, "gi_tex", "gi_tex"},
                       {bg_tex, "bg_tex", "bg_tex"},
                       {reflect_tex, "reflect_tex", "reflect_tex"},
                       {refract_tex, "refract_tex", "refract_tex"}});
}

void MaterialOverrideEnvironment::writeFoldedParameters(AssetXmlWriter& writer,
                                                        const std::u16string& url) {
    writeSlotParameters(writer, url,
                        {{gi_tex, "gi_tex", "gi_tex"},
                         {bg_tex, "bg_tex", "bg_tex"},
                         {reflect_tex, "reflect_tex", "reflect_tex"},
                         {refract_tex, "refract_tex", "refract_tex"}});
    writer.writeColor("gi_color", gi_color);
    writer.writeColor("bg_color", bg_color);
    writer.writeColor("reflect_color", reflect_color);
    writer.writeColor("refract_color", refract_color);
    writer.writeFloat("bg_tex_mult", bg_tex_mult);
    writer.writeFloat("gi_tex_mult", gi_tex_mult);
    writer.writeFloat("reflect_tex_mult", reflect_tex_mult);
    writer.writeFloat("refract_tex_mult", refract_tex_mult);
    writer.writeBool("override_bg", override_bg);
    writer.writeBool("override_gi", override_gi);
    writer.writeBool("override_reflect", override_reflect);
    writer.writeBool("override_refract", override_refract);
}

// ---------------------------------------------------------------- displacement

void MaterialDisplaced::setDefaults() {
    base_mtl.reset();
    displace_tex.reset();
    displace_tex_mult = 1.0f;
    displace_shift = 0.0f;
    displace_edge_length = 4.0f;
    displace_max_subdivs = 256;
    displace_continuity = 1;
    displace_view_dependent = 1;
    displace_use_globals = 1;
}

bool MaterialDisplaced::deserialize(QuickArchive& archive) {
    setDefaults();
    uint32_t major = 0;
    if (!readVersion(archive, major) || major < 1 || major > kDisplacedVersion) return false;
    if (!readMaterialSection(archive) || !readMaterialSlot(archive, base_mtl) ||
        !readTextureSlot(archive, displace_tex)) {
        return false;
    }
    archive.read(displace_tex_mult);
    if (major == 1) return true;
    archive.read(displace_shift);
    archive.read(displace_edge_length);
    archive.read(displace_max_subdivs);
    archive.read(displace_continuity);
    archive.read(displace_view_dependent);
    archive.read(displace_use_globals);
    return true;
}

bool MaterialDisplaced::serialize(QuickArchive& archive) {
    writeVersion(archive, kDisplacedVersion);
    writeMaterialSection(archive);
    if (!writeMaterialSlot(archive, base_mtl) || !writeTextureSlot(archive, displace_tex)) {
        return false;
    }
    archive.write(displace_tex_mult);
    archive.write(displace_shift);
    archive.write(displace_edge_length);
    archive.write(displace_max_subdivs);
    archive.write(displace_continuity);
    archive.write(displace_view_dependent);
    archive.write(displace_use_globals);
    return true;
}

void MaterialDisplaced::duplicateChildren(MaterialDuplicator duplicate) {
    base_mtl = duplicate(base_mtl);
    displace_tex = cloneTexture(displace_tex);
}

bool MaterialDisplaced::isEqual(const MaterialPtr& other) {
    if (!other || other->getType() != getType()) return false;
    const auto& o = static_cast<const MaterialDisplaced&>(*other);
    return sameMaterial(base_mtl, o.base_mtl) && sameTexture(displace_tex, o.displace_tex) &&
           sameFloat(displace_tex_mult, o.displace_tex_mult) &&
           sameFloat(displace_shift, o.displace_shift) &&
           sameFloat(displace_edge_length, o.displace_edge_length) &&
           displace_max_subdivs == o.displace_max_subdivs &&
           displace_continuity == o.displace_continuity &&
           displace_view_dependent == o.displace_view_dependent &&
           displace_use_globals == o.displace_use_globals;
}

int MaterialDisplaced::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + name;
    writeChildMaterial(writer, base_mtl, url);
    return 0;
}

void MaterialDisplaced::writeFoldedTextures(AssetXmlWriter& writer, const std::u16string& url) {
    writeSlotChildren(writer, url, {{displace_tex, "displace_tex", "displace_tex"}});
}

void MaterialDisplaced::writeFoldedParameters(AssetXmlWriter& writer, const std::u16string& url) {
    writer.writeBool("displace_on", true);
    writer.writeFloat("displace_shift", displace_shift);
    writer.writeFloat("displace_edge_length", displace_edge_length);
    writer.writeFloat("displace_tex_mult", displace_tex_mult);
    writer.writeInteger("displace_max_subdivs", displace_max_subdivs);
    writer.writeInteger("displace_continuity", displace_continuity);
    writer.writeInteger("displace_view_dependent", displace_view_dependent);
    writer.writeInteger("displace_use_globals", displace_use_globals);
    writeSlotParameters(writer, url, {{displace_tex, "displace_tex", "displace_tex"}});
}

// ---------------------------------------------------------------- object exclusion

void MaterialObjectExclusion::setDefaults() {
    mode = 0;
    base_mtl.reset();
    objects.clear();
    short_circuit = true;
}

// The count comes from the record: past the last byte every entry would read as an empty
// string, so a list that runs past the end is refused instead of being filled with them.
bool MaterialObjectExclusion::readObjects(QuickArchive& archive) {
    uint32_t count = 0;
    archive.read(count);
    for (uint32_t i = 0; i < count; ++i) {
        if (archive.remaining() == 0) {
            // Entries past the end of the data read as empty strings. The first is kept; the
            // rest would only repeat it, and a declared count must not size the list.
            objects.emplace_back();
            return true;
        }
        std::u16string object;
        archive.read(object);
        objects.push_back(object);
    }
    return true;
}

bool MaterialObjectExclusion::deserialize(QuickArchive& archive) {
    setDefaults();
    uint32_t major = 0;
    if (!readVersion(archive, major) || major < 1 || major > kObjectExclusionVersion) {
        return false;
    }
    archive.read(mode);
    if (!readMaterialSlot(archive, base_mtl) || !readObjects(archive)) return false;
    if (major == 1) return true;
    if (!readMaterialSection(archive)) return false;
    if (major == 3) archive.read(short_circuit);
    return true;
}

bool MaterialObjectExclusion::serialize(QuickArchive& archive) {
    writeVersion(archive, kObjectExclusionVersion);
    archive.write(mode);
    if (!writeMaterialSlot(archive, base_mtl)) return false;
    archive.write(static_cast<uint32_t>(objects.size()));
    for (const std::u16string& object : objects) archive.write(object);
    writeMaterialSection(archive);
    archive.write(short_circuit);
    return true;
}

bool MaterialObjectExclusion::isEqual(const MaterialPtr& other) {
    if (!other || other->getType() != getType()) return false;
    const auto& o = static_cast<const MaterialObjectExclusion&>(*other);
    return sameMaterial(base_mtl, o.base_mtl) && mode == o.mode && objects == o.objects &&
           short_circuit == o.short_circuit;
}

int MaterialObjectExclusion::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + name;
    writeChildMaterial(writer, base_mtl, url);
    beginMaterialAsset(writer, *this, url);
    writeMaterialParameter(writer, "base_mtl", base_mtl, url);
    writer.writeInteger("mode", mode);
    writer.writeBool("short_circuit", short_circuit);
    writer.beginList("objects", "");
    for (const std::u16string& object : objects) writer.writeStringEntry(object);
    writer.endList();
    endMaterialAsset(writer);
    return 0;
}

// Only the two switches fold; the object list does not.
void MaterialObjectExclusion::writeFoldedParameters(AssetXmlWriter& writer, const std::u16string&) {
    writer.writeBool("ignore_objects", mode != 0);
    writer.writeBool("short_circuit", short_circuit);
}

// ---------------------------------------------------------------- alpha contribution

void MaterialAlphaContribution::setDefaults() {
    base_mtl.reset();
    alpha_tex.reset();
    alpha_tex_mult = 1.0f;
    alpha = 1.0f;
}

bool MaterialAlphaContribution::deserialize(QuickArchive& archive) {
    setDefaults();
    uint32_t major = 0;
    if (!readVersion(archive, major) || major != kAlphaContributionVersion) return false;
    if (!readMaterialSection(archive) || !readMaterialSlot(archive, base_mtl) ||
        !readTextureSlot(archive, alpha_tex)) {
        return false;
    }
    archive.read(alpha_tex_mult);
    archive.read(alpha);
    return true;
}

bool MaterialAlphaContribution::serialize(QuickArchive& archive) {
    writeVersion(archive, kAlphaContributionVersion);
    writeMaterialSection(archive);
    if (!writeMaterialSlot(archive, base_mtl) || !writeTextureSlot(archive, alpha_tex)) {
        return false;
    }
    archive.write(alpha_tex_mult);
    archive.write(alpha);
    return true;
}

void MaterialAlphaContribution::duplicateChildren(MaterialDuplicator duplicate) {
    base_mtl = duplicate(base_mtl);
    alpha_tex = cloneTexture(alpha_tex);
}

bool MaterialAlphaContribution::isEqual(const MaterialPtr& other) {
    if (!other || other->getType() != getType()) return false;
    const auto& o = static_cast<const MaterialAlphaContribution&>(*other);
    return sameMaterial(base_mtl, o.base_mtl) && sameTexture(alpha_tex, o.alpha_tex) &&
           sameFloat(alpha_tex_mult, o.alpha_tex_mult) && sameFloat(alpha, o.alpha);
}

int MaterialAlphaContribution::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + name;
    writeChildMaterial(writer, base_mtl, url);
    const TextureSlots slots = {{alpha_tex, "alpha_tex", "alpha_tex"}};
    writeSlotChildren(writer, url, slots);
    beginMaterialAsset(writer, *this, url);
    writer.writeFloat("alpha", alpha);
    writer.writeFloat("alpha_tex_mult", alpha_tex_mult);
    writeMaterialParameter(writer, "base_mtl", base_mtl, url);
    writeSlotParameters(writer, url, slots);
    endMaterialAsset(writer);
    return 0;
}

void MaterialAlphaContribution::writeFoldedTextures(AssetXmlWriter& writer,
                                                    const std::u16string& url) {
    writeSlotChildren(writer, url, {{alpha_tex, "alpha_tex", "alpha_tex"}});
}

void MaterialAlphaContribution::writeFoldedParameters(AssetXmlWriter& writer,
                                                      const std::u16string& url) {
    writer.writeFloat("alpha", alpha);
    writer.writeFloat("alpha_tex_mult", alpha_tex_mult);
    writeSlotParameters(writer, url, {{alpha_tex, "alpha_tex", "alpha_tex"}});
}

}  // namespace CorvaneCore
