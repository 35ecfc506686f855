// The versioned groups inside the render options record: the renderer's settings, the per-frame
// scene data and the frame buffer stamp. Each reads and writes its own versioned block.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "archive/serializable.h"
#include "archive/value_types.h"
#include "options/renderer_params.h"

namespace OmbraUtils {

// Per-frame scene record of the renderer.
struct OmbraFrameData {
    double t = 0.0;
    double frameStart = 0.0;
    double frameEnd = 1.0;
    int32_t currentFrame = 0;
    CorvaneCore::DoubleTransform worldToCam = zeroTransform();
    CorvaneCore::DoubleTransform camToWorld = zeroTransform();
    float fov = 0.0f;
    float nearRange = 0.0f;
    float farRange = 0.0f;
    float focal_dist = 200.0f;
    float aperture = 0.1f;
    float rotation = 0.0f;
    int32_t clippingPlanes = 0;
    float clipNear = 0.0f;
    float clipFar = 0.0f;
    int32_t projType = 0;
    float zoomFractor = 1.0f;
    int32_t infiniteProj = 0;
    float height = 400.0f;
    int32_t auto_fit = 1;
    float dist = 2.0f;
    float curve = 1.0f;
    int32_t orthoAdjustToScene = 0;
    CorvaneCore::Color ambient;
    CorvaneCore::Color background;
    CorvaneCore::Color globalLightLevel;
    CorvaneCore::Color ombraGIBackground;
    CorvaneCore::Color ombraRRBackground;
    CorvaneCore::Color ombraRefractBackground;
    float rgn_left = 0.0f;
    float rgn_width = 0.0f;
    float rgn_top = 0.0f;
    float rgn_height = 0.0f;
    int32_t frameCarriedA = 0;
    int32_t frameCarriedB = 0;
    int32_t bmp_width = 0;
    int32_t bmp_height = 0;
    int32_t r_left = 0;
    int32_t r_width = 0;
    int32_t r_top = 0;
    int32_t r_height = 0;
    float devAspect = 1.0f;
    int32_t fieldMask = 3;
    int32_t fieldOrder = 0;
    int32_t firstField = 0;
    float dark_mult = 1.0f;
    float bright_mult = 1.0f;

    static CorvaneCore::DoubleTransform zeroTransform() {
        CorvaneCore::DoubleTransform t;
        t.m = CorvaneCore::Matrix::zero();
        return t;
    }
};

constexpr size_t kStampFontSize = 60;
constexpr const char* kDefaultStampText = "Ombra Core %ombracore | Render Time %rendertime |";

struct OmbraOFBStampInfo {
    int32_t stampEnabled = 0;
    std::string stampText = kDefaultStampText;
    int32_t stampFlag = 0;
    int32_t stampMode = 0;
    std::array<unsigned char, kStampFontSize> stampFont{};
};

}  // namespace OmbraUtils

namespace CorvaneCore {

// Option groups have no type id, no clone and no comparison: they live by value in AllOptions.
class CorvaneOptionsBase : public CorvaneSerializable, public CorvaneXMLSerializable {
public:
    virtual void setDefaults() = 0;
    std::u16string pluginKind() override { return u"settings"; }
};

class CorvaneParams : public CorvaneOptionsBase, public OmbraUtils::OmbraParams {
public:
    static constexpr uint32_t kMajor = 5;

    CorvaneParams() { setDefaults(); }
    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    int writeXML(AssetXmlWriter&, std::u16string) override { return 0; }
    std::u16string pluginType() override { return u"CorvaneParams"; }
};

class CorvaneFrameData : public CorvaneOptionsBase, public OmbraUtils::OmbraFrameData {
public:
    static constexpr uint32_t kMajor = 1;

    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override { static_cast<OmbraFrameData&>(*this) = OmbraFrameData(); }
    // A block of its own; the options document does not include it.
    int writeXML(AssetXmlWriter& writer, std::u16string name) override;
    std::u16string pluginType() override { return u"FrameData"; }
};

class CorvaneOFBStampInfo : public CorvaneOptionsBase, public OmbraUtils::OmbraOFBStampInfo {
public:
    static constexpr uint32_t kMajor = 2;

    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override { static_cast<OmbraOFBStampInfo&>(*this) = OmbraOFBStampInfo(); }
    int writeXML(AssetXmlWriter&, std::u16string) override { return 0; }
    std::u16string pluginType() override { return u"OFBStampInfo"; }
};

}  // namespace CorvaneCore
