// The environment sky that goes with a sun. Only its reference to the sun reaches the XML; the
// other fields are kept for the record.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "archive/quick_archive.h"
#include "archive/value_types.h"
#include "lights/base_light.h"
#include "params/animated.h"
#include "textures/base_texture.h"
#include "textures/family_helpers.h"

namespace CorvaneCore {

class SkyTexture : public TextureClass<SkyTexture> {
public:
    static constexpr uint32_t kNewestVersion = 3;

    std::shared_ptr<BaseLight> sun;  // the shared default sun unless a record names another
    Vector up_vector;
    float shadowBias = 0.0f;
    float turbidity = 3.0f;
    float water_vapour = 2.0f;
    float intensity_multiplier = 1.0f;
    float size_multiplier = 1.0f;
    float photon_radius = 50.0f;
    float photon_emit_distance = 150.0f;
    float ozone = 0.35f;
    int32_t photonSubdivs = 500;
    int32_t causticSubdivs = 1000;
    int32_t shadow_subdivs = 8;
    bool shadows = true;
    bool enabled = false;
    std::u16string skyId;
    AnimatedTransform transform;

    SkyTexture() { setDefaults(); }
    bool serialize(QuickArchive& archive) override;
    // Reading a version 3 record also replaces the content of the shared default sun.
    bool deserialize(QuickArchive& archive) override;
    // Points `sun` at the shared default sun and gives the sky a fresh identity.
    void setDefaults() override;
    int getType() override { return 12; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexSky"; }

    // A sun is held and it is a sun light.
    bool hasSun() const;
    // The held sun has the default sun's identity, whatever the case of its letters.
    bool usesDefaultSun() const;

    void cloneChildren();
    bool sameAs(const SkyTexture& other) const;

private:
    std::u16string sunId() const;
    void writeFields(QuickArchive& archive) const;
    void readFields(QuickArchive& archive);
    std::u16string sunReference(AssetXmlWriter& writer);
};

}  // namespace CorvaneCore
