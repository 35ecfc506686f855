// The options document: 22 settings blocks, each an asset in an "Assets" element of its own.
#include <map>

#include "options/all_options.h"
#include "textures/base_texture.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

namespace {

constexpr const char16_t* kSettingsKind = u"settings";
constexpr bool kUserData = true;

// An integer field that the renderer reads as a switch.
void writeSwitch(AssetXmlWriter& w, const char* name, int32_t stored, const char* label = "",
                 bool isUserData = false) {
    w.writeBool(name, stored != 0, label, isUserData);
}

template <class Body>
void writeSettingsAsset(AssetXmlWriter& w, const std::u16string& url, const char16_t* block,
                        Body body) {
    w.beginAsset(url, kSettingsKind, u"");
    w.beginPlugin(block, kSettingsKind);
    w.beginParameters();
    body();
    w.endParameters();
    w.endPlugin();
    w.endAsset();
}

template <class Body>
void writeBlock(AssetXmlWriter& w, const std::u16string& name, const char16_t* block, Body body) {
    w.openAssets();
    writeSettingsAsset(w, name + u"/" + block, block, body);
    w.closeAssets();
}

// The renderer and the plug-in number the first two image filters the other way round.
int32_t exchangedFilterType(int32_t stored) {
    if (stored == 1) return 2;
    if (stored == 2) return 1;
    return stored;
}

std::map<int32_t, std::u16string> channelNames() {
    return {
        {100, u"Atmosphere"},
        {101, u"Diffuse"},
        {102, u"Reflection"},
        {103, u"Refraction"},
        {104, u"Self-illumination"},
        {105, u"Shadow"},
        {106, u"Specular"},
        {107, u"Lighting"},
        {108, u"GI"},
        {109, u"Caustics"},
        {110, u"Raw GI"},
        {111, u"Raw Light"},
        {112, u"Raw Shadow"},
        {113, u"Velocity"},
        {114, u"RenderID"},
        {115, u"Material ID"},
        {116, u"Node ID"},
        {117, u"ZDepth"},
        {118, u"Reflection Filter"},
        {119, u"Raw Reflection"},
        {120, u"Refraction Filter"},
        {121, u"Raw Refraction"},
        {122, u"Real Color"},
        {123, u"Normals"},
        {124, u"Background"},
        {125, u"Alpha"},
        {126, u"RGB color"},
        {127, u"Wire Color"},
        {128, u"Matte Shadow"},
        {129, u"Total Light"},
        {130, u"Raw Total Light"},
        {131, u"Bump Normal"},
        {132, u"Sample Rate"},
        {133, u"SSS2"},
    };
}

class OptionsXml {
public:
    OptionsXml(AssetXmlWriter& w, const AllOptions& o, const std::u16string& name)
        : w_(w), o_(o), p_(o.params), f_(o.frameData), name_(name) {}

