#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "convert/conversions.h"
#include "options/all_options.h"
#include "options_stream_builder.h"
#include "textures/base_texture.h"
#include "xml/asset_xml_writer.h"
#include "xml/text.h"

using namespace CorvaneCore;
using options_test::lines;
using options_test::trimmed;
using options_test::valueOf;

namespace {

// Expected parameters per block, comma separated: "name tag [u]" with tag i integer, f float,
// b bool, F file string, c color, p plugin, l list; u marks user data.
struct ExpectedBlock {
    const char* block;
    const char* params;
};

const std::vector<ExpectedBlock>& expectedBlocks() {
    static const std::vector<ExpectedBlock> blocks = {
        {"SettingsImageSampler",
         "type i, fixed_subdivs i, dmc_minSubdivs i, dmc_maxSubdivs i, dmc_threshold f,"
         " subdivision_minRate i, subdivision_maxRate i, subdivision_jitter b,"
         " subdivision_threshold f, subdivision_edges b, subdivision_normals b,"
         " subdivision_normals_threshold f, subdivision_show_samples b"},
        {"SettingsImageFilter", "on b, type i, size f"},
        {"SettingsCamera",
         "type i, height f, dist f, fov f, auto_fit b, curve f, override_fov b u"},
        {"SettingsCameraDof",
         "override_focal_dist b u, on b, aperture f, center_bias f, focal_dist f, sides_on b,"
         " sides_num i, rotation f, anisotropy f, subdivs i"},
        {"SettingsMotionBlur",
         "on b, geom_samples i, low_samples i, duration f, subdivs i, bias f,"
         " interval_center f"},
        {"SettingsGI",
         "on b, refract_caustics b, reflect_caustics b, saturation f, contrast f,"
         " contrast_base f, primary_engine i, primary_multiplier f, secondary_engine i,"
         " secondary_multiplier f, save_maps_per_frame b"},
        {"SettingsIrradianceMap",
         "min_rate i, max_rate i, subdivs i, interp_samples i, calc_interp_samples i,"
         " interp_frames i, color_threshold f, normal_threshold f, distance_threshold f,"
         " detail_enhancement b, detail_radius f, detail_subdivs_mult f, detail_scale i,"
         " randomize_samples b, interpolation_mode i, lookup_mode i, mode i, dont_delete b,"
         " file F, show_samples b, show_calc_phase b, show_direct_light b, multiple_views b,"
         " multipass b, check_sample_visibility b, auto_save b, auto_save_file F"},
        {"SettingsPhotonMap",
         "bounces i, max_photons i, prefilter b, prefilter_samples i, mode i, file F,"
         " auto_search_distance b, search_distance f, convex_hull_estimate b, dont_delete b,"
         " auto_save b, auto_save_file F, store_direct_light b, multiplier f, max_density f,"
         " retrace_corners f, retrace_bounces i, show_calc_phase b, search_distance_toggle b u"},
        {"SettingsLightCache",
         "subdivs i, sample_size f, filter_type i, filter_samples i, filter_size f,"
         " prefilter b, prefilter_samples i, depth i, show_calc_phase b, store_direct_light b,"
         " world_scale i, mode i, file F, dont_delete b, auto_save b, auto_save_file F,"
         " num_passes i, use_for_glossy_rays b, adaptive_sampling b, multiple_views b,"
         " min_paths_per_sample i, adaptive_dirs_only b"},
        {"SettingsCaustics",
         "on b, max_photons i, search_distance f, max_density f, multiplier f, mode i, file F,"
         " dont_delete b, auto_save b, auto_save_file F, show_calc_phase b"},
        {"SettingsRaycaster",
         "maxLevels i, minLeafSize f, faceLevelCoef f, dynMemLimit i, optLevel i"},
        {"SettingsRegionsGenerator", "xc i, yc i, xymeans i, seqtype i, reverse i"},
        {"SettingsDMCGI", "subdivs i, depth i"},
        {"SettingsDMCSampler",
         "time_dependent b, adaptive_amount f, adaptive_threshold f, adaptive_min_samples i,"
         " subdivs_mult f, path_sampler_type i"},
        {"SettingsColorMapping",
         "gamma_correct_rgb b u, gamma_correct_ldr_textures b u, input_gamma f u, type i,"
         " affect_background b, dark_mult f, bright_mult f, gamma f, subpixel_mapping b,"
         " clamp_output b, clamp_level f, adaptation_only b, linearWorkflow b"},
        {"SettingsRenderChannels",
         "zdepth_clamp b, zdepth_black f, zdepth_white f, channel_names l"},
        {"SettingsOptions",
         "geom_displacement b, geom_doHidden b, light_doLights b, light_doDefaultLights b,"
         " light_doHiddenLights b, light_doShadows b, light_onlyGI b, gi_dontRenderImage b,"
         " mtl_reflectionRefraction b, mtl_limitDepth b, mtl_maxDepth i, mtl_doMaps b,"
         " mtl_filterMaps b, mtl_filterMapsForSecondaryRays b, mtl_transpMaxLevels i,"
         " mtl_transpCutoff f, mtl_override_on b, mtl_glossy b, geom_backfaceCull b, ray_bias f,"
         " misc_lowThreadPriority b, show_progress_window i, batch_render i,"
         " mtl_override_color c"},
        {"SettingsDefaultDisplacement",
         "override_on b, edgeLength f, viewDependent b, maxSubdivs i, tightBounds b, amount f,"
         " relative b"},
        {"SettingsEnvironment",
         "use_bg b, bg_color c, bg_tex p, bg_mult f, use_gi b, gi_color c, gi_tex p, gi_mult f,"
         " use_reflect b, reflect_color c, reflect_tex p, reflect_mult f, use_refract b,"
         " refract_color c, refract_tex p, refract_mult f"},
        {"SettingsOutput",
         "img_width i, img_height i, img_pixelAspect f, img_imageAspect f, img_file F,"
         " img_rawFile b, frames_per_second f, rgn_left f, rgn_width f, rgn_top f, rgn_height f,"
         " bmp_width i, bmp_height i, r_left i, r_width i, r_top i, r_height i, omimg_file F u,"
         " override_viewport b u, do_animation b u, save_render b u, frame_rate i u,"
         " img_imageAspectLocked b u, img_pixelAspectLocked b"},
        {"CameraPhysical",
         "on b, type i, film_width f, focal_length f, zoom_factor f, distortion f, f_number f,"
         " lens_shift f, shutter_speed f, shutter_angle f, shutter_offset f, latency f, ISO f,"
         " specify_focus b, focus_distance f, targeted b, target_distance f,"
         " dof_display_threshold f, exposure b, white_balance c, vignetting b, blades_enable b,"
         " blades_num i, blades_rotation f, center_bias f, anisotropy f, use_dof b,"
         " use_moblur b, subdivs i, specify_film_width b u, override_focal_length b u"},
        {"SettingsDR", "on b, asset_coll b, mode i, folder F"},
    };
    return blocks;
}

// The parameter line that the writer produces for one expected entry, up to the label.
std::string parameterLineStart(const std::string& entry) {
    std::istringstream in(entry);
    std::string name, tag, flag;
    in >> name >> tag >> flag;
    static const std::map<std::string, std::string> types = {
        {"i", "integer"}, {"f", "float"},  {"b", "bool"}, {"F", "string"},
        {"c", "color"},   {"p", "plugin"}, {"l", "list"}};
    return "<parameter type=\"" + types.at(tag) + "\" name=\"" + name + "\" handler=\"" +
           (tag == "F" ? "FileBrowserHandler" : "default") + "\" listType=\"" +
           (tag == "l" ? "string" : "none") + "\"" + (flag == "u" ? " isUserData=\"1\"" : "") +
           " label=\"";
}

std::string defaultDocument() {
    AllOptions options;
    return optionsDocument(options).value();
}

class StubTexture : public BaseTexture {
public:
    void setDefaults() override {}
    int getType() override { return 0; }
    std::shared_ptr<BaseTexture> clone() override { return std::make_shared<StubTexture>(); }
    bool isEqual(const std::shared_ptr<BaseTexture>&) override { return false; }
    bool serialize(QuickArchive&) override { return true; }
    bool deserialize(QuickArchive&) override { return true; }
    std::u16string pluginType() override { return u"StubTex"; }
    int writeXML(AssetXmlWriter& writer, std::u16string name) override {
        writer.beginAsset(name + u"/" + pluginType(), pluginKind(), u"");
        writer.endAsset();
        return 0;
    }
};

}  // namespace

