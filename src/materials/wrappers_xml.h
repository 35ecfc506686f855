// The common frame of a wrapper's own asset block.
#pragma once

#include <initializer_list>
#include <string>

#include "materials/brdf_slots.h"
#include "materials/material_helpers.h"

namespace CorvaneCore {

// A parameter that refers to a child material, by its parameter name.
struct NamedChild {
    const char* parameter;
    const MaterialPtr& material;
};
using NamedChildren = std::initializer_list<NamedChild>;

// Extends `url` by the wrapper's name, writes the child materials and then the filled texture
// slots below it, and opens the wrapper's asset. Returns the extended url.
std::u16string beginWrapperBlock(AssetXmlWriter& writer, BaseMaterial& wrapper, std::u16string url,
                                 NamedChildren children, TextureSlots textures = {});
// beginWrapperBlock, then the plugin parameters of the child materials and of every texture
// slot, in that order: the head of most wrappers' parameter lists.
void beginWrapperParameters(AssetXmlWriter& writer, BaseMaterial& wrapper, std::u16string url,
                            NamedChildren children, TextureSlots textures = {});
// One plugin parameter per child material, in the given order.
void writeChildParameters(AssetXmlWriter& writer, const std::u16string& url,
                          NamedChildren children);

}  // namespace CorvaneCore
