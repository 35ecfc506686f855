// The wrappers that the folded output merges into the block of the layered material below
// them: bump, environment override, displacement, object exclusion and alpha contribution.
// Each gives its textures ahead of that block and its parameters behind the layer list; both
// take the texture slots from the class's one slot table.
#include "materials/wrappers.h"
#include "materials/wrappers_xml.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

namespace {

template <class C>
TextureSlot textureSlotOf(const C& material, const WrapperSlot<C>& slot) {
    return {material.*slot.texture, slot.word, slot.word};
}

// The slot's texture below url/word, when it is filled.
template <class C>
void writeSlotTexture(AssetXmlWriter& writer, const std::u16string& url, const C& material,
                      const WrapperSlot<C>& slot) {
    writeSlotChildren(writer, url, {textureSlotOf(material, slot)});
}

// The plugin parameter that refers to the slot's texture, also for an empty slot.
template <class C>
void writeSlotPlugin(AssetXmlWriter& writer, const std::u16string& url, const C& material,
                     const WrapperSlot<C>& slot) {
    writeSlotParameters(writer, url, {textureSlotOf(material, slot)});
}

template <class C>
void writeSlotMult(AssetXmlWriter& writer, const C& material, const WrapperSlot<C>& slot) {
    writer.writeFloat(slot.multName, material.*slot.mult);
}

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
    if (!readVersionIn(archive, 1, kNewestVersion, major)) return false;
    TexturePtr& texture = this->*kSlot.texture;
    float& mult = this->*kSlot.mult;
    switch (major) {
        case 1: {
            readBareName(archive);
            const std::u16string path = readPathText(archive);
            archive.read(mult);
            texture = textureFromPath(path);
            // The base material becomes base_mtl only once it has read itself.
            return readBareMaterial(archive, base_mtl);
        }
        case 2:
            archive.read(name);
            archive.read(mult);
            return readTextureSlot(archive, texture) && readBareMaterial(archive, base_mtl);
        default:
            archive.read(mult);
            return readTextureSlot(archive, texture) && readBareMaterial(archive, base_mtl) &&
                   readMaterialSection(archive);
    }
}

