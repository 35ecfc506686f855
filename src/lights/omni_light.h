// Omni light (type 2).
#pragma once

#include "archive/value_types.h"
#include "lights/emitter_fields.h"
#include "lights/light_fields.h"

namespace CorvaneCore {

class OmniLight : public ListedLight<OmniLight>, public PointEmitterFields {
public:
    static constexpr int kType = 2;
    static constexpr uint32_t kNewestVersion = 4;

    OmniLight() { setDefaults(); }

    void setDefaults() override;

    int writeXML(AssetXmlWriter& writer, std::u16string name) override;
    std::u16string pluginType() override { return u"LightOmni"; }

    // Stored fields in stored order, each with the version that introduced it.
    template <class Fn, class... Light>
    static void visitFields(Fn& fn, Light&... l) {
        fn(1, l.color...);
        fn(3, l.shadowColor...);
        fn(3, l.cutoffThreshold...);
        fn(1, l.shadowBias...);
        fn(1, l.decay...);
        fn(1, l.intensity...);
        fn(1, l.carriedScale...);
        fn(3, l.units...);
        fn(1, l.photonSubdivs...);
        fn(1, l.causticSubdivs...);
        fn(1, l.carriedMode...);
        fn(1, l.enabled...);
        fn(2, l.shadows...);
        fn(2, l.shadowSubdivs...);
        fn(2, l.shadowRadius...);
        fn(2, l.transform...);
        fn(4, l.affectDiffuse...);
        fn(4, l.affectSpecular...);
    }
};

}  // namespace CorvaneCore
