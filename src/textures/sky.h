// The environment sky that goes with a sun. Only its reference to the sun reaches the XML; the
// other fields are kept for the record.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "archive/quick_archive.h"
#include "archive/value_types.h"
#include "lights/base_light.h"
#include "lights/sun_parameters.h"
#include "params/animated.h"
#include "textures/base_texture.h"
#include "textures/family_helpers.h"

namespace CorvaneCore {

class SkyTexture : public TextureClass<SkyTexture>, public SunParameters {
public:
    static constexpr uint32_t kNewestVersion = 3;
    static constexpr bool kChecksChildrenFirst = false;

    std::shared_ptr<BaseLight> sun;  // the shared default sun unless a record names another
    bool enabled;
    std::u16string skyId;
    AnimatedTransform transform;

    SkyTexture() { setDefaults(); }
    bool serialize(QuickArchive& archive) override;
    // Reading a version 3 record also replaces the content of the shared default sun.
    bool deserialize(QuickArchive& archive) override;
    // Points `sun` at the shared default sun and gives the sky a fresh identity.
    void setDefaults() override;
    static constexpr int kType = 12;
    int getType() override { return kType; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexSky"; }

    // A sun is held and it is a sun light.
    bool hasSun() const;
    // The held sun has the default sun's identity, whatever the case of its letters.
    bool usesDefaultSun() const;

    // The sun's settings, the flag and the identity: the block that versions 2 and 3 store
    // between the sun and the placement. The sun and the placement lie outside the list.
    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        visitSunFields(fn, 2, s...);
        fn(2, s.enabled...);
        fn(2, s.skyId...);
    }
    void deepenUnlisted();
    bool sameUnlisted(const SkyTexture& other) const;

private:
    std::u16string sunId() const;
    bool readSun(QuickArchive& archive);
    bool readNewestTail(QuickArchive& archive);
    std::u16string sunReference(AssetXmlWriter& writer);
};

}  // namespace CorvaneCore
