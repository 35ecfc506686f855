// Sun light (type 5). A sky can hold the same sun as the scene, so a writer outputs each sun
// at most once and remembers its URL in `sunUrls`.
#pragma once

#include <memory>
#include <string>

#include "archive/value_types.h"
#include "lights/light_fields.h"
#include "lights/sun_parameters.h"
#include "params/animated.h"

namespace CorvaneCore {

// Identity and name of the one process-wide default sun.
inline constexpr char16_t kDefaultSunId[] = u"{D3BE9766-E4AA-418b-81A9-23414A2BA98D}";
inline constexpr char16_t kDefaultSunName[] = u"Default";

class SunLight : public ListedLight<SunLight>, public SunParameters {
public:
    static constexpr int kType = kSunLightType;
    static constexpr uint32_t kNewestVersion = 4;

    SunLight() { setDefaults(); }

    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    bool isEqual(const std::shared_ptr<BaseLight>& other) override;
    // Also gives the sun a fresh identity.
    void setDefaults() override;

    // Writes nothing for a sun this writer has written already.
    int writeXML(AssetXmlWriter& writer, std::u16string name) override;
    std::u16string pluginType() override { return u"SunLight"; }

    // Stored fields but the transform, in stored order with their first version.
    template <class Fn, class... Light>
    static void visitFields(Fn& fn, Light&... l) {
        visitSunFields(fn, 1, l...);
        fn(2, l.sunId...);
        fn(2, l.sunName...);
        fn(3, l.enabled...);
        fn(3, l.invisible...);
    }

    std::u16string sunId;
    std::u16string sunName;
    bool enabled;
    bool invisible;
    AnimatedTransform transform;

private:
    // Sets `name` to the URL to write this sun under and records it in the writer; false when
    // the sun is not to be written.
    bool claimUrl(AssetXmlWriter& writer, std::u16string& name);
};

// The shared default sun, made when the library loads and never released.
std::shared_ptr<SunLight> defaultSunLight();

}  // namespace CorvaneCore
