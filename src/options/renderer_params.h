// The renderer's own settings record: every field that the options stream or the options XML
// names, grouped by the settings block it belongs to. The member initialisers are the
// renderer's defaults; `setDefaults` restores them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace OmbraUtils {

struct ImageSamplerParams {
    int32_t type = 1;
    int32_t fixed_subdivs = 1;
    int32_t dmc_minSubdivs = 1;
    int32_t dmc_maxSubdivs = 4;
    float dmc_threshold = 0.01f;
    int32_t subdivision_minRate = -1;
    int32_t subdivision_maxRate = 2;
    float subdivision_threshold = 0.1f;
    int32_t subdivision_jitter = 1;
    int32_t subdivision_edges = 0;
    int32_t subdivision_normals = 0;
    float subdivision_normals_threshold = 0.05f;
    int32_t subdivision_show_samples = 0;
};

struct ImageFilterParams {
    int32_t on = 1;
};

struct CameraParams {
    int32_t type = 0;
};

struct CameraDofParams {
    int32_t on = 0;
    int32_t subdivs = 8;
    float center_bias = 0.0f;
    int32_t sides_on = 0;
    int32_t sides_num = 5;
    float anisotropy = 0.0f;
};

struct MotionBlurParams {
    int32_t on = 0;
    int32_t geom_samples = 2;
    int32_t subdivs = 1;
    int32_t low_samples = 1;
    float duration = 1.0f;
    float interval_center = 0.5f;
    float bias = 0.0f;
};

struct GIParams {
    int32_t on = 0;
    int32_t refract_caustics = 1;
    int32_t reflect_caustics = 0;
    float saturation = 1.0f;
    float contrast = 1.0f;
    float contrast_base = 0.5f;
    int32_t primary_engine = 0;
    float primary_multiplier = 1.0f;
    int32_t secondary_engine = 0;
    float secondary_multiplier = 1.0f;
    int32_t save_maps_per_frame = 1;
};

struct DMCGIParams {
    int32_t subdivs = 8;
    int32_t depth = 3;
};

struct IrradianceMapParams {
    int32_t min_rate = -3;
    int32_t max_rate = 0;
    int32_t subdivs = 50;
    int32_t interp_samples = 20;
    int32_t calc_interp_samples = 10;
    int32_t interp_frames = 2;
    float color_threshold = 0.3f;
    float normal_threshold = 0.1f;
    float distance_threshold = 0.1f;
    int32_t detail_enhancement = 0;
    float detail_radius = 60.0f;
    float detail_subdivs_mult = 0.3f;
    int32_t detail_scale = 0;
    int32_t randomize_samples = 1;
    int32_t interpolation_mode = 1;
    int32_t lookup_mode = 2;
    int32_t mode = 0;
    int32_t dont_delete = 1;
    int32_t show_samples = 0;
    int32_t show_calc_phase = 0;
    int32_t show_direct_light = 1;
    int32_t multiple_views = 0;
    int32_t multipass = 1;
    int32_t check_sample_visibility = 0;
    int32_t auto_save = 0;
};

struct PhotonMapParams {
    int32_t bounces = 10;
    float search_distance = 20.0f;
    int32_t max_photons = 30;
    int32_t prefilter = 0;
    int32_t prefilter_samples = 10;
    int32_t mode = 0;
    float multiplier = 1.0f;
    int32_t auto_search_distance = 1;
    int32_t convex_hull_estimate = 0;
    int32_t dont_delete = 1;
    int32_t auto_save = 0;
    float retrace_corners = 0.0f;
    int32_t retrace_bounces = 10;
    int32_t store_direct_light = 1;
    float max_density = 0.0f;
    int32_t show_calc_phase = 0;
};

struct LightCacheParams {
    int32_t subdivs = 1000;
    float sample_size = 0.02f;
    int32_t filter_type = 1;
    float filter_size = 0.06f;
    int32_t depth = 100;
    int32_t show_calc_phase = 0;
    int32_t store_direct_light = 1;
    int32_t world_scale = 0;
    int32_t mode = 0;
    int32_t dont_delete = 1;
    int32_t auto_save = 0;
    int32_t filter_samples = 10;
    int32_t prefilter = 0;
    int32_t prefilter_samples = 10;
    int32_t use_for_glossy_rays = 0;
    int32_t num_passes = 4;
    int32_t adaptive_sampling = 1;
    int32_t multiple_views = 0;
    int32_t min_paths_per_sample = 16;
    int32_t adaptive_dirs_only = 0;
};

struct CausticsParams {
    int32_t on = 0;
    float search_distance = 5.0f;
    int32_t max_photons = 30;
    float multiplier = 1.0f;
    float max_density = 0.0f;
    int32_t mode = 0;
    int32_t dont_delete = 1;
    int32_t auto_save = 0;
    int32_t show_calc_phase = 0;
};

