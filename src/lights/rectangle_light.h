// Rectangle (area) light (type 3).
#pragma once

#include "archive/value_types.h"
#include "lights/emitter_fields.h"
#include "lights/light_fields.h"

namespace CorvaneCore {

class RectangleLight : public ListedLight<RectangleLight>, public EmitterFields {
public:
    static constexpr int kType = 3;
    static constexpr uint32_t kNewestVersion = 4;

    RectangleLight() { setDefaults(); }

    void setDefaults() override;

    int writeXML(AssetXmlWriter& writer, std::u16string name) override;
    std::u16string pluginType() override { return u"LightRectangle"; }

    // Stored fields in stored order, each with the version that introduced it.
    template <class Fn, class... Light>
    static void visitFields(Fn& fn, Light&... l) {
        fn(1, l.color...);
        fn(3, l.shadowColor...);
        fn(3, l.cutoffThreshold...);
        fn(1, l.shadowBias...);
        fn(1, l.intensity...);
        fn(1, l.carriedScale...);
        fn(3, l.units...);
        fn(1, l.subdivs...);
        fn(1, l.causticSubdivs...);
        fn(1, l.photonSubdivs...);
        fn(1, l.carriedMode...);
        fn(1, l.doubleSided...);
        fn(1, l.invisible...);
        fn(1, l.lightPortal...);
        fn(1, l.noDecay...);
        fn(1, l.enabled...);
        fn(1, l.storeWithIrradianceMap...);
        fn(1, l.ignoreLightNormals...);
        fn(2, l.shadows...);
        fn(2, l.transform...);
        fn(2, l.u_size...);
        fn(2, l.v_size...);
        fn(4, l.affectDiffuse...);
        fn(4, l.affectSpecular...);
        fn(4, l.affectReflections...);
    }

    uint32_t subdivs;
    bool doubleSided;
    bool invisible;
    bool lightPortal;
    bool noDecay;
    bool storeWithIrradianceMap;
    bool ignoreLightNormals;
    float u_size;
    float v_size;
    bool affectReflections;
};

}  // namespace CorvaneCore
