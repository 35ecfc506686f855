// The six BRDF layers. Each reads every layout it has ever written; only the newest is written.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "archive/value_types.h"
#include "materials/base_brdf.h"

namespace CorvaneCore {

class BaseTexture;
using TexturePtr = std::shared_ptr<BaseTexture>;

class Glass_BRDF : public Base_BRDF {
public:
    static constexpr int kType = 1;
    Glass_BRDF() { setDefaults(); }

    bool serialize(QuickArchive& archive) override;
    // Unlike the other layers this resets only the base part, so a reused object keeps the
    // fields that an old version does not hold.
    bool deserialize(QuickArchive& archive) override;
    int getType() override { return kType; }
    void setDefaults() override;
    std::shared_ptr<Base_BRDF> clone() override;
    bool isEqual(const std::shared_ptr<Base_BRDF>& other) override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"BRDFRefraction"; }

    Color color;
    Color fog_color;
    float ior = 0;
    float secondIor = 0;
    float cutoff = 0;
    float fog_color_mult = 0;
    float glossiness = 0;
    int32_t traceDepth = 0;
    int32_t subdivs = 0;
    int32_t affect_shadows = 0;
    int32_t affect_alpha = 0;
    float color_tex_mult = 0;
    float glossiness_tex_mult = 0;
    float ior_tex_mult = 0;
    int32_t translucency_on = 0;
    float thickness = 0;
    float scatter_coeff = 0;
    float scatter_direction = 0;
    float translucency_tex_mult = 0;
    Color translucency;
    TexturePtr color_tex;
    TexturePtr glossiness_tex;
    TexturePtr ior_texture;
    TexturePtr translucency_tex;
    Color transparency;
    float transparency_tex_mult = 0;
    TexturePtr transparency_tex;

private:
    void readCommonFields(QuickArchive& archive);
    void readTranslucencyFields(QuickArchive& archive);
};

class Diffuse_BRDF : public Base_BRDF {
public:
    static constexpr int kType = 2;
    Diffuse_BRDF() { setDefaults(); }

    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    int getType() override { return kType; }
    void setDefaults() override;
    std::shared_ptr<Base_BRDF> clone() override;
    bool isEqual(const std::shared_ptr<Base_BRDF>& other) override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"BRDFDiffuse"; }

    Color color;
    Color transparency;
    float color_tex_mult = 0;
    float transparency_tex_mult = 0;
    TexturePtr color_tex;
    TexturePtr transparency_tex;
    bool use_color_tex_alpha_as_transparency = false;
};

// Blinn and Phong differ only in their type id: fields, layouts and XML are shared here.
class ReflectionBRDF : public Base_BRDF {
public:
    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    bool isEqual(const std::shared_ptr<Base_BRDF>& other) override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"BRDFReflection"; }

    Color color;
    Color reflectFilter;  // written inverted, as "transparency"
    float hilightGlossiness = 0;
    float reflectionGlossiness = 0;
    float cutoff = 0;
    int32_t subdivs = 0;
    int32_t back_side = 0;
    int32_t traceDepth = 0;
    float color_tex_mult = 0;
    float hilightGlossiness_tex_mult = 0;
    float reflectionGlossiness_tex_mult = 0;
    float transparency_tex_mult = 0;
    TexturePtr color_tex;
    TexturePtr hilightGlossiness_tex;
    TexturePtr reflectionGlossiness_tex;
    TexturePtr transparency_tex;
    float anisotropy = 0;
    float anisotropy_rotation = 0;

protected:
    ReflectionBRDF() = default;
    void cloneChildren();

private:
    bool readOldLayout(QuickArchive& archive, uint32_t major);
    bool readCurrentLayout(QuickArchive& archive);
};

class Blinn_BRDF : public ReflectionBRDF {
public:
    static constexpr int kType = 4;
    Blinn_BRDF() { setDefaults(); }
    int getType() override { return kType; }
    std::shared_ptr<Base_BRDF> clone() override;
};

class Phong_BRDF : public ReflectionBRDF {
public:
    static constexpr int kType = 8;
    Phong_BRDF() { setDefaults(); }
    int getType() override { return kType; }
    std::shared_ptr<Base_BRDF> clone() override;
};

class Mirror_BRDF : public Base_BRDF {
public:
    static constexpr int kType = 16;
    Mirror_BRDF() { setDefaults(); }

    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    int getType() override { return kType; }
    void setDefaults() override;
    std::shared_ptr<Base_BRDF> clone() override;
    bool isEqual(const std::shared_ptr<Base_BRDF>& other) override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"BRDFReflection"; }

    Color color;
    Color reflectFilter;  // written inverted, as "transparency"
    float transparency_tex_mult = 0;
    float cutoff = 0;
    int32_t mirrorMode = 0;
    float color_tex_mult = 0;
    TexturePtr transparency_tex;
    TexturePtr color_tex;

private:
    bool readOldLayout(QuickArchive& archive, uint32_t major);
};

class Light_BRDF : public Base_BRDF {
public:
    static constexpr int kType = 32;
    Light_BRDF() { setDefaults(); }

    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    int getType() override { return kType; }
    void setDefaults() override;
    std::shared_ptr<Base_BRDF> clone() override;
    bool isEqual(const std::shared_ptr<Base_BRDF>& other) override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"BRDFLight"; }

    Color color;
    Color transparency;
    float intensity = 0;
    float glowLevel = 0;
    float color_tex_mult = 0;
    float transparency_tex_mult = 0;
    TexturePtr color_tex;
    TexturePtr transparency_tex;
    int32_t doubleSided = 0;
};

}  // namespace CorvaneCore
