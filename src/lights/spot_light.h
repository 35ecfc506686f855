// Spot light (type 4).
#pragma once

#include "archive/value_types.h"
#include "lights/emitter_fields.h"
#include "lights/light_fields.h"

namespace CorvaneCore {

class SpotLight : public ListedLight<SpotLight>, public PointEmitterFields {
public:
    static constexpr int kType = 4;
    static constexpr uint32_t kNewestVersion = 4;

    SpotLight() { setDefaults(); }

    void setDefaults() override;

    int writeXML(AssetXmlWriter& writer, std::u16string name) override;
    std::u16string pluginType() override { return u"LightSpot"; }

    // Stored fields in stored order, each with the version that introduced it.
    template <class Fn, class... Light>
    static void visitFields(Fn& fn, Light&... l) {
        fn(1, l.color...);
        fn(3, l.shadowColor...);
        fn(3, l.cutoffThreshold...);
        fn(3, l.barnDoorLeft...);
        fn(3, l.barnDoorRight...);
        fn(3, l.barnDoorTop...);
        fn(3, l.barnDoorBottom...);
        fn(1, l.shadowBias...);
        fn(1, l.decay...);
        fn(1, l.intensity...);
        fn(1, l.carriedScale...);
        fn(3, l.units...);
        fn(1, l.photonSubdivs...);
        fn(1, l.causticSubdivs...);
        fn(1, l.carriedMode...);
        fn(1, l.enabled...);
        fn(3, l.barnDoor...);
        fn(2, l.shadows...);
        fn(2, l.shadowSubdivs...);
        fn(2, l.shadowRadius...);
        fn(2, l.transform...);
        fn(2, l.coneAngle...);
        fn(2, l.penumbraAngle...);
        fn(4, l.affectDiffuse...);
        fn(4, l.affectSpecular...);
    }

    float barnDoorLeft;
    float barnDoorRight;
    float barnDoorTop;
    float barnDoorBottom;
    bool barnDoor;
    float coneAngle;
    float penumbraAngle;
};

}  // namespace CorvaneCore
