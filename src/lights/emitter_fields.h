// The fields that the omni, spot and rectangle lights share, with their common defaults and
// the runs of parameters they write alike, so each light declares and resets only its own.
// Each light still lists every stored field, shared or not, in its own stored order.
#pragma once

#include <cstdint>

#include "archive/value_types.h"

class AssetXmlWriter;

namespace CorvaneCore {

struct EmitterFields {
    Color color;
    Color shadowColor;
    float cutoffThreshold;
    float shadowBias;
    float intensity;
    float carriedScale;
    int32_t units;
    uint32_t photonSubdivs;
    uint32_t causticSubdivs;
    int32_t carriedMode;
    bool enabled;
    bool shadows;
    Transform transform;
    bool affectDiffuse;
    bool affectSpecular;

    void resetEmitter(float defaultIntensity);
    // color, shadowColor and cutoffThreshold, which open each of these lights' parameters.
    void writeEmitterHead(AssetXmlWriter& writer) const;
};

// The omni and spot lights add a falloff and their own shadow sampling.
struct PointEmitterFields : EmitterFields {
    float decay;
    uint32_t shadowSubdivs;
    float shadowRadius;

    void resetPointEmitter(float defaultIntensity);
    // shadowBias, decay, intensity and shadowRadius.
    void writeFalloff(AssetXmlWriter& writer) const;
    // photonSubdivs, causticSubdivs and shadowSubdivs.
    void writeSubdivs(AssetXmlWriter& writer) const;
};

}  // namespace CorvaneCore