    void write() {
        writeBlock(w_, name_, u"SettingsImageSampler", [&] { imageSampler(); });
        writeBlock(w_, name_, u"SettingsImageFilter", [&] { imageFilter(); });
        writeBlock(w_, name_, u"SettingsCamera", [&] { camera(); });
        writeBlock(w_, name_, u"SettingsCameraDof", [&] { cameraDof(); });
        writeBlock(w_, name_, u"SettingsMotionBlur", [&] { motionBlur(); });
        writeBlock(w_, name_, u"SettingsGI", [&] { gi(); });
        writeBlock(w_, name_, u"SettingsIrradianceMap", [&] { irradianceMap(); });
        writeBlock(w_, name_, u"SettingsPhotonMap", [&] { photonMap(); });
        writeBlock(w_, name_, u"SettingsLightCache", [&] { lightCache(); });
        writeBlock(w_, name_, u"SettingsCaustics", [&] { caustics(); });
        writeBlock(w_, name_, u"SettingsRaycaster", [&] { raycaster(); });
        writeBlock(w_, name_, u"SettingsRegionsGenerator", [&] { regionsGenerator(); });
        writeBlock(w_, name_, u"SettingsDMCGI", [&] { dmcGI(); });
        writeBlock(w_, name_, u"SettingsDMCSampler", [&] { dmcSampler(); });
        writeBlock(w_, name_, u"SettingsColorMapping", [&] { colorMapping(); });
        writeBlock(w_, name_, u"SettingsRenderChannels", [&] { renderChannels(); });
        writeBlock(w_, name_, u"SettingsOptions", [&] { options(); });
        writeBlock(w_, name_, u"SettingsDefaultDisplacement", [&] { defaultDisplacement(); });
        environmentBlock();
        writeBlock(w_, name_, u"SettingsOutput", [&] { output(); });
        writeBlock(w_, name_, u"CameraPhysical", [&] { cameraPhysical(); });
        writeBlock(w_, name_, u"SettingsDR", [&] { dr(); });
    }

private:
    void imageSampler() {
        const auto& s = p_.imageSampler;
        w_.writeInteger("type", s.type);
        w_.writeInteger("fixed_subdivs", s.fixed_subdivs);
        w_.writeInteger("dmc_minSubdivs", s.dmc_minSubdivs);
        w_.writeInteger("dmc_maxSubdivs", s.dmc_maxSubdivs);
        w_.writeFloat("dmc_threshold", s.dmc_threshold);
        w_.writeInteger("subdivision_minRate", s.subdivision_minRate);
        w_.writeInteger("subdivision_maxRate", s.subdivision_maxRate);
        writeSwitch(w_, "subdivision_jitter", s.subdivision_jitter);
        w_.writeFloat("subdivision_threshold", s.subdivision_threshold);
        writeSwitch(w_, "subdivision_edges", s.subdivision_edges);
        writeSwitch(w_, "subdivision_normals", s.subdivision_normals);
        w_.writeFloat("subdivision_normals_threshold", s.subdivision_normals_threshold);
        writeSwitch(w_, "subdivision_show_samples", s.subdivision_show_samples);
    }

    void imageFilter() {
        writeSwitch(w_, "on", p_.imageFilter.on);
        w_.writeInteger("type", exchangedFilterType(o_.imageFilterType));
        w_.writeFloat("size", o_.imageFilterSize);
    }

    void camera() {
        w_.writeInteger("type", p_.camera.type);
        w_.writeFloat("height", f_.height);
        w_.writeFloat("dist", f_.dist);
        w_.writeFloat("fov", o_.view.fov);
        writeSwitch(w_, "auto_fit", f_.auto_fit);
        w_.writeFloat("curve", f_.curve);
        writeSwitch(w_, "override_fov", o_.view.override_fov, "", kUserData);
    }

    void cameraDof() {
        const auto& d = p_.cameraDof;
        // Stored the other way round: 0 means the focal distance is overridden.
        w_.writeBool("override_focal_dist", o_.view.override_focal_dist == 0, "", kUserData);
        writeSwitch(w_, "on", d.on);
        w_.writeFloat("aperture", f_.aperture);
        w_.writeFloat("center_bias", d.center_bias);
        w_.writeFloat("focal_dist", f_.focal_dist);
        writeSwitch(w_, "sides_on", d.sides_on);
        w_.writeInteger("sides_num", d.sides_num);
        w_.writeFloat("rotation", f_.rotation);
        w_.writeFloat("anisotropy", d.anisotropy);
        w_.writeInteger("subdivs", d.subdivs);
    }

    void motionBlur() {
        const auto& m = p_.motionBlur;
        writeSwitch(w_, "on", m.on);
        w_.writeInteger("geom_samples", m.geom_samples);
        w_.writeInteger("low_samples", m.low_samples);
        w_.writeFloat("duration", m.duration);
        w_.writeInteger("subdivs", m.subdivs);
        w_.writeFloat("bias", m.bias);
        w_.writeFloat("interval_center", m.interval_center);
    }