struct RaycasterParams {
    int32_t maxLevels = 80;
    float minLeafSize = 0.0f;
    float faceLevelCoef = 1.0f;
    int32_t dynMemLimit = 400;
    int32_t optLevel = 0;
};

struct RegionsGeneratorParams {
    int32_t xc = 48;
    int32_t yc = 48;
    int32_t xymeans = 0;
    int32_t seqtype = 5;
    int32_t reverse = 0;
};

struct DMCSamplerParams {
    int32_t time_dependent = 0;
    float adaptive_amount = 0.85f;
    float adaptive_threshold = 0.005f;
    int32_t adaptive_min_samples = 8;
    float subdivs_mult = 1.0f;
    // The only path sampler the plug-in ever hands to the renderer.
    int32_t path_sampler_type = 2;
};

struct ColorMappingParams {
    int32_t type = 0;
    int32_t affect_background = 1;
    int32_t clamp_output = 1;
    int32_t subpixel_mapping = 0;
    float gamma = 1.0f;
    float clamp_level = 1.0f;
    int32_t adaptation_only = 0;
    int32_t linearWorkflow = 0;
};

struct OptionsParams {
    int32_t geom_displacement = 1;
    int32_t geom_doHidden = 0;
    int32_t geom_backfaceCull = 0;
    int32_t light_doLights = 1;
    int32_t light_doShadows = 1;
    int32_t light_doDefaultLights = 0;
    int32_t light_onlyGI = 0;
    int32_t light_doHiddenLights = 0;
    int32_t mtl_reflectionRefraction = 1;
    int32_t mtl_limitDepth = 0;
    int32_t mtl_maxDepth = 5;
    int32_t mtl_doMaps = 1;
    int32_t mtl_filterMaps = 1;
    int32_t mtl_filterMapsForSecondaryRays = 1;
    int32_t mtl_transpMaxLevels = 50;
    float mtl_transpCutoff = 0.001f;
    int32_t mtl_glossy = 1;
    int32_t gi_dontRenderImage = 0;
    int32_t mtl_override_on = 0;
    float ray_bias = 0.0f;
    int32_t misc_lowThreadPriority = 1;
};

struct DefaultDisplacementParams {
    int32_t override_on = 0;
    float edgeLength = 4.0f;
    int32_t viewDependent = 1;
    int32_t maxSubdivs = 256;
    int32_t tightBounds = 1;
    float amount = 1.0f;
    int32_t relative = 0;
};

// Fields of the stream whose meaning belongs to the renderer alone; they are kept only so that
// a record reads back and writes out unchanged.
struct CarriedParams {
    int32_t carried01 = 0;
    int32_t carried02 = 0;
    float carried03 = 0.0f;
    int32_t carried04 = 0;
    int32_t carried05 = 0;
    float carried06 = 0.0f;
    int32_t carried07 = 0;
    int32_t carried08 = 0;
    int32_t carried09 = 0;
    float carried10 = 0.0f;
    int32_t carried11 = 0;
    int32_t carried12 = 0;
    float carried13 = 0.0f;
    int32_t carried14 = 0;
    int32_t carried15 = 0;
    int32_t carried16 = 0;
};

// Cache files of the GI engines. An empty optional is the renderer's "no file" (a null path),
// which differs from a set but empty one.
struct CacheFileParams {
    std::optional<std::string> irradianceFile;
    std::optional<std::string> irradianceAutoSaveFile;
    std::optional<std::string> photonFile;
    std::optional<std::string> photonAutoSaveFile;
    std::optional<std::string> lightCacheFile;
    std::optional<std::string> lightCacheAutoSaveFile;
    std::optional<std::string> causticsFile;
    std::optional<std::string> causticsAutoSaveFile;
};

struct OmbraParams {
    ImageSamplerParams imageSampler;
    ImageFilterParams imageFilter;
    CameraParams camera;
    CameraDofParams cameraDof;
    MotionBlurParams motionBlur;
    GIParams gi;
    DMCGIParams dmcGI;
    IrradianceMapParams irradianceMap;
    PhotonMapParams photonMap;
    LightCacheParams lightCache;
    CausticsParams caustics;
    RaycasterParams raycaster;
    RegionsGeneratorParams regionsGenerator;
    DMCSamplerParams dmcSampler;
    ColorMappingParams colorMapping;
    OptionsParams options;
    DefaultDisplacementParams defaultDisplacement;
    CarriedParams carried;
    CacheFileParams files;

    void setDefaults() { *this = OmbraParams(); }
};

}  // namespace OmbraUtils
