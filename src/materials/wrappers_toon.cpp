// The toon outline around a base material. The folded output writes it in a layout of its
// own (material_file.cpp) with other parameter names than its own writeXML below.
#include "archive/compare.h"
#include "archive/read_helpers.h"
#include "materials/brdf_slots.h"
#include "materials/wrappers.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

namespace {
constexpr uint32_t kToonVersion = 2;
}  // namespace

void MaterialToon::setDefaults() {
    base_mtl.reset();
    lineWidth = 1.5f;
    lineWidthTexMult = 1.0f;
    lineWidthTex.reset();
    opacity = 1.0f;
    opacityTexMult = 1.0f;
    opacityTex.reset();
    distort = 0.0f;
    distortTexMult = 1.0f;
    distortTex.reset();
    lineColor = Color(0, 0, 0);
    lineColorTexMult = 1.0f;
    lineColorTex.reset();
    zThreshold = 0.95f;
    traceBias = 0.02f;
    normalThreshold = 0.7f;
    line_units = 1.0f;
    doSecondary = true;
    divideByDist = false;
    doSilhouetteMult = false;
    silhouetteMult = 1.5f;
}

bool MaterialToon::deserialize(QuickArchive& archive) {
    setDefaults();
    uint32_t major = 0;
    if (!readVersion(archive, major) || major < 1 || major > kToonVersion) return false;
    if (!readMaterialSlot(archive, base_mtl)) return false;
    archive.read(lineWidth);
    archive.read(lineWidthTexMult);
    if (!readTextureSlot(archive, lineWidthTex)) return false;
    archive.read(opacity);
    archive.read(opacityTexMult);
    if (!readTextureSlot(archive, opacityTex)) return false;
    archive.read(distort);
    archive.read(distortTexMult);
    if (!readTextureSlot(archive, distortTex)) return false;
    archive.read(lineColor);
    archive.read(lineColorTexMult);
    if (!readTextureSlot(archive, lineColorTex)) return false;
    archive.read(zThreshold);
    archive.read(traceBias);
    archive.read(normalThreshold);
    archive.read(line_units);
    archive.read(doSecondary);
    archive.read(divideByDist);
    if (!readMaterialSection(archive)) return false;
    if (major == 1) return true;
    archive.read(doSilhouetteMult);
    archive.read(silhouetteMult);
    return true;
}

bool MaterialToon::serialize(QuickArchive& archive) {
    writeVersion(archive, kToonVersion);
    if (!writeMaterialSlot(archive, base_mtl)) return false;
    archive.write(lineWidth);
    archive.write(lineWidthTexMult);
    if (!writeTextureSlot(archive, lineWidthTex)) return false;
    archive.write(opacity);
    archive.write(opacityTexMult);
    if (!writeTextureSlot(archive, opacityTex)) return false;
    archive.write(distort);
    archive.write(distortTexMult);
    if (!writeTextureSlot(archive, distortTex)) return false;
    archive.write(lineColor);
    archive.write(lineColorTexMult);
    if (!writeTextureSlot(archive, lineColorTex)) return false;
    archive.write(zThreshold);
    archive.write(traceBias);
    archive.write(normalThreshold);
    archive.write(line_units);
    archive.write(doSecondary);
    archive.write(divideByDist);
    writeMaterialSection(archive);
    archive.write(doSilhouetteMult);
    archive.write(silhouetteMult);
    return true;
}

void MaterialToon::duplicateChildren(MaterialDuplicator duplicate) {
    base_mtl = duplicate(base_mtl);
    for (TexturePtr* slot : {&lineWidthTex, &opacityTex, &distortTex, &lineColorTex}) {
        *slot = cloneTexture(*slot);
    }
}

bool MaterialToon::isEqual(const MaterialPtr& other) {
    if (!other || other->getType() != getType()) return false;
    const auto& o = static_cast<const MaterialToon&>(*other);
    return sameMaterial(base_mtl, o.base_mtl) && sameTexture(lineWidthTex, o.lineWidthTex) &&
           sameTexture(opacityTex, o.opacityTex) && sameTexture(distortTex, o.distortTex) &&
           sameTexture(lineColorTex, o.lineColorTex) && sameFloat(lineWidth, o.lineWidth) &&
           sameFloat(lineWidthTexMult, o.lineWidthTexMult) && sameFloat(opacity, o.opacity) &&
           sameFloat(opacityTexMult, o.opacityTexMult) && sameFloat(distort, o.distort) &&
           sameFloat(distortTexMult, o.distortTexMult) && sameColor(lineColor, o.lineColor) &&
           sameFloat(lineColorTexMult, o.lineColorTexMult) && sameFloat(zThreshold, o.zThreshold) &&
           sameFloat(traceBias, o.traceBias) && sameFloat(normalThreshold, o.normalThreshold) &&
           sameFloat(line_units, o.line_units) && doSecondary == o.doSecondary &&
           divideByDist == o.divideByDist && doSilhouetteMult == o.doSilhouetteMult &&
           sameFloat(silhouetteMult, o.silhouetteMult);
}

int MaterialToon::writeXML(AssetXmlWriter& writer, std::u16string url) {
    url += u"/" + name;
    writeChildMaterial(writer, base_mtl, url);
    const TextureSlots slots = {
        {lineColorTex, "color_tex", "color_tex"},
        {distortTex, "distort_tex", "distort_tex"},
        {opacityTex, "opacity_tex", "opacity_tex"},
        {lineWidthTex, "width_tex", "width_tex"},
    };
    writeSlotChildren(writer, url, slots);
    beginMaterialAsset(writer, *this, url);
    writeMaterialParameter(writer, "base_mtl", base_mtl, url);
    writeSlotParameters(writer, url, slots);
    writer.writeColor("color", lineColor);
    writer.writeFloat("color_tex_mult", lineColorTexMult);
    writer.writeFloat("distort", distort);
    writer.writeFloat("distort_tex_mult", distortTexMult);
    writer.writeFloat("opacity", opacity);
    writer.writeFloat("opacity_tex_mult", opacityTexMult);
    writer.writeFloat("width", lineWidth);
    writer.writeFloat("width_tex_mult", lineWidthTexMult);
    writer.writeFloat("z_threshold", zThreshold);
    writer.writeFloat("trace_bias", traceBias);
    writer.writeFloat("normal_threshold", normalThreshold);
    writer.writeFloat("line_units", line_units);
    writer.writeFloat("silhouette_mult", silhouetteMult);
    writer.writeBool("do_secondary", doSecondary);
    writer.writeBool("divide_by_distance", divideByDist);
    writer.writeBool("do_silhouette_mult", doSilhouetteMult);
    endMaterialAsset(writer);
    return 0;
}

}  // namespace CorvaneCore