    void gi() {
        const auto& g = p_.gi;
        writeSwitch(w_, "on", g.on);
        writeSwitch(w_, "refract_caustics", g.refract_caustics);
        writeSwitch(w_, "reflect_caustics", g.reflect_caustics);
        w_.writeFloat("saturation", g.saturation);
        w_.writeFloat("contrast", g.contrast);
        w_.writeFloat("contrast_base", g.contrast_base);
        w_.writeInteger("primary_engine", g.primary_engine);
        w_.writeFloat("primary_multiplier", g.primary_multiplier);
        w_.writeInteger("secondary_engine", g.secondary_engine);
        w_.writeFloat("secondary_multiplier", g.secondary_multiplier);
        writeSwitch(w_, "save_maps_per_frame", g.save_maps_per_frame);
    }

    void irradianceMap() {
        const auto& m = p_.irradianceMap;
        w_.writeInteger("min_rate", m.min_rate);
        w_.writeInteger("max_rate", m.max_rate);
        w_.writeInteger("subdivs", m.subdivs);
        w_.writeInteger("interp_samples", m.interp_samples);
        w_.writeInteger("calc_interp_samples", m.calc_interp_samples);
        w_.writeInteger("interp_frames", m.interp_frames);
        w_.writeFloat("color_threshold", m.color_threshold);
        w_.writeFloat("normal_threshold", m.normal_threshold);
        w_.writeFloat("distance_threshold", m.distance_threshold);
        writeSwitch(w_, "detail_enhancement", m.detail_enhancement);
        w_.writeFloat("detail_radius", m.detail_radius);
        w_.writeFloat("detail_subdivs_mult", m.detail_subdivs_mult);
        w_.writeInteger("detail_scale", m.detail_scale);
        writeSwitch(w_, "randomize_samples", m.randomize_samples);
        w_.writeInteger("interpolation_mode", m.interpolation_mode);
        w_.writeInteger("lookup_mode", m.lookup_mode);
        w_.writeInteger("mode", m.mode);
        writeSwitch(w_, "dont_delete", m.dont_delete);
        w_.writeFile(u"file", o_.path(OptionPath::IrradianceMapFile));
        writeSwitch(w_, "show_samples", m.show_samples);
        writeSwitch(w_, "show_calc_phase", m.show_calc_phase);
        writeSwitch(w_, "show_direct_light", m.show_direct_light);
        writeSwitch(w_, "multiple_views", m.multiple_views);
        writeSwitch(w_, "multipass", m.multipass);
        writeSwitch(w_, "check_sample_visibility", m.check_sample_visibility);
        writeSwitch(w_, "auto_save", m.auto_save);
        w_.writeFile(u"auto_save_file", o_.path(OptionPath::IrradianceMapAutoSaveFile));
    }

    void photonMap() {
        const auto& m = p_.photonMap;
        w_.writeInteger("bounces", m.bounces);
        w_.writeInteger("max_photons", m.max_photons);
        writeSwitch(w_, "prefilter", m.prefilter);
        w_.writeInteger("prefilter_samples", m.prefilter_samples);
        w_.writeInteger("mode", m.mode);
        w_.writeFile(u"file", o_.path(OptionPath::PhotonMapFile));
        writeSwitch(w_, "auto_search_distance", m.auto_search_distance);
        w_.writeFloat("search_distance", m.search_distance);
        writeSwitch(w_, "convex_hull_estimate", m.convex_hull_estimate);
        writeSwitch(w_, "dont_delete", m.dont_delete);
        writeSwitch(w_, "auto_save", m.auto_save);
        w_.writeFile(u"auto_save_file", o_.path(OptionPath::PhotonMapAutoSaveFile));
        writeSwitch(w_, "store_direct_light", m.store_direct_light);
        w_.writeFloat("multiplier", m.multiplier);
        w_.writeFloat("max_density", m.max_density);
        w_.writeFloat("retrace_corners", m.retrace_corners);
        w_.writeInteger("retrace_bounces", m.retrace_bounces);
        writeSwitch(w_, "show_calc_phase", m.show_calc_phase);
        // The plug-in's own toggle mirrors the automatic search distance.
        writeSwitch(w_, "search_distance_toggle", m.auto_search_distance, "", kUserData);
    }

