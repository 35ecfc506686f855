// The material output: one "Assets" document per material tree, with every wrapper around a
// layered material folded into that material's single block.
#pragma once

#include "materials/base_material.h"

class AssetXmlWriter;

namespace CorvaneCore {

// The whole document for one material.
void convertMaterialTree(AssetXmlWriter& writer, const MaterialPtr& material);

// The folded block of the first layered material below `material`, under the url of
// `material` itself, with everything it refers to ahead of it. Nothing at all when the tree
// holds no layered material.
void writeFoldedMaterial(AssetXmlWriter& writer, const MaterialPtr& material);

}  // namespace CorvaneCore
