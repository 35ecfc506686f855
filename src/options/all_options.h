// The whole render setup of a scene: the renderer's settings, the frame data, the stamp, the
// physical camera, and the plug-in's own fields. Reads the old binary record and writes the
// options document of 22 settings blocks.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "archive/value_types.h"
#include "options/cameras.h"
#include "options/options_groups.h"

namespace CorvaneCore {

class BaseTexture;

struct EnvironmentSettings {
    Color bg_color;
    Color gi_color{0.8f, 0.8980392f, 1.0f};
    Color reflect_color;
    Color refract_color;
    std::shared_ptr<BaseTexture> bg_tex;
    std::shared_ptr<BaseTexture> gi_tex;
    std::shared_ptr<BaseTexture> reflect_tex;
    std::shared_ptr<BaseTexture> refract_tex;
    int32_t use_gi = 0;
    int32_t use_bg = 0;
    int32_t use_reflect = 0;
    int32_t use_refract = 0;
    float giColorMult = 1.0f;
    float bgColorMult = 1.0f;
    float giTexMult = 1.0f;
    float bgTexMult = 1.0f;
    float reflectColorMult = 1.0f;
    float refractColorMult = 1.0f;
    float reflectTexMult = 1.0f;
    float refractTexMult = 1.0f;
};

struct OutputSettings {
    int32_t img_height = 600;
    int32_t img_width = 800;
    int32_t override_viewport = 0;
    int32_t img_imageAspectLocked = 0;
    int32_t img_pixelAspectLocked = 0;
    int32_t img_rawFile = 0;
    int32_t save_render = 0;
    float img_pixelAspect = 1.0f;
    float img_imageAspect = 1.333f;
    int32_t do_animation = 0;
    int32_t frame_rate = 0;
    float frames_per_second = 30.0f;
};

// The plug-in's own fields of the camera blocks.
struct ViewSettings {
    int32_t override_fov = 0;
    float fov = 45.0f;
    int32_t override_focal_dist = 1;
    int32_t physical_on = 0;
    int32_t override_focal_length = 0;
    int32_t specify_film_width = 0;
};

struct RenderChannelSettings {
    float zdepth_black = 0.0f;
    float zdepth_white = 1000.0f;
    int32_t zdepth_clamp = 1;
};

struct ColorMappingSettings {
    int32_t gamma_correct_rgb = 0;
    int32_t gamma_correct_ldr_textures = 0;
    float input_gamma = 2.2f;
};

struct DistributedSettings {
    int32_t on = 0;
    int32_t asset_coll = 1;
    int32_t mode = 0;
    std::u16string folder;
};

struct OwnOptionSettings {
    int32_t show_progress_window = 1;
    int32_t batch_render = 1;
    Color mtl_override_color{0.5f, 0.5f, 0.5f};
};

// The ten file paths, in stream order.
enum class OptionPath {
    ImageFile,
    OmImageFile,
    IrradianceMapFile,
    IrradianceMapAutoSaveFile,
    LightCacheFile,
    LightCacheAutoSaveFile,
    PhotonMapFile,
    PhotonMapAutoSaveFile,
    CausticsFile,
    CausticsAutoSaveFile,
};
constexpr size_t kOptionPathCount = 10;
// A path holds at most this many characters; longer stored paths are cut.
constexpr size_t kMaxOptionPathLength = 2047;

// Render channel ids that every scene starts with.
constexpr int32_t kChannelRgbColor = 126;
constexpr int32_t kChannelAlpha = 125;

class AllOptions : public CorvaneOptionsBase {
public:
    static constexpr uint32_t kMajor = 0x17;
    static constexpr uint32_t kMinor = 1;

    AllOptions() { setDefaults(); }

    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    int writeXML(AssetXmlWriter& writer, std::u16string name) override;
    std::u16string pluginType() override { return u"AllOptions"; }

    std::u16string& path(OptionPath which) { return paths[static_cast<size_t>(which)]; }
    const std::u16string& path(OptionPath which) const { return paths[static_cast<size_t>(which)]; }

    CorvaneParams params;
    CorvaneFrameData frameData;
    CorvaneOFBStampInfo stampInfo;
    EnvironmentSettings environment;
    std::vector<int32_t> channels;
    // These own fields, like the groups, take their values from setDefaults alone.
    int32_t imageFilterType;
    float imageFilterSize;
    OutputSettings output;
    ViewSettings view;
    RenderChannelSettings renderChannels;
    ColorMappingSettings colorMapping;
    OwnOptionSettings options;
    DistributedSettings dr;
    // Stored for the renderer and carried through unchanged.
    float carried17;
    float carried18;
    int32_t carried19;
    int32_t carried20;
    PhysicalCamera camera;
    std::array<std::u16string, kOptionPathCount> paths;
};

// The render options of the scene in memory, owned by the stored scene record (SkpModule): the
// defaults until a record is read.
AllOptions& sceneOptions();

}  // namespace CorvaneCore