    void lightCache() {
        const auto& c = p_.lightCache;
        w_.writeInteger("subdivs", c.subdivs);
        w_.writeFloat("sample_size", c.sample_size);
        w_.writeInteger("filter_type", c.filter_type);
        w_.writeInteger("filter_samples", c.filter_samples);
        w_.writeFloat("filter_size", c.filter_size);
        writeSwitch(w_, "prefilter", c.prefilter);
        w_.writeInteger("prefilter_samples", c.prefilter_samples);
        w_.writeInteger("depth", c.depth);
        writeSwitch(w_, "show_calc_phase", c.show_calc_phase);
        writeSwitch(w_, "store_direct_light", c.store_direct_light);
        w_.writeInteger("world_scale", c.world_scale);
        w_.writeInteger("mode", c.mode);
        w_.writeFile(u"file", o_.path(OptionPath::LightCacheFile));
        writeSwitch(w_, "dont_delete", c.dont_delete);
        writeSwitch(w_, "auto_save", c.auto_save);
        w_.writeFile(u"auto_save_file", o_.path(OptionPath::LightCacheAutoSaveFile));
        w_.writeInteger("num_passes", c.num_passes);
        writeSwitch(w_, "use_for_glossy_rays", c.use_for_glossy_rays);
        writeSwitch(w_, "adaptive_sampling", c.adaptive_sampling);
        writeSwitch(w_, "multiple_views", c.multiple_views);
        w_.writeInteger("min_paths_per_sample", c.min_paths_per_sample);
        writeSwitch(w_, "adaptive_dirs_only", c.adaptive_dirs_only);
    }

    void caustics() {
        const auto& c = p_.caustics;
        writeSwitch(w_, "on", c.on);
        w_.writeInteger("max_photons", c.max_photons);
        w_.writeFloat("search_distance", c.search_distance);
        w_.writeFloat("max_density", c.max_density);
        w_.writeFloat("multiplier", c.multiplier);
        w_.writeInteger("mode", c.mode);
        w_.writeFile(u"file", o_.path(OptionPath::CausticsFile));
        writeSwitch(w_, "dont_delete", c.dont_delete);
        writeSwitch(w_, "auto_save", c.auto_save);
        w_.writeFile(u"auto_save_file", o_.path(OptionPath::CausticsAutoSaveFile));
        writeSwitch(w_, "show_calc_phase", c.show_calc_phase);
    }

    void raycaster() {
        const auto& r = p_.raycaster;
        w_.writeInteger("maxLevels", r.maxLevels);
        w_.writeFloat("minLeafSize", r.minLeafSize);
        w_.writeFloat("faceLevelCoef", r.faceLevelCoef);
        w_.writeInteger("dynMemLimit", r.dynMemLimit);
        w_.writeInteger("optLevel", r.optLevel);
    }

    void regionsGenerator() {
        const auto& r = p_.regionsGenerator;
        w_.writeInteger("xc", r.xc);
        w_.writeInteger("yc", r.yc);
        w_.writeInteger("xymeans", r.xymeans);
        w_.writeInteger("seqtype", r.seqtype);
        w_.writeInteger("reverse", r.reverse);
    }

    void dmcGI() {
        w_.writeInteger("subdivs", p_.dmcGI.subdivs);
        w_.writeInteger("depth", p_.dmcGI.depth);
    }

