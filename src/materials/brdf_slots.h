// Helpers shared by the BRDF layers: the old path and fresnel forms of their texture slots,
// and the frame of a layer's asset block. The slots' archive form is in brdf_layer.h.
#pragma once

#include <initializer_list>
#include <memory>
#include <string>

#include "archive/quick_archive.h"
#include "materials/brdf.h"

class AssetXmlWriter;

namespace CorvaneCore {

// Old layouts kept a bare image path where a texture stands today.
std::u16string readPathText(QuickArchive& archive);
TexturePtr textureFromPath(const std::u16string& path);
inline void readPathSlot(QuickArchive& archive, TexturePtr& slot) {
    slot = textureFromPath(readPathText(archive));
}

// A FresnelTexture with its defaults.
TexturePtr newFresnelTexture();

// With the flag set, a FresnelTexture of the stored index replaces whatever `slot` holds.
void applyOldFresnel(const OldFresnelFields& fresnel, TexturePtr& slot);

// The reflective layers write their filter as 1 minus the filter, never below 0.
Color invertedFilter(const Color& filter);

// One texture slot of a layer as it appears in the XML: the child's url word and the name of
// the parameter that refers to it.
struct TextureSlot {
    const TexturePtr& texture;
    const char* childWord;
    const char* parameter;
};
using TextureSlots = std::initializer_list<TextureSlot>;

// Writes each filled slot's texture ahead of the layer, under url/childWord.
void writeSlotChildren(AssetXmlWriter& writer, const std::u16string& url, TextureSlots slots);
// One plugin parameter per slot, empty slots included.
void writeSlotParameters(AssetXmlWriter& writer, const std::u16string& url, TextureSlots slots);
// The frame of a layer's block. The begin extends `url` by the layer's name, writes the slots'
// children ahead of the block and opens its parameters; the end writes one parameter per slot,
// empty slots included, and closes the block.
void beginLayerBlock(AssetXmlWriter& writer, Base_BRDF& layer, std::u16string& url,
                     TextureSlots slots);
void endLayerBlock(AssetXmlWriter& writer, const std::u16string& url, TextureSlots slots);

}  // namespace CorvaneCore