TEST(OptionsXml, DefaultDocumentHasEveryBlockAndParameterInOrder) {
    // The asset and plugin lines of the document, and its parameter lines up to the label.
    std::vector<std::string> got, wanted;
    for (const std::string& raw : lines(defaultDocument())) {
        const std::string line = trimmed(raw);
        if (line.rfind("<Asset ", 0) == 0 || line.rfind("<ombraplugin ", 0) == 0) {
            got.push_back(line);
        } else if (line.rfind("<parameter ", 0) == 0) {
            got.push_back(line.substr(0, line.find(" label=\"") + 8));
        }
    }
    for (const ExpectedBlock& block : expectedBlocks()) {
        const std::string name = block.block;
        wanted.push_back("<Asset layout=\"\" renderer=\"ombra\" type=\"settings\" url=\"/" + name +
                         "\" >");
        wanted.push_back("<ombraplugin name=\"" + name + "\" type=\"settings\">");
        std::istringstream list(block.params);
        for (std::string entry; std::getline(list >> std::ws, entry, ',');) {
            // Texture slots are empty by default and give no parameter.
            if (entry.find(" p") == std::string::npos) wanted.push_back(parameterLineStart(entry));
        }
    }
    for (size_t i = 0; i < std::min(got.size(), wanted.size()); ++i) {
        ASSERT_EQ(got[i], wanted[i]) << "line " << i << " of the filtered document";
    }
    EXPECT_EQ(got.size(), wanted.size());
}