    void dmcSampler() {
        const auto& s = p_.dmcSampler;
        writeSwitch(w_, "time_dependent", s.time_dependent);
        w_.writeFloat("adaptive_amount", s.adaptive_amount);
        w_.writeFloat("adaptive_threshold", s.adaptive_threshold);
        w_.writeInteger("adaptive_min_samples", s.adaptive_min_samples);
        w_.writeFloat("subdivs_mult", s.subdivs_mult);
        w_.writeInteger("path_sampler_type", s.path_sampler_type);
    }

    void colorMapping() {
        const auto& c = p_.colorMapping;
        const auto& own = o_.colorMapping;
        writeSwitch(w_, "gamma_correct_rgb", own.gamma_correct_rgb, "", kUserData);
        writeSwitch(w_, "gamma_correct_ldr_textures", own.gamma_correct_ldr_textures, "",
                    kUserData);
        w_.writeFloat("input_gamma", own.input_gamma, "", kUserData);
        w_.writeInteger("type", c.type);
        writeSwitch(w_, "affect_background", c.affect_background);
        w_.writeFloat("dark_mult", f_.dark_mult);
        w_.writeFloat("bright_mult", f_.bright_mult);
        w_.writeFloat("gamma", c.gamma);
        writeSwitch(w_, "subpixel_mapping", c.subpixel_mapping);
        writeSwitch(w_, "clamp_output", c.clamp_output);
        w_.writeFloat("clamp_level", c.clamp_level);
        writeSwitch(w_, "adaptation_only", c.adaptation_only);
        writeSwitch(w_, "linearWorkflow", c.linearWorkflow);
    }

    void renderChannels() {
        const auto& c = o_.renderChannels;
        writeSwitch(w_, "zdepth_clamp", c.zdepth_clamp);
        w_.writeFloat("zdepth_black", c.zdepth_black);
        w_.writeFloat("zdepth_white", c.zdepth_white);
        const std::map<int32_t, std::u16string> names = channelNames();
        w_.beginList("channel_names", "string", "OFB Channels");
        for (int32_t id : o_.channels) {
            auto found = names.find(id);
            w_.writeEntry(found == names.end() ? std::u16string() : found->second);
        }
        w_.endList();
    }

    void options() {
        const auto& o = p_.options;
        writeSwitch(w_, "geom_displacement", o.geom_displacement);
        writeSwitch(w_, "geom_doHidden", o.geom_doHidden);
        writeSwitch(w_, "light_doLights", o.light_doLights);
        writeSwitch(w_, "light_doDefaultLights", o.light_doDefaultLights);
        writeSwitch(w_, "light_doHiddenLights", o.light_doHiddenLights);
        writeSwitch(w_, "light_doShadows", o.light_doShadows);
        writeSwitch(w_, "light_onlyGI", o.light_onlyGI);
        writeSwitch(w_, "gi_dontRenderImage", o.gi_dontRenderImage);
        writeSwitch(w_, "mtl_reflectionRefraction", o.mtl_reflectionRefraction);
        writeSwitch(w_, "mtl_limitDepth", o.mtl_limitDepth);
        w_.writeInteger("mtl_maxDepth", o.mtl_maxDepth);
        writeSwitch(w_, "mtl_doMaps", o.mtl_doMaps);
        writeSwitch(w_, "mtl_filterMaps", o.mtl_filterMaps);
        writeSwitch(w_, "mtl_filterMapsForSecondaryRays", o.mtl_filterMapsForSecondaryRays);
        w_.writeInteger("mtl_transpMaxLevels", o.mtl_transpMaxLevels);
        w_.writeFloat("mtl_transpCutoff", o.mtl_transpCutoff);
        writeSwitch(w_, "mtl_override_on", o.mtl_override_on);
        writeSwitch(w_, "mtl_glossy", o.mtl_glossy);
        writeSwitch(w_, "geom_backfaceCull", o.geom_backfaceCull);
        w_.writeFloat("ray_bias", o.ray_bias);
        writeSwitch(w_, "misc_lowThreadPriority", o.misc_lowThreadPriority);
        w_.writeInteger("show_progress_window", o_.options.show_progress_window);
        w_.writeInteger("batch_render", o_.options.batch_render);
        w_.writeColor("mtl_override_color", o_.options.mtl_override_color);
    }

