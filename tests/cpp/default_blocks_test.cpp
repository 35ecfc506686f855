// The whole block every layer, wrapper and procedural texture writes at its defaults, written
// out parameter by parameter from the classes' tables: a dropped, renamed, reordered or
// mistyped parameter, or a changed default, shows here.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "material_bytes.h"
#include "materials/brdf.h"
#include "materials/wrappers.h"
#include "textures/procedural.h"
#include "xml/text.h"

using namespace CorvaneCore;
using namespace material_test;

namespace {

using Values = std::vector<std::pair<const char*, const char*>>;

// The object's own blocks inside an Assets element, written from the root url.
template <class T>
std::string documentOf(T& object) {
    std::string text;
    AssetXmlWriter writer(text);
    writer.openAssets();
    object.writeXML(writer, {});
    writer.closeAssets();
    return writer.stream();
}

// Parameters of one type, in the order given.
std::string run(const char* type, const Values& values) {
    std::string s;
    for (const auto& [name, value] : values) s += plain(type, name, value);
    return s;
}

std::string emptyPlugins(const std::vector<const char*>& names) {
    std::string s;
    for (const char* name : names) s += empty("plugin", name);
    return s;
}

std::string acolor(const char* name, const char* r, const char* g, const char* b, const char* a) {
    return open("acolor", name) + line("r", r) + line("g", g) + line("b", b) + line("a", a) +
           kClose;
}

// A default FresnelTexture at `url` (which ends in "/TexFresnel"): both colours inverted.
std::string fresnelBlock(const std::string& url) {
    return assetHead("texture", url, "TexFresnel") + color("white_color", "0", "0", "0") +
           color("black_color", "0.745098", "0.745098", "0.745098") +
           run("float", {{"fresnel_ior", "1.55"},
                         {"refract_ior", "1.55"},
                         {"black_color_tex_mult", "1"},
                         {"white_color_tex_mult", "1"},
                         {"fresnel_ior_tex_mult", "1"},
                         {"refract_ior_tex_mult", "1"}}) +
           emptyPlugins(
               {"black_color_tex", "white_color_tex", "fresnel_ior_tex", "refract_ior_tex"}) +
           kAssetTail;
}

const char* const kFresnelUrl = "/BRDFReflection/transparency_texture/TexFresnel";

std::string reflectionBlock() {
    return assetHead("BRDF", "/BRDFReflection", "BRDFReflection") + color("color", "1", "1", "1") +
           color("transparency", "0", "0", "0") +
           run("float",
               {{"hilightGlossiness", "1"}, {"reflectionGlossiness", "1"}, {"cutoff", "0.01"}}) +
           run("integer", {{"subdivs", "8"}, {"back_side", "0"}}) +
           run("float", {{"color_tex_mult", "1"},
                         {"hilightGlossiness_tex_mult", "1"},
                         {"reflectionGlossiness_tex_mult", "1"},
                         {"transparency_tex_mult", "1"},
                         {"anisotropy", "0"},
                         {"anisotropy_rotation", "0"}}) +
           emptyPlugins({"color_tex", "hilightGlossiness_tex", "reflectionGlossiness_tex"}) +
           plain("plugin", "transparency_tex", kFresnelUrl) + kAssetTail;
}

}  // namespace

TEST(DefaultBlocks, GlassLayer) {
    Glass_BRDF glass;
    const std::string expected =
        assetHead("BRDF", "/BRDFRefraction", "BRDFRefraction") + color("color", "1", "1", "1") +
        color("transparency", "0", "0", "0") + color("fog_color", "1", "1", "1") +
        color("translucency", "1", "1", "1") +
        run("bool", {{"affect_shadows", "0"}, {"affect_alpha", "0"}, {"translucency_on", "0"}}) +
        run("float", {{"ior", "1.55"},
                      {"fog_color_mult", "1"},
                      {"glossiness", "1"},
                      {"glossiness_tex_mult", "1"},
                      {"ior_tex_mult", "1"},
                      {"translucency_tex_mult", "1"},
                      {"scatter_coeff", "0"},
                      {"scatter_direction", "1"},
                      {"thickness", "1000"},
                      {"transparency_tex_mult", "1"},
                      {"cutoff", "0.001"},
                      {"color_tex_mult", "1"}}) +
        plain("integer", "subdivs", "8") +
        emptyPlugins({"transparency_tex", "color_tex", "glossiness_tex", "ior_texture",
                      "translucency_tex"}) +
        kAssetTail;
    EXPECT_EQ(documentOf(glass), document(expected));
}

TEST(DefaultBlocks, DiffuseAndLightLayers) {
    Diffuse_BRDF diffuse;
    std::string expected = assetHead("BRDF", "/BRDFDiffuse", "BRDFDiffuse") +
                           color("color", "0.5", "0.5", "0.5") +
                           color("transparency", "0", "0", "0") +
                           run("float", {{"color_tex_mult", "1"}, {"transparency_tex_mult", "1"}}) +
                           emptyPlugins({"color_tex", "transparency_tex"}) +
                           plain("bool", "use_color_tex_alpha_as_transparency", "0") + kAssetTail;
    EXPECT_EQ(documentOf(diffuse), document(expected));

    Light_BRDF light;
    expected = assetHead("BRDF", "/BRDFLight", "BRDFLight") + color("color", "1", "1", "1") +
               color("transparency", "0", "0", "0") +
               run("float",
                   {{"intensity", "1"}, {"transparency_tex_mult", "1"}, {"color_tex_mult", "1"}}) +
               plain("bool", "doubleSided", "1") + emptyPlugins({"color_tex", "transparency_tex"}) +
               kAssetTail;
    EXPECT_EQ(documentOf(light), document(expected));
}

