// The stream form of AllOptions: one row list for reading every known version and for writing
// the newest one.
#include <algorithm>

#include "archive/read_helpers.h"
#include "options/all_options.h"
#include "options/options_io.h"
#include "textures/base_texture.h"

namespace CorvaneCore {

namespace {

// Majors 0xA to 0xF were never released.
bool isKnownMajor(uint32_t major) { return major <= 9 || (major >= 0x10 && major <= 0x17); }

// From this major on the stored channel list replaces the default one instead of extending it.
constexpr uint32_t kChannelsReplaceSince = 0x15;

template <class Io, class Group>
bool transferGroup(Io& io, Group& group) {
    if constexpr (Io::kReading) {
        return group.deserialize(io.archive());
    } else {
        return group.serialize(io.archive());
    }
}

template <class Io>
bool transferTexture(Io& io, std::shared_ptr<BaseTexture>& slot) {
    if constexpr (Io::kReading) {
        return readOptionalChild<BaseTexture>(io.archive(), slot, &createTexture);
    } else {
        return writeOptionalChild(io.archive(), slot);
    }
}

void readChannels(RowReader& io, std::vector<int32_t>& channels) {
    QuickArchive& archive = io.archive();
    uint64_t count = 0;
    archive.readSize(count);
    if (io.major() >= kChannelsReplaceSince) channels.clear();
    // Never trust the count beyond what the remaining bytes can hold.
    const uint64_t fits = archive.remaining() / sizeof(int32_t);
    channels.reserve(channels.size() + static_cast<size_t>(std::min(count, fits)));
    for (uint64_t i = 0; i < count && archive.remaining() > 0; ++i) {
        int32_t id = 0;
        archive.read(id);
        channels.push_back(id);
    }
}

void writeChannels(RowWriter& io, const std::vector<int32_t>& channels) {
    io.archive().writeSize(channels.size());
    for (int32_t id : channels) io(id);
}

template <class Io>
void transferPath(Io& io, std::u16string& path) {
    io(path);
    if constexpr (Io::kReading) {
        if (path.size() > kMaxOptionPathLength) path.resize(kMaxOptionPathLength);
    }
}

template <class Io>
bool transferLeadingRows(Io& io, AllOptions& o) {
    if (!transferGroup(io, o.params) || !transferGroup(io, o.frameData) ||
        !transferGroup(io, o.stampInfo)) {
        return false;
    }
    if (io.has(5) && !transferGroup(io, o.camera)) return false;
    EnvironmentSettings& env = o.environment;
    if (!transferTexture(io, env.bg_tex) || !transferTexture(io, env.gi_tex)) return false;
    io(env.bg_color), io(env.gi_color), io(env.use_gi), io(env.use_bg);
    OutputSettings& out = o.output;
    io(o.imageFilterType), io(out.img_height), io(out.img_width), io(o.view.override_fov);
    io(out.override_viewport), io(out.img_imageAspectLocked), io(out.img_pixelAspectLocked);
    io(out.img_rawFile), io(out.save_render);
    if (io.has(2)) io(o.view.override_focal_dist);
    if (io.has(3)) io(o.options.show_progress_window);
    if (io.has(5)) io(o.view.physical_on);
    if (io.has(6)) io(o.view.override_focal_length);
    io(o.view.fov), io(env.giColorMult), io(env.bgColorMult), io(env.giTexMult);
    io(env.bgTexMult), io(o.imageFilterSize), io(out.img_pixelAspect), io(out.img_imageAspect);
    if (io.has(4)) {
        io(o.renderChannels.zdepth_black), io(o.renderChannels.zdepth_white);
        io(o.renderChannels.zdepth_clamp);
    }
    return true;
}

template <class Io>
bool transferTrailingRows(Io& io, AllOptions& o) {
    if (io.has(1)) io(o.options.mtl_override_color), io(o.options.batch_render);
    if (io.has(7)) {
        io(o.colorMapping.gamma_correct_rgb), io(o.colorMapping.gamma_correct_ldr_textures);
    }
    if (io.has(8)) {
        io(o.output.do_animation), io(o.output.frame_rate), io(o.output.frames_per_second);
    }
    if (io.has(9)) {
        EnvironmentSettings& env = o.environment;
        io(env.reflect_color), io(env.refract_color), io(env.reflectColorMult);
        io(env.refractColorMult), io(env.reflectTexMult), io(env.refractTexMult);
        io(env.use_reflect), io(env.use_refract);
        if (!transferTexture(io, env.reflect_tex) || !transferTexture(io, env.refract_tex)) {
            return false;
        }
    }
    if (io.has(0x10)) io(o.dr.on);
    if (io.has(0x11)) io(o.carried17), io(o.carried18);
    if (io.has(0x12)) io(o.colorMapping.input_gamma);
    if (io.has(0x13)) io(o.carried19);
    if (io.has(0x14)) io(o.dr.asset_coll), io(o.dr.mode), io(o.dr.folder);
    if (io.has(0x16)) io(o.carried20);
    if (io.has(0x17)) io(o.view.specify_film_width);
    return true;
}

template <class Io>
bool transferOptions(Io& io, AllOptions& o) {
    if (!transferLeadingRows(io, o)) return false;
    if constexpr (Io::kReading) {
        readChannels(io, o.channels);
    } else {
        writeChannels(io, o.channels);
    }
    for (std::u16string& path : o.paths) transferPath(io, path);
    return transferTrailingRows(io, o);
}

}  // namespace

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
    environment.gi_color = Color(0.8f, 0.8980392f, 1.0f);
    imageFilterType = 5;
    imageFilterSize = 1.5f;
    output = OutputSettings();
    view = ViewSettings();
    renderChannels = RenderChannelSettings();
    colorMapping = ColorMappingSettings();
    options = OwnOptionSettings();
    dr = DistributedSettings();
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
    RowWriter writer(archive);
    return transferOptions(writer, *this);
}

bool AllOptions::deserialize(QuickArchive& archive) {
    setDefaults();
    uint32_t word = 0;
    archive.read(word);
    const uint32_t major = versionMajor(word);
    if (versionMinor(word) != kMinor || !isKnownMajor(major)) return false;
    RowReader reader(archive, major);
    return transferOptions(reader, *this);
}

}  // namespace CorvaneCore
