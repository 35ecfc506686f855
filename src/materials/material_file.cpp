#include "materials/material_file.h"

#include <memory>

#include "materials/material.h"
#include "materials/scene_materials.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

namespace {

// Type ids of the wrappers that the folded block has room for, one of each, in the order in
// which they contribute.
constexpr int kBumpType = 3;
constexpr int kDisplacedType = 9;
constexpr int kOverrideEnvironmentType = 8;
constexpr int kObjectExclusionType = 10;
constexpr int kAlphaContributionType = 11;
constexpr int kFoldedWrapperTypes[] = {kBumpType, kDisplacedType, kOverrideEnvironmentType,
                                       kObjectExclusionType, kAlphaContributionType};

MaterialPtr firstOfType(const MaterialPtr& root, int typeId) {
    std::vector<MaterialPtr> found = collectMaterials(root, typeId);
    return found.empty() ? nullptr : found.front();
}

}  // namespace

void writeFoldedMaterial(AssetXmlWriter& writer, const MaterialPtr& material) {
    if (!material) return;
    const std::wstring url = L"/" + material->name;
    auto layered = std::dynamic_pointer_cast<MaterialLayeredBRDF>(
        firstOfType(material, MaterialLayeredBRDF::kType));
    if (!layered) return;

    // Further wrappers of a type already found are dropped: the block has no room for them.
    std::vector<MaterialPtr> wrappers;
    for (int type : kFoldedWrapperTypes) {
        if (MaterialPtr wrapper = firstOfType(material, type)) wrappers.push_back(wrapper);
    }

    for (const MaterialPtr& wrapper : wrappers) wrapper->writeFoldedTextures(writer, url);
    layered->writeLayers(writer, url);

    writer.beginAsset(url, L"material", L"defommat");
    writer.beginPlugin(layered->pluginType(), L"material");
    writer.beginParameters();
    layered->writeLeadingParameters(writer, url);
    for (const MaterialPtr& wrapper : wrappers) wrapper->writeFoldedParameters(writer, url);
    writer.endParameters();
    writer.endPlugin();
    writer.endAsset();
}

void convertMaterialTree(AssetXmlWriter& writer, const MaterialPtr& material) {
    writer.openAssets();
    writeFoldedMaterial(writer, material);
    writer.closeAssets();
}

}  // namespace CorvaneCore