    void defaultDisplacement() {
        const auto& d = p_.defaultDisplacement;
        writeSwitch(w_, "override_on", d.override_on);
        w_.writeFloat("edgeLength", d.edgeLength);
        writeSwitch(w_, "viewDependent", d.viewDependent);
        w_.writeInteger("maxSubdivs", d.maxSubdivs);
        writeSwitch(w_, "tightBounds", d.tightBounds);
        w_.writeFloat("amount", d.amount);
        writeSwitch(w_, "relative", d.relative);
    }

    struct EnvironmentSlot {
        const char* prefix;  // "bg" gives "use_bg", "bg_color", "bg_tex", "bg_mult"
        const char16_t* path;
        int32_t use;
        const Color& color;
        const std::shared_ptr<BaseTexture>& texture;
        float colorMult;
        float texMult;
    };

    // The textures stand first, inside the same "Assets" element as the environment asset.
    void environmentBlock() {
        const EnvironmentSettings& e = o_.environment;
        const EnvironmentSlot slots[] = {
            {"bg", u"bg_texture", e.use_bg, e.bg_color, e.bg_tex, e.bgColorMult, e.bgTexMult},
            {"gi", u"gi_texture", e.use_gi, e.gi_color, e.gi_tex, e.giColorMult, e.giTexMult},
            {"reflect", u"reflect_texture", e.use_reflect, e.reflect_color, e.reflect_tex,
             e.reflectColorMult, e.reflectTexMult},
            {"refract", u"refract_texture", e.use_refract, e.refract_color, e.refract_tex,
             e.refractColorMult, e.refractTexMult},
        };
        const char16_t* block = u"SettingsEnvironment";
        const std::u16string url = name_ + u"/" + block;
        w_.openAssets();
        for (const EnvironmentSlot& slot : slots) {
            if (slot.texture) slot.texture->writeXML(w_, url + u"/" + slot.path);
        }
        writeSettingsAsset(w_, url, block, [&] {
            for (const EnvironmentSlot& slot : slots) environmentSlot(url, slot);
        });
        w_.closeAssets();
    }

    void environmentSlot(const std::u16string& url, const EnvironmentSlot& slot) {
        const std::string prefix = slot.prefix;
        writeSwitch(w_, ("use_" + prefix).c_str(), slot.use);
        w_.writeColor((prefix + "_color").c_str(), slot.color);
        if (slot.texture) {
            w_.writePlugin((prefix + "_tex").c_str(), PluginRef(slot.texture),
                           url + u"/" + slot.path);
        }
        w_.writeFloat((prefix + "_mult").c_str(), slot.texture ? slot.texMult : slot.colorMult);
    }

