// The toon outline around a base material. The folded output writes it in a layout of its
// own (material_file.cpp) with other parameter names than its own writeXML below.
#include "materials/wrappers.h"
#include "materials/wrappers_xml.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

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

int MaterialToon::writeXML(AssetXmlWriter& writer, std::u16string url) {
    const TextureSlots slots = {
        {lineColorTex, "color_tex", "color_tex"},
        {distortTex, "distort_tex", "distort_tex"},
        {opacityTex, "opacity_tex", "opacity_tex"},
        {lineWidthTex, "width_tex", "width_tex"},
    };
    beginWrapperParameters(writer, *this, url, {{"base_mtl", base_mtl}}, slots);
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
    endAssetFrame(writer);
    return 0;
}

}  // namespace CorvaneCore