bool MaterialBump::serialize(QuickArchive& archive) {
    if (!base_mtl) return false;
    writeVersion(archive, kNewestVersion);
    archive.write(this->*kSlot.mult);
    if (!writeTextureSlot(archive, this->*kSlot.texture) || !writeBareMaterial(archive, base_mtl)) {
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
    return sameField(base_mtl, o.base_mtl) && sameField(bump_tex, o.bump_tex) &&
           sameField(bump_tex_mult, o.bump_tex_mult);
}

int MaterialBump::writeXML(AssetXmlWriter& writer, std::u16string url) {
    const NamedChildren children = {{"base_mtl", base_mtl}};
    url = beginWrapperBlock(writer, *this, url, children, {textureSlotOf(*this, kSlot)});
    writeSlotMult(writer, *this, kSlot);
    writeChildParameters(writer, url, children);
    writeSlotPlugin(writer, url, *this, kSlot);
    endAssetFrame(writer);
    return 0;
}

void MaterialBump::writeFoldedTextures(AssetXmlWriter& writer, const std::u16string& url) {
    writeSlotTexture(writer, url, *this, kSlot);
}

void MaterialBump::writeFoldedParameters(AssetXmlWriter& writer, const std::u16string& url) {
    writer.writeBool("bump_on", true);
    writeSlotMult(writer, *this, kSlot);
    writeSlotPlugin(writer, url, *this, kSlot);
}

// ---------------------------------------------------------------- environment override

namespace {
// The folded output walks the textures and colours gi first; the multipliers and switches
// keep the stream's order, bg first. Both orders are the renderer's.
constexpr size_t kGiFirst[] = {1, 0, 2, 3};
}  // namespace

void MaterialOverrideEnvironment::setDefaults() {
    base_mtl.reset();
    for (const Channel& channel : kChannels) {
        (this->*channel.slot.texture).reset();
        this->*channel.color = Color(0, 0, 0);
        this->*channel.slot.mult = 1.0f;
        this->*channel.flag = false;
    }
}

int MaterialOverrideEnvironment::writeXML(AssetXmlWriter& writer, std::u16string url) {
    writeChildMaterial(writer, base_mtl, url);
    return 0;
}

void MaterialOverrideEnvironment::writeFoldedTextures(AssetXmlWriter& writer,
                                                      const std::u16string& url) {
    for (size_t i : kGiFirst) writeSlotTexture(writer, url, *this, kChannels[i].slot);
}

void MaterialOverrideEnvironment::writeFoldedParameters(AssetXmlWriter& writer,
                                                        const std::u16string& url) {
    for (size_t i : kGiFirst) writeSlotPlugin(writer, url, *this, kChannels[i].slot);
    for (size_t i : kGiFirst) writer.writeColor(kChannels[i].colorName, this->*kChannels[i].color);
    for (const Channel& channel : kChannels) writeSlotMult(writer, *this, channel.slot);
    for (const Channel& channel : kChannels)
        writer.writeBool(channel.flagName, this->*channel.flag);
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

int MaterialDisplaced::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + name;
    writeChildMaterial(writer, base_mtl, url);
    return 0;
}

void MaterialDisplaced::writeFoldedTextures(AssetXmlWriter& writer, const std::u16string& url) {
    writeSlotTexture(writer, url, *this, kSlot);
}

void MaterialDisplaced::writeFoldedParameters(AssetXmlWriter& writer, const std::u16string& url) {
    writer.writeBool("displace_on", true);
    writer.writeFloat("displace_shift", displace_shift);
    writer.writeFloat("displace_edge_length", displace_edge_length);
    writeSlotMult(writer, *this, kSlot);
    writer.writeInteger("displace_max_subdivs", displace_max_subdivs);
    writer.writeInteger("displace_continuity", displace_continuity);
    writer.writeInteger("displace_view_dependent", displace_view_dependent);
    writer.writeInteger("displace_use_globals", displace_use_globals);
    writeSlotPlugin(writer, url, *this, kSlot);
}

// ---------------------------------------------------------------- object exclusion

void MaterialObjectExclusion::setDefaults() {
    mode = 0;
    base_mtl.reset();
    objects.clear();
    short_circuit = true;
}

// The count comes from the record: past the last byte every entry would read as an empty
// string, so a list that runs past the end is not filled with them.
bool readField(QuickArchive& archive, std::vector<std::u16string>& entries) {
    uint32_t count = 0;
    archive.read(count);
    for (uint32_t i = 0; i < count; ++i) {
        if (archive.remaining() == 0) {
            // Entries past the end of the data read as empty strings. The first is kept; the
            // rest would only repeat it, and a declared count must not size the list.
            entries.emplace_back();
            return true;
        }
        std::u16string entry;
        archive.read(entry);
        entries.push_back(entry);
    }
    return true;
}

bool writeField(QuickArchive& archive, const std::vector<std::u16string>& entries) {
    archive.write(static_cast<uint32_t>(entries.size()));
    for (const std::u16string& entry : entries) archive.write(entry);
    return true;
}

int MaterialObjectExclusion::writeXML(AssetXmlWriter& writer, std::u16string url) {
    beginWrapperParameters(writer, *this, url, {{"base_mtl", base_mtl}});
    writer.writeInteger("mode", mode);
    writer.writeBool("short_circuit", short_circuit);
    writer.beginList("objects", "");
    for (const std::u16string& object : objects) writer.writeStringEntry(object);
    writer.endList();
    endAssetFrame(writer);
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

int MaterialAlphaContribution::writeXML(AssetXmlWriter& writer, std::u16string url) {
    const NamedChildren children = {{"base_mtl", base_mtl}};
    url = beginWrapperBlock(writer, *this, url, children, {textureSlotOf(*this, kSlot)});
    writer.writeFloat("alpha", alpha);
    writeSlotMult(writer, *this, kSlot);
    writeChildParameters(writer, url, children);
    writeSlotPlugin(writer, url, *this, kSlot);
    endAssetFrame(writer);
    return 0;
}

void MaterialAlphaContribution::writeFoldedTextures(AssetXmlWriter& writer,
                                                    const std::u16string& url) {
    writeSlotTexture(writer, url, *this, kSlot);
}

void MaterialAlphaContribution::writeFoldedParameters(AssetXmlWriter& writer,
                                                      const std::u16string& url) {
    writer.writeFloat("alpha", alpha);
    writeSlotMult(writer, *this, kSlot);
    writeSlotPlugin(writer, url, *this, kSlot);
}

}  // namespace CorvaneCore
