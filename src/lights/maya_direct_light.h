// Infinite direct light (type 0). Its placement is a curve, which the XML does not output.
#pragma once

#include "archive/value_types.h"
#include "lights/light_fields.h"
#include "params/animated.h"

namespace CorvaneCore {

class MayaDirectLight : public ListedLight<MayaDirectLight> {
public:
    static constexpr int kType = 0;
    static constexpr uint32_t kNewestVersion = 4;

    MayaDirectLight() { setDefaults(); }

    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    // The transform takes no part in the comparison.
    void setDefaults() override;

    int writeXML(AssetXmlWriter& writer, std::u16string name) override;
    std::u16string pluginType() override { return u"MayaLightDirect"; }

    // Stored fields but the transform, in stored order with their first version. The
    // shadow colour came a version later here than in the other lights.
    template <class Fn, class... Light>
    static void visitFields(Fn& fn, Light&... l) {
        fn(1, l.color...);
        fn(4, l.shadowColor...);
        fn(1, l.shadowBias...);
        fn(1, l.intensity...);
        fn(1, l.carriedScale...);
        fn(1, l.causticSubdivs...);
        fn(1, l.photonSubdivs...);
        fn(1, l.carriedMode...);
        fn(1, l.enabled...);
        fn(2, l.shadows...);
        fn(2, l.shadowSubdivs...);
        fn(2, l.shadowRadius...);
    }

    Color color;
    Color shadowColor;
    float shadowBias;
    float intensity;
    float carriedScale;
    uint32_t causticSubdivs;
    uint32_t photonSubdivs;
    int32_t carriedMode;
    bool enabled;
    bool shadows;
    uint32_t shadowSubdivs;
    float shadowRadius;
    AnimatedTransform transform;

private:
    // Version 2 kept a plain transform where the curve stands now.
    void readPlainTransform(QuickArchive& archive);
};

}  // namespace CorvaneCore