TEST(OptionsXml, EachBlockSitsInItsOwnInnerAssetsElement) {
    const std::string doc = defaultDocument();
    const std::string dr =
        "    <Assets>\n"
        "      <Asset layout=\"\" renderer=\"ombra\" type=\"settings\" url=\"/SettingsDR\" >\n"
        "        <plugin>\n"
        "          <ombraplugin name=\"SettingsDR\" type=\"settings\">\n"
        "            <parameters>\n"
        "              <parameter type=\"bool\" name=\"on\" handler=\"default\" "
        "listType=\"none\" label=\"on\">\n"
        "                <value>0</value>\n"
        "              </parameter>\n"
        "              <parameter type=\"bool\" name=\"asset_coll\" handler=\"default\" "
        "listType=\"none\" label=\"asset_coll\">\n"
        "                <value>1</value>\n"
        "              </parameter>\n"
        "              <parameter type=\"integer\" name=\"mode\" handler=\"default\" "
        "listType=\"none\" label=\"mode\">\n"
        "                <value>0</value>\n"
        "              </parameter>\n"
        "              <parameter type=\"string\" name=\"folder\" handler=\"FileBrowserHandler\" "
        "listType=\"none\" label=\"folder\">\n"
        "                <value></value>\n"
        "              </parameter>\n"
        "            </parameters>\n"
        "          </ombraplugin>\n"
        "        </plugin>\n"
        "      </Asset>\n"
        "    </Assets>\n"
        "  </Assets>\n";
    ASSERT_GE(doc.size(), dr.size());
    EXPECT_EQ(doc.substr(doc.size() - dr.size()), dr);
    EXPECT_EQ(doc.rfind("  <Assets>\n    <Assets>\n", 0), 0u);
    size_t inner = 0;
    for (const std::string& line : lines(doc)) inner += line == "    <Assets>";
    EXPECT_EQ(inner, 22u);
}

// Defaults that pass through a conversion or a number format on the way out.
TEST(OptionsXml, DefaultValuesAreConvertedAndFormatted) {
    const std::string doc = defaultDocument();
    const struct {
        const char *block, *name, *value;
    } rows[] = {
        {"SettingsImageFilter", "type", "5"},
        {"SettingsCameraDof", "override_focal_dist", "0"},
        {"SettingsDMCSampler", "adaptive_threshold", "0.01"},
        {"SettingsOutput", "img_imageAspect", "1.333"},
        {"SettingsOptions", "mtl_maxDepth", "2"},  // AllOptions overrides the group's default
        {"SettingsRenderChannels", "channel_names",
         "<list><entry>RGB color</entry><entry>Alpha</entry></list>"},
        {"SettingsEnvironment", "gi_color", "<r>0.8</r><g>0.898039</g><b>1</b>"},
    };
    for (const auto& r : rows) EXPECT_EQ(valueOf(doc, r.block, r.name), r.value) << r.name;
}

