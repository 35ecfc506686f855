// The material output and the material file. The output gives one "Assets" document per
// material tree, with every wrapper around a layered material folded into that material's
// single block; two-sided, angle blend and toon materials get layout blocks of their own. The
// .cormat file is a list of materials behind a small header.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "materials/base_material.h"

class AssetXmlWriter;

namespace CorvaneCore {

// The whole document for one material.
void convertMaterialTree(AssetXmlWriter& writer, const MaterialPtr& material);
// The blocks of that document without the "Assets" element around them.
void writeMaterialTree(AssetXmlWriter& writer, const MaterialPtr& material);

// The folded block of the first layered material below `material` (a reference seen through
// first), under the url of that outermost material, with everything it refers to ahead of
// it. Nothing at all when the tree holds no layered material.
void writeFoldedMaterial(AssetXmlWriter& writer, const MaterialPtr& material);

class CorMatFile {
public:
    virtual ~CorMatFile() = default;
    // The newest form (version 3: header, then the archive in whole blocks). False for an
    // empty list, an empty entry or a material that cannot be written; then nothing reaches
    // the stream.
    virtual bool write(std::ostream& stream);
    // Versions 1 to 3. False for a count of zero, an unknown version word, an unknown material
    // id or a material that fails, and when the data runs out before the count is reached;
    // `materials` then stays as it was.
    virtual bool read(std::istream& stream);
    // By path, opened in binary mode; false when the file does not open. A failed save leaves
    // the file untouched.
    bool save(const std::u16string& path);
    bool load(const std::u16string& path);

    std::vector<MaterialPtr> materials;
};

// The document of a whole material file: the root element "cormat" around one "Assets"
// element that holds, material by material in file order, the blocks that each material's own
// document holds.
void writeCorMatDocument(AssetXmlWriter& writer, const CorMatFile& file);

}  // namespace CorvaneCore
