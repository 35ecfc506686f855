// The stream form of AllOptions: one row list for reading every known version and for writing
// the newest one.
#include "archive/read_helpers.h"
#include "options/all_options.h"
#include "options/options_rows.h"
#include "textures/base_texture.h"

namespace CorvaneCore {

namespace {

// Majors 0xA to 0xF were never released.
bool isKnownMajor(uint32_t major) { return major <= 9 || (major >= 0x10 && major <= 0x17); }

// From this major on the stored channel list replaces the default one instead of extending it.
constexpr uint32_t kChannelsReplaceSince = 0x15;

// The rows of the record, in stream order, each with the major that added it.
struct OptionRows {
    template <class Fn>
    static void visitFields(Fn& fn, AllOptions& o) {
        visitLeadingRows(fn, o);
        IdListRow channels{o.channels, kChannelsReplaceSince};
        fn(0, channels);
        for (std::u16string& path : o.paths) {
            CutPathRow row{path, kMaxOptionPathLength};
            fn(0, row);
        }
        visitTrailingRows(fn, o);
    }

    template <class Fn>
    static void visitLeadingRows(Fn& fn, AllOptions& o) {
        BlockRow params{o.params}, frameData{o.frameData}, stampInfo{o.stampInfo};
        BlockRow camera{o.camera};
        fn(0, params);
        fn(0, frameData);
        fn(0, stampInfo);
        fn(5, camera);
        EnvironmentSettings& env = o.environment;
        TextureRow bgTex{env.bg_tex}, giTex{env.gi_tex};
        fn(0, bgTex);
        fn(0, giTex);
        fn(0, env.bg_color);
        fn(0, env.gi_color);
        fn(0, env.use_gi);
        fn(0, env.use_bg);
        visitOutputRows(fn, o);
        fn(0, o.view.fov);
        fn(0, env.giColorMult);
        fn(0, env.bgColorMult);
        fn(0, env.giTexMult);
        fn(0, env.bgTexMult);
        fn(0, o.imageFilterSize);
        fn(0, o.output.img_pixelAspect);
        fn(0, o.output.img_imageAspect);
        fn(4, o.renderChannels.zdepth_black);
        fn(4, o.renderChannels.zdepth_white);
        fn(4, o.renderChannels.zdepth_clamp);
    }

    template <class Fn>
    static void visitOutputRows(Fn& fn, AllOptions& o) {
        OutputSettings& out = o.output;
        fn(0, o.imageFilterType);
        fn(0, out.img_height);
        fn(0, out.img_width);
        fn(0, o.view.override_fov);
        fn(0, out.override_viewport);
        fn(0, out.img_imageAspectLocked);
        fn(0, out.img_pixelAspectLocked);
        fn(0, out.img_rawFile);
        fn(0, out.save_render);
        fn(2, o.view.override_focal_dist);
        fn(3, o.options.show_progress_window);
        fn(5, o.view.physical_on);
        fn(6, o.view.override_focal_length);
    }

    template <class Fn>
    static void visitTrailingRows(Fn& fn, AllOptions& o) {
        fn(1, o.options.mtl_override_color);
        fn(1, o.options.batch_render);
        fn(7, o.colorMapping.gamma_correct_rgb);
        fn(7, o.colorMapping.gamma_correct_ldr_textures);
        fn(8, o.output.do_animation);
        fn(8, o.output.frame_rate);
        fn(8, o.output.frames_per_second);
        visitReflectionRows(fn, o.environment);
        fn(0x10, o.dr.on);
        fn(0x11, o.carried17);
        fn(0x11, o.carried18);
        fn(0x12, o.colorMapping.input_gamma);
        fn(0x13, o.carried19);
        fn(0x14, o.dr.asset_coll);
        fn(0x14, o.dr.mode);
        fn(0x14, o.dr.folder);
        fn(0x16, o.carried20);
        fn(0x17, o.view.specify_film_width);
    }

    template <class Fn>
    static void visitReflectionRows(Fn& fn, EnvironmentSettings& env) {
        fn(9, env.reflect_color);
        fn(9, env.refract_color);
        fn(9, env.reflectColorMult);
        fn(9, env.refractColorMult);
        fn(9, env.reflectTexMult);
        fn(9, env.refractTexMult);
        fn(9, env.use_reflect);
        fn(9, env.use_refract);
        TextureRow reflectTex{env.reflect_tex}, refractTex{env.refract_tex};
        fn(9, reflectTex);
        fn(9, refractTex);
    }
};

}  // namespace

bool readField(QuickArchive& archive, TextureRow& row) {
    return readOptionalChild<BaseTexture>(archive, row.slot, &createTexture);
}

bool writeField(QuickArchive& archive, const TextureRow& row) {
    return writeOptionalChild(archive, row.slot);
}

void AllOptions::setDefaults() {
    params.setDefaults();
    params.options.mtl_maxDepth = 2;
    params.options.mtl_limitDepth = 1;
    params.files.lightCacheFile.reset();
    params.files.lightCacheAutoSaveFile.reset();
    params.lightCache.adaptive_sampling = 0;
    params.caustics.search_distance = 20.0f;
    params.imageSampler.type = 2;
    params.imageFilter.on = 1;
    params.dmcSampler.adaptive_threshold = 0.01f;

    frameData.setDefaults();
    stampInfo.setDefaults();

    environment = EnvironmentSettings();
    output = OutputSettings();
    view = ViewSettings();
    renderChannels = RenderChannelSettings();
    colorMapping = ColorMappingSettings();
    options = OwnOptionSettings();
    dr = DistributedSettings();
    imageFilterType = 5;
    imageFilterSize = 1.5f;
    carried17 = 0.0f;
    carried18 = 0.0f;
    carried19 = 1;
    carried20 = 0;
    camera.setDefaults();
    for (std::u16string& p : paths) p.clear();
    channels.clear();
    channels.push_back(kChannelRgbColor);
    channels.push_back(kChannelAlpha);
}

bool AllOptions::serialize(QuickArchive& archive) {
    archive.write(static_cast<uint32_t>((kMajor << 16) | kMinor));
    return writeRows<OptionRows>(archive, *this);
}

bool AllOptions::deserialize(QuickArchive& archive) {
    setDefaults();
    const VersionWord word = readVersionWord(archive);
    if (word.minor != kMinor || !isKnownMajor(word.major)) return false;
    return readRows<OptionRows>(archive, word.major, *this);
}

}  // namespace CorvaneCore