TEST(OptionsXml, LabelsOfTheOutputAndChannelParameters) {
    const std::string doc = defaultDocument();
    EXPECT_NE(doc.find("name=\"omimg_file\" handler=\"FileBrowserHandler\" listType=\"none\" "
                       "isUserData=\"1\" label=\"OMImage Output File\">"),
              std::string::npos);
    EXPECT_NE(doc.find("name=\"override_viewport\" handler=\"default\" listType=\"none\" "
                       "isUserData=\"1\" label=\"Override Viewport\">"),
              std::string::npos);
    EXPECT_NE(doc.find("name=\"channel_names\" handler=\"default\" listType=\"string\" "
                       "label=\"OFB Channels\">\n"
                       "                <value>\n"
                       "                <list>\n"
                       "                  <entry>RGB color</entry>\n"),
              std::string::npos);
}

TEST(OptionsXml, StoredValuesAreExchangedInvertedAndNamed) {
    AllOptions options;
    options.imageFilterType = 1;
    options.view.override_focal_dist = 0;
    options.params.photonMap.auto_search_distance = 0;
    options.channels = {126, 999, 133, 100};
    options.path(OptionPath::ImageFile) = u"C:\\out\\a&b.png";
    std::string doc = optionsDocument(options).value();
    EXPECT_EQ(valueOf(doc, "SettingsImageFilter", "type"), "2");
    EXPECT_EQ(valueOf(doc, "SettingsCameraDof", "override_focal_dist"), "1");
    EXPECT_EQ(valueOf(doc, "SettingsPhotonMap", "search_distance_toggle"), "0");
    EXPECT_EQ(valueOf(doc, "SettingsRenderChannels", "channel_names"),
              "<list><entry>RGB color</entry><entry></entry><entry>SSS2</entry>"
              "<entry>Atmosphere</entry></list>");
    EXPECT_EQ(valueOf(doc, "SettingsOutput", "img_file"), "C:\\out\\a&amp;b.png");
    options.imageFilterType = 2;
    doc = optionsDocument(options).value();
    EXPECT_EQ(valueOf(doc, "SettingsImageFilter", "type"), "1");
}

TEST(OptionsXml, EnvironmentTextureStandsBeforeTheEnvironmentAsset) {
    AllOptions options;
    options.environment.bg_tex = std::make_shared<StubTexture>();
    options.environment.bgTexMult = 3.5f;
    options.environment.bgColorMult = 2.0f;
    options.environment.giColorMult = 0.25f;
    std::string text;
    AssetXmlWriter writer(text);
    writer.openAssets();
    options.writeXML(writer, u"/scene");
    writer.closeAssets();
    const std::string doc = writer.stream();
    const size_t texture = doc.find(
        "      <Asset layout=\"\" renderer=\"ombra\" type=\"texture\" "
        "url=\"/scene/SettingsEnvironment/bg_texture/StubTex\" >\n"
        "      </Asset>\n"
        "      <Asset layout=\"\" renderer=\"ombra\" type=\"settings\" "
        "url=\"/scene/SettingsEnvironment\" >\n");
    ASSERT_NE(texture, std::string::npos);
    // Both stand inside the one inner "Assets" element opened just before the texture.
    EXPECT_EQ(doc.rfind("    <Assets>\n", texture), texture - 13);
    EXPECT_EQ(valueOf(doc, "SettingsEnvironment", "bg_tex"),
              "/scene/SettingsEnvironment/bg_texture/StubTex");
    EXPECT_EQ(valueOf(doc, "SettingsEnvironment", "bg_mult"), "3.5");
    EXPECT_EQ(valueOf(doc, "SettingsEnvironment", "gi_mult"), "0.25");
}
