// The camera records: the physical camera inside the render options, and the scene view record
// that only the archive knows.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "archive/value_types.h"
#include "options/base_camera.h"
#include "params/animated.h"

namespace CorvaneCore {

class PhysicalCamera : public BaseCamera {
public:
    static constexpr uint32_t kMajor = 2;
    static constexpr int kType = 0;

    PhysicalCamera() { setDefaults(); }

    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    int getType() override { return kType; }
    std::shared_ptr<BaseCamera> clone() override;
    void setDefaults() override;
    // The options document writes the camera's block from AllOptions.
    int writeXML(AssetXmlWriter&, std::u16string) override { return 0; }
    std::u16string pluginType() override { return u"CameraPhysical"; }

    // Values are set by setDefaults, which the constructor runs.
    int32_t type;
    float film_width;
    AnimatedReal focal_length{true};
    float zoom_factor;
    float distortion;
    float f_number;
    float lens_shift;
    float shutter_speed;
    float shutter_angle;
    float shutter_offset;
    float latency;
    float ISO;
    int32_t specify_focus;
    AnimatedReal focus_distance{true};
    int32_t targeted;
    float target_distance;
    float dof_display_threshold;
    int32_t exposure;
    Color white_balance;
    int32_t vignetting;
    int32_t blades_enable;
    int32_t blades_num;
    float blades_rotation;
    float center_bias;
    float anisotropy;
    int32_t use_dof;
    int32_t use_moblur;
    int32_t subdivs;
};

class RenderView : public CorvaneSerializable, public CorvaneXMLSerializable {
public:
    static constexpr uint32_t kMajor = 3;

    RenderView() { setDefaults(); }

    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    void setDefaults();
    int writeXML(AssetXmlWriter& writer, std::u16string name) override;
    std::u16string pluginType() override { return u"RenderView"; }
    std::u16string pluginKind() override { return u"settings"; }

    IntRect renderRegion;
    IntRect cropRegion;
    int32_t img_width;
    int32_t img_height;
    AnimatedReal fov{true};
    AnimatedReal realB{true};
    AnimatedReal realC{true};
    AnimatedFlag flagD;
    AnimatedTransform transform;

private:
    bool readVersion1(QuickArchive& archive);
    bool readVersion2(QuickArchive& archive);
    bool readVersion3(QuickArchive& archive);
};

}  // namespace CorvaneCore
