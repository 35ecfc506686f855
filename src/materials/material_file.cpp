#include "materials/material_file.h"

#include <memory>

#include "materials/brdf_slots.h"
#include "materials/material.h"
#include "materials/material_linked.h"
#include "materials/scene_materials.h"
#include "materials/wrappers.h"
#include "xml/asset_frame.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

namespace {

// Type ids of the wrappers that the folded block has room for, one of each, in the order in
// which they contribute.
constexpr int kFoldedWrapperTypes[] = {
    MaterialBump::kType, MaterialDisplaced::kType, MaterialOverrideEnvironment::kType,
    MaterialObjectExclusion::kType, MaterialAlphaContribution::kType};

MaterialPtr firstOfType(const MaterialPtr& root, int typeId) {
    std::vector<MaterialPtr> found = collectMaterials(root, typeId);
    return found.empty() ? nullptr : found.front();
}

// ---------------------------------------------------------------- layouts

// Writes the folded blocks of both children at the root, then the layout block that refers to
// them. A child that is missing, or a reference with nothing resolved, writes nothing and
// gets no parameter; the caller's `scalars` follow the two references.
template <class WriteScalars>
void writeTwoChildLayout(AssetXmlWriter& writer, BaseMaterial& material, const char16_t* layout,
                         const char* firstWord, const MaterialPtr& firstChild,
                         const char* secondWord, const MaterialPtr& secondChild,
                         WriteScalars scalars) {
    const MaterialPtr first = resolveReference(firstChild);
    const MaterialPtr second = resolveReference(secondChild);
    writeFoldedMaterial(writer, first);
    writeFoldedMaterial(writer, second);
    beginAssetFrame(writer, u"/" + material.name, material, layout);
    // Empty prefix: the value is "/" and the child's name, the url of its folded block.
    if (isUsable(first)) writer.writePlugin(firstWord, PluginRef(first), u"");
    if (isUsable(second)) writer.writePlugin(secondWord, PluginRef(second), u"");
    scalars();
    endAssetFrame(writer);
}

// The two-sided layout has no room for transparency and the two textures.
void writeTwoSidedLayout(AssetXmlWriter& writer, Material2Sided& material) {
    writeTwoChildLayout(writer, material, u"TwoSidedMatLayout", "front", material.front, "back",
                        material.back, [&] {
                            writer.writeColor("translucency", material.translucency);
                            writer.writeBool("force_1sided", material.force_1sided);
                        });
}

void writeHostTwoSidedLayout(AssetXmlWriter& writer, MaterialSkp2Sided& material) {
    writeTwoChildLayout(writer, material, u"SkpTwoSidedMatLayout", "front", material.front, "back",
                        material.back,
                        [&] { writer.writeBool("force_1sided", material.force_1sided); });
}

void writeAngleBlendLayout(AssetXmlWriter& writer, MaterialAngleBlend& material) {
    writeTwoChildLayout(writer, material, u"AngleBlendMatLayout", "mtl_one", material.mtl_one,
                        "mtl_two", material.mtl_two, [&] {
                            writer.writeFloat("start_angle", material.start_angle);
                            writer.writeFloat("stop_angle", material.stop_angle);
                        });
}

// The toon layout names its parameters after the fields; `line_units` is left out.
void writeToonLayout(AssetXmlWriter& writer, MaterialToon& material) {
    const MaterialPtr base = resolveReference(material.base_mtl);
    if (base) writeFoldedMaterial(writer, base);
    const std::u16string url = u"/" + material.name;
    const TextureSlots slots = {
        {material.lineColorTex, "color_tex", "lineColorTex"},
        {material.distortTex, "distort_tex", "distortTex"},
        {material.opacityTex, "opacity_tex", "opacityTex"},
        {material.lineWidthTex, "width_tex", "lineWidthTex"},
    };
    writeSlotChildren(writer, url, slots);
    beginAssetFrame(writer, url, material, u"ToonMatLayout");
    if (isUsable(base)) writer.writePlugin("base_mtl", PluginRef(base), u"");
    writeSlotParameters(writer, url, slots);
    writer.writeColor("lineColor", material.lineColor);
    writer.writeFloat("lineColorTexMult", material.lineColorTexMult);
    writer.writeFloat("distort", material.distort);
    writer.writeFloat("distortTexMult", material.distortTexMult);
    writer.writeFloat("opacity", material.opacity);
    writer.writeFloat("opacityTexMult", material.opacityTexMult);
    writer.writeFloat("lineWidth", material.lineWidth);
    writer.writeFloat("lineWidthTexMult", material.lineWidthTexMult);
    writer.writeFloat("zThreshold", material.zThreshold);
    writer.writeFloat("traceBias", material.traceBias);
    writer.writeFloat("normalThreshold", material.normalThreshold);
    writer.writeFloat("silhouetteMult", material.silhouetteMult);
    writer.writeBool("doSecondary", material.doSecondary);
    writer.writeBool("divideByDist", material.divideByDist);
    writer.writeBool("doSilhouetteMult", material.doSilhouetteMult);
    endAssetFrame(writer);
}

}  // namespace

void writeFoldedMaterial(AssetXmlWriter& writer, const MaterialPtr& outermost) {
    // A reference stands for its resolved material; with nothing resolved nothing is written.
    const MaterialPtr material = resolveReference(outermost);
    if (!material) return;
    const std::u16string url = u"/" + material->name;
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

    beginAssetFrame(writer, url, *layered, u"defommat");
    layered->writeLeadingParameters(writer, url);
    for (const MaterialPtr& wrapper : wrappers) wrapper->writeFoldedParameters(writer, url);
    endAssetFrame(writer);
}

void writeMaterialTree(AssetXmlWriter& writer, const MaterialPtr& material) {
    if (!material) return;
    switch (material->getType()) {
        case Material2Sided::kType:
            writeTwoSidedLayout(writer, static_cast<Material2Sided&>(*material));
            break;
        case MaterialSkp2Sided::kType:
            writeHostTwoSidedLayout(writer, static_cast<MaterialSkp2Sided&>(*material));
            break;
        case MaterialAngleBlend::kType:
            writeAngleBlendLayout(writer, static_cast<MaterialAngleBlend&>(*material));
            break;
        case MaterialToon::kType:
            writeToonLayout(writer, static_cast<MaterialToon&>(*material));
            break;
        default:
            writeFoldedMaterial(writer, material);
            break;
    }
}

void convertMaterialTree(AssetXmlWriter& writer, const MaterialPtr& material) {
    writer.openAssets();
    writeMaterialTree(writer, material);
    writer.closeAssets();
}

void writeCorMatDocument(AssetXmlWriter& writer, const CorMatFile& file) {
    writer.openRoot(u"cormat");
    writer.openAssets();
    for (const MaterialPtr& material : file.materials) writeMaterialTree(writer, material);
    writer.closeAssets();
    writer.closeRoot();
}

}  // namespace CorvaneCore
