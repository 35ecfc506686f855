#include <algorithm>

#include "archive/field_list.h"
#include "archive/read_helpers.h"
#include "materials/brdf_slots.h"
#include "textures/base_texture.h"
#include "xml/asset_frame.h"
#include "xml/asset_xml_writer.h"
#include "xml/text.h"

namespace CorvaneCore {

namespace {
constexpr uint32_t kBaseSectionVersion = 4;

// The section's fields in stored order, each with the version that introduced it.
template <class Fn>
void visitSectionFields(Fn& fn, Base_BRDF& layer) {
    fn(1, layer.name);
    fn(2, layer.layerFlagA);
    fn(3, layer.layerFlagB);
    fn(4, layer.layerFlagC);
}
}  // namespace

void Base_BRDF::resetBase() {
    name = pluginType();
    layerFlagA = true;
    layerFlagB = false;
    layerFlagC = false;
}

bool Base_BRDF::readVersionThenReset(QuickArchive& archive, uint32_t newest, uint32_t& major,
                                     bool baseOnly) {
    const bool known = readVersionIn(archive, 1, newest, major);
    if (baseOnly) {
        resetBase();
    } else {
        setDefaults();
    }
    return known;
}

bool Base_BRDF::readBaseSection(QuickArchive& archive) {
    uint32_t major = 0;
    const bool known = readVersionIn(archive, 1, kBaseSectionVersion, major);
    FieldReader read{archive, known ? major : 0};
    visitSectionFields(read, *this);
    stripControlChars(name);
    return known;
}

void Base_BRDF::writeBaseSection(QuickArchive& archive) {
    writeVersion(archive, kBaseSectionVersion);
    FieldWriter write{archive};
    visitSectionFields(write, *this);
}

bool readTextureSlot(QuickArchive& archive, TexturePtr& slot) {
    return readOptionalChild<BaseTexture>(archive, slot, &createTexture);
}

bool writeTextureSlot(QuickArchive& archive, const TexturePtr& texture) {
    return writeOptionalChild(archive, texture);
}

std::u16string readPathText(QuickArchive& archive) {
    std::u16string path;
    archive.read(path);
    return path;
}

TexturePtr cloneTexture(const TexturePtr& texture) { return texture ? texture->clone() : nullptr; }

bool sameTexture(const TexturePtr& a, const TexturePtr& b) {
    if (!a || !b) return !a && !b;
    return a->isEqual(b);
}

Color invertedFilter(const Color& filter) {
    auto invert = [](float channel) { return std::max(1.0f - channel, 0.0f); };
    return Color(invert(filter.r), invert(filter.g), invert(filter.b));
}

static std::u16string slotUrl(const std::u16string& url, const char* word) {
    return url + u"/" + utf8ToWide(word);
}

void writeSlotChildren(AssetXmlWriter& writer, const std::u16string& url, TextureSlots slots) {
    for (const TextureSlot& slot : slots) {
        if (slot.texture) slot.texture->writeXML(writer, slotUrl(url, slot.childWord));
    }
}

void writeSlotParameters(AssetXmlWriter& writer, const std::u16string& url, TextureSlots slots) {
    for (const TextureSlot& slot : slots) {
        writer.writePlugin(slot.parameter, PluginRef(slot.texture), slotUrl(url, slot.childWord));
    }
}

void beginLayerBlock(AssetXmlWriter& writer, Base_BRDF& layer, std::u16string& url,
                     TextureSlots slots) {
    url += u"/" + layer.name;
    writeSlotChildren(writer, url, slots);
    beginAssetFrame(writer, url, layer);
}

void endLayerBlock(AssetXmlWriter& writer, const std::u16string& url, TextureSlots slots) {
    writeSlotParameters(writer, url, slots);
    endAssetFrame(writer);
}

}  // namespace CorvaneCore