// Both reflection layers start with a default fresnel texture, written ahead of them; the
// white filter leaves as black.
TEST(DefaultBlocks, ReflectionLayersWithTheirFresnelChild) {
    Blinn_BRDF blinn;
    Phong_BRDF phong;
    const std::string expected = document(fresnelBlock(kFresnelUrl) + reflectionBlock());
    EXPECT_EQ(documentOf(blinn), expected);
    EXPECT_EQ(documentOf(phong), expected);

    Mirror_BRDF mirror;
    const std::string mirrorBlock =
        assetHead("BRDF", "/BRDFReflection", "BRDFReflection") + color("color", "1", "1", "1") +
        color("transparency", "0", "0", "0") +
        run("float",
            {{"color_tex_mult", "1"}, {"transparency_tex_mult", "1"}, {"cutoff", "0.01"}}) +
        plain("plugin", "transparency_tex", kFresnelUrl) + empty("plugin", "color_tex") +
        kAssetTail;
    EXPECT_EQ(documentOf(mirror), document(fresnelBlock(kFresnelUrl) + mirrorBlock));
}

class DefaultWrapperBlocks : public MaterialSetTest {};

TEST_F(DefaultWrapperBlocks, BumpTwoSidedAndHostTwoSided) {
    MaterialBump bump;
    std::string expected = assetHead("material", "/DefaultMaterial", "MtlBump") +
                           plain("float", "bump_tex_mult", "1") +
                           emptyPlugins({"base_mtl", "bump_tex"}) + kAssetTail;
    EXPECT_EQ(documentOf(bump), document(expected));

    Material2Sided twoSided;
    expected = assetHead("material", "/DefaultMaterial", "Mtl2Sided") +
               emptyPlugins({"front", "back", "translucency_tex", "transparency_tex"}) +
               color("translucency", "0", "0", "0") + color("transparency", "0", "0", "0") +
               run("float", {{"translucency_tex_mult", "1"}, {"transparency_tex_mult", "1"}}) +
               plain("bool", "force_1sided", "0") + kAssetTail;
    EXPECT_EQ(documentOf(twoSided), document(expected));

    MaterialSkp2Sided hostTwoSided;
    expected = assetHead("material", "/DefaultMaterial", "MtlSkp2Sided") +
               emptyPlugins({"front", "back"}) + plain("bool", "force_1sided", "0") + kAssetTail;
    EXPECT_EQ(documentOf(hostTwoSided), document(expected));
}

TEST_F(DefaultWrapperBlocks, ExclusionAngleBlendAndAlphaContribution) {
    MaterialObjectExclusion exclusion;
    std::string expected =
        assetHead("material", "/DefaultMaterial", "MtlObjectExclusion") +
        empty("plugin", "base_mtl") + plain("integer", "mode", "0") +
        plain("bool", "short_circuit", "1") +
        "            <parameter type=\"list\" name=\"objects\" handler=\"default\" listType=\"\" "
        "label=\"objects\">\n"
        "              <value>\n              <list>\n              </list>\n" +
        kClose + kAssetTail;
    EXPECT_EQ(documentOf(exclusion), document(expected));

    MaterialAngleBlend blend;
    expected = assetHead("material", "/DefaultMaterial", "MtlAngleBlend") +
               emptyPlugins({"mtl_one", "mtl_two"}) +
               run("float", {{"start_angle", "75"}, {"stop_angle", "150"}}) + kAssetTail;
    EXPECT_EQ(documentOf(blend), document(expected));

    MaterialAlphaContribution alpha;
    expected = assetHead("material", "/DefaultMaterial", "MtlAlphaContribution") +
               run("float", {{"alpha", "1"}, {"alpha_tex_mult", "1"}}) +
               emptyPlugins({"base_mtl", "alpha_tex"}) + kAssetTail;
    EXPECT_EQ(documentOf(alpha), document(expected));
}

TEST_F(DefaultWrapperBlocks, ToonUsesItsOwnParameterNames) {
    MaterialToon toon;
    const std::string expected =
        assetHead("material", "/DefaultMaterial", "MtlToon") +
        emptyPlugins({"base_mtl", "color_tex", "distort_tex", "opacity_tex", "width_tex"}) +
        color("color", "0", "0", "0") +
        run("float", {{"color_tex_mult", "1"},
                      {"distort", "0"},
                      {"distort_tex_mult", "1"},
                      {"opacity", "1"},
                      {"opacity_tex_mult", "1"},
                      {"width", "1.5"},
                      {"width_tex_mult", "1"},
                      {"z_threshold", "0.95"},
                      {"trace_bias", "0.02"},
                      {"normal_threshold", "0.7"},
                      {"line_units", "1"},
                      {"silhouette_mult", "1.5"}}) +
        run("bool",
            {{"do_secondary", "1"}, {"divide_by_distance", "0"}, {"do_silhouette_mult", "0"}}) +
        kAssetTail;
    EXPECT_EQ(documentOf(toon), document(expected));
}

