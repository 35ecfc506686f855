// The wrappers around two materials: two-sided, the host's two-sided, and the angle blend.
// The folded output gives each its own layout block (material_file.cpp); their own writeXML
// below serves the scene's material set.
#include "materials/wrappers.h"
#include "materials/wrappers_xml.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

// ---------------------------------------------------------------- two-sided

void Material2Sided::setDefaults() {
    front.reset();
    back.reset();
    translucency_tex.reset();
    transparency_tex.reset();
    translucency = Color(0, 0, 0);
    transparency = Color(0, 0, 0);
    translucency_tex_mult = 1.0f;
    transparency_tex_mult = 1.0f;
    force_1sided = false;
}

int Material2Sided::writeXML(AssetXmlWriter& writer, std::u16string url) {
    const TextureSlots slots = {
        {translucency_tex, "translucency_tex", "translucency_tex"},
        {transparency_tex, "transparency_tex", "transparency_tex"},
    };
    beginWrapperParameters(writer, *this, url, {{"front", front}, {"back", back}}, slots);
    writer.writeColor("translucency", translucency);
    writer.writeColor("transparency", transparency);
    writer.writeFloat("translucency_tex_mult", translucency_tex_mult);
    writer.writeFloat("transparency_tex_mult", transparency_tex_mult);
    writer.writeBool("force_1sided", force_1sided);
    endAssetFrame(writer);
    return 0;
}

// ---------------------------------------------------------------- host two-sided

void MaterialSkp2Sided::setDefaults() {
    front.reset();
    back.reset();
    force_1sided = false;
}

int MaterialSkp2Sided::writeXML(AssetXmlWriter& writer, std::u16string url) {
    beginWrapperParameters(writer, *this, url, {{"front", front}, {"back", back}});
    writer.writeBool("force_1sided", force_1sided);
    endAssetFrame(writer);
    return 0;
}

// ---------------------------------------------------------------- angle blend

void MaterialAngleBlend::setDefaults() {
    mtl_one.reset();
    mtl_two.reset();
    start_angle = 75.0f;
    stop_angle = 150.0f;
}

int MaterialAngleBlend::writeXML(AssetXmlWriter& writer, std::u16string url) {
    beginWrapperParameters(writer, *this, url, {{"mtl_one", mtl_one}, {"mtl_two", mtl_two}});
    writer.writeFloat("start_angle", start_angle);
    writer.writeFloat("stop_angle", stop_angle);
    endAssetFrame(writer);
    return 0;
}

}  // namespace CorvaneCore