    void output() {
        const auto& out = o_.output;
        w_.writeInteger("img_width", out.img_width);
        w_.writeInteger("img_height", out.img_height);
        w_.writeFloat("img_pixelAspect", out.img_pixelAspect);
        w_.writeFloat("img_imageAspect", out.img_imageAspect);
        w_.writeFile(u"img_file", o_.path(OptionPath::ImageFile));
        writeSwitch(w_, "img_rawFile", out.img_rawFile);
        w_.writeFloat("frames_per_second", out.frames_per_second);
        w_.writeFloat("rgn_left", f_.rgn_left);
        w_.writeFloat("rgn_width", f_.rgn_width);
        w_.writeFloat("rgn_top", f_.rgn_top);
        w_.writeFloat("rgn_height", f_.rgn_height);
        w_.writeInteger("bmp_width", f_.bmp_width);
        w_.writeInteger("bmp_height", f_.bmp_height);
        w_.writeInteger("r_left", f_.r_left);
        w_.writeInteger("r_width", f_.r_width);
        w_.writeInteger("r_top", f_.r_top);
        w_.writeInteger("r_height", f_.r_height);
        w_.writeFile(u"omimg_file", o_.path(OptionPath::OmImageFile), u"OMImage Output File",
                     kUserData);
        writeSwitch(w_, "override_viewport", out.override_viewport, "Override Viewport", kUserData);
        writeSwitch(w_, "do_animation", out.do_animation, "", kUserData);
        writeSwitch(w_, "save_render", out.save_render, "", kUserData);
        w_.writeInteger("frame_rate", out.frame_rate, "", kUserData);
        writeSwitch(w_, "img_imageAspectLocked", out.img_imageAspectLocked, "", kUserData);
        // Deliberately not user data, unlike its neighbours.
        writeSwitch(w_, "img_pixelAspectLocked", out.img_pixelAspectLocked);
    }

    void cameraPhysical() {
        const PhysicalCamera& c = o_.camera;
        writeSwitch(w_, "on", o_.view.physical_on);
        w_.writeInteger("type", c.type);
        w_.writeFloat("film_width", c.film_width);
        w_.writeFloat("focal_length", c.focal_length.getValue(0.0));
        w_.writeFloat("zoom_factor", c.zoom_factor);
        w_.writeFloat("distortion", c.distortion);
        w_.writeFloat("f_number", c.f_number);
        w_.writeFloat("lens_shift", c.lens_shift);
        w_.writeFloat("shutter_speed", c.shutter_speed);
        w_.writeFloat("shutter_angle", c.shutter_angle);
        w_.writeFloat("shutter_offset", c.shutter_offset);
        w_.writeFloat("latency", c.latency);
        w_.writeFloat("ISO", c.ISO);
        writeSwitch(w_, "specify_focus", c.specify_focus);
        w_.writeFloat("focus_distance", c.focus_distance.getValue(0.0));
        writeSwitch(w_, "targeted", c.targeted);
        w_.writeFloat("target_distance", c.target_distance);
        w_.writeFloat("dof_display_threshold", c.dof_display_threshold);
        writeSwitch(w_, "exposure", c.exposure);
        w_.writeColor("white_balance", c.white_balance);
        writeSwitch(w_, "vignetting", c.vignetting);
        writeSwitch(w_, "blades_enable", c.blades_enable);
        w_.writeInteger("blades_num", c.blades_num);
        w_.writeFloat("blades_rotation", c.blades_rotation);
        w_.writeFloat("center_bias", c.center_bias);
        w_.writeFloat("anisotropy", c.anisotropy);
        writeSwitch(w_, "use_dof", c.use_dof);
        writeSwitch(w_, "use_moblur", c.use_moblur);
        w_.writeInteger("subdivs", c.subdivs);
        writeSwitch(w_, "specify_film_width", o_.view.specify_film_width, "", kUserData);
        writeSwitch(w_, "override_focal_length", o_.view.override_focal_length, "", kUserData);
    }

    void dr() {
        writeSwitch(w_, "on", o_.dr.on);
        writeSwitch(w_, "asset_coll", o_.dr.asset_coll);
        w_.writeInteger("mode", o_.dr.mode);
        w_.writeFile(u"folder", o_.dr.folder);
    }

    AssetXmlWriter& w_;
    const AllOptions& o_;
    const OmbraUtils::OmbraParams& p_;
    const OmbraUtils::OmbraFrameData& f_;
    const std::u16string& name_;
};

}  // namespace

int AllOptions::writeXML(AssetXmlWriter& writer, std::u16string name) {
    OptionsXml(writer, *this, name).write();
    return 0;
}

}  // namespace CorvaneCore