// These two have no block of their own; without a base material they write nothing.
TEST_F(DefaultWrapperBlocks, ForwardingWrappersWriteNothingWithoutABase) {
    MaterialDisplaced displaced;
    MaterialOverrideEnvironment environment;
    EXPECT_EQ(documentOf(displaced), document(""));
    EXPECT_EQ(documentOf(environment), document(""));
}

TEST(DefaultBlocks, TexturesWithEmptyChildren) {
    RampTexture ramp;
    EXPECT_EQ(
        documentOf(ramp),
        document(assetHead("texture", "/TexRamp", "TexRamp") + emptyPlugins({"uvwgen", "colors"}) +
                 run("float", {{"positions", "0.5"}, {"u_wave", "0"}, {"v_wave", "0"}}) +
                 run("integer", {{"type", "0"}, {"interpolation", "1"}}) + kAssetTail));
    BulgeTexture bulge;
    EXPECT_EQ(documentOf(bulge),
              document(assetHead("texture", "/TexBulge", "TexBulge") + empty("plugin", "uvwgen") +
                       run("float", {{"u_width", "0.1"}, {"v_width", "0.1"}}) + kAssetTail));
    GridTexture grid;
    EXPECT_EQ(documentOf(grid),
              document(assetHead("texture", "/TexGrid", "TexGrid") +
                       emptyPlugins({"uvwgen", "line_color", "fill_color"}) +
                       run("float", {{"u_width", "0.1"}, {"v_width", "0.1"}}) + kAssetTail));
    ClothTexture cloth;
    EXPECT_EQ(
        documentOf(cloth),
        document(assetHead("texture", "/TexCloth", "TexCloth") + empty("plugin", "uvwgen") +
                 acolor("gap_color", "1", "1", "1", "1") + acolor("u_color", "0", "0", "0", "1") +
                 acolor("v_color", "1", "1", "1", "1") +
                 run("float", {{"u_width", "0.1"}, {"v_width", "0.1"}}) +
                 run("bool", {{"tile_u", "1"}, {"tile_v", "1"}}) + kAssetTail));
    BlendTexture blend;
    EXPECT_EQ(documentOf(blend), document(assetHead("texture", "/TexBlend", "TexBlend") +
                                          emptyPlugins({"color_a", "color_b"}) +
                                          plain("float", "blend_amount", "0.5") + kAssetTail));
    InvertTexture invert;
    EXPECT_EQ(documentOf(invert), document(assetHead("texture", "/TexInvert", "TexInvert") +
                                           empty("plugin", "texture") +
                                           plain("bool", "invert_alpha", "0") + kAssetTail));
    UVWTexture uvw;
    EXPECT_EQ(documentOf(uvw), document(assetHead("texture", "/TexUVW", "TexUVW") +
                                        empty("plugin", "uvwgen") + kAssetTail));
}

TEST(DefaultBlocks, NoiseTexture) {
    NoiseTexture noise;
    const std::string expected =
        assetHead("texture", "/TexNoise", "TexNoise") +
        emptyPlugins({"uvwgen", "color1_tex", "color2_tex"}) + color("color1", "1", "1", "1") +
        color("color2", "0", "0", "0") +
        run("float", {{"persistence", "1"},
                      {"amplitude_ratio", "1"},
                      {"frequency_ratio", "2"},
                      {"frequency1", "1"},
                      {"amplitude1", "1"},
                      {"size", "1"},
                      {"mix_ratio", "0.5"},
                      {"bias", "0"},
                      {"color1_tex_mult", "1"},
                      {"color2_tex_mult", "1"}}) +
        run("integer", {{"octaves", "3"}, {"noiseType", "0"}, {"inflection", "0"}}) + kAssetTail;
    EXPECT_EQ(documentOf(noise), document(expected));
}

// The one class whose defaults hold children: a white and a black colour texture.
TEST(DefaultBlocks, CheckerTextureWritesItsTwoColourChildrenFirst) {
    CheckerTexture checker;
    const std::string white = "/TexChecker/white_color/TexAColor";
    const std::string black = "/TexChecker/black_color/TexAColor";
    const std::string expected =
        assetHead("texture", white, "TexAColor") + acolor("texture", "1", "1", "1", "1") +
        kAssetTail + assetHead("texture", black, "TexAColor") +
        acolor("texture", "0", "0", "0", "1") + kAssetTail +
        assetHead("texture", "/TexChecker", "TexChecker") + empty("plugin", "uvwgen") +
        plain("plugin", "white_color", white) + plain("plugin", "black_color", black) +
        run("bool", {{"tile_u", "1"}, {"tile_v", "1"}}) + kAssetTail;
    EXPECT_EQ(documentOf(checker), document(expected));
}
