// Photometric light from an IES profile file (type 6).
#pragma once

#include <string>

#include "archive/value_types.h"
#include "lights/light_fields.h"

namespace CorvaneCore {

class IESLight : public ListedLight<IESLight> {
public:
    static constexpr int kType = 6;
    static constexpr uint32_t kNewestVersion = 3;

    IESLight() { setDefaults(); }

    void setDefaults() override;

    int writeXML(AssetXmlWriter& writer, std::u16string name) override;
    std::u16string pluginType() override { return u"LightIES"; }

    // Stored fields in stored order, each with the version that introduced it.
    template <class Fn, class... Light>
    static void visitFields(Fn& fn, Light&... l) {
        fn(1, l.transform...);
        fn(1, l.color...);
        fn(1, l.shadowColor...);
        fn(1, l.filter_color...);
        fn(1, l.shadowBias...);
        fn(1, l.cutoffThreshold...);
        fn(1, l.photonSubdivs...);
        fn(1, l.causticSubdivs...);
        fn(1, l.shadow_subdivs...);
        fn(1, l.enabled...);
        fn(1, l.shadows...);
        fn(1, l.soft_shadows...);
        fn(1, l.ies_file...);
        fn(2, l.affectDiffuse...);
        fn(2, l.affectSpecular...);
        fn(3, l.intensity...);
    }

    Transform transform;
    Color color;
    Color shadowColor;
    Color filter_color;
    float shadowBias;
    float cutoffThreshold;
    uint32_t photonSubdivs;
    uint32_t causticSubdivs;
    uint32_t shadow_subdivs;
    bool enabled;
    bool shadows;
    bool soft_shadows;
    std::u16string ies_file;
    bool affectDiffuse;
    bool affectSpecular;
    float intensity;
};

}  // namespace CorvaneCore
