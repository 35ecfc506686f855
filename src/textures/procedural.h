// Procedural textures: each maps onto one plugin of the renderer.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "archive/quick_archive.h"
#include "archive/value_types.h"
#include "textures/base_texture.h"
#include "textures/base_uvw.h"
#include "textures/family_helpers.h"

namespace CorvaneCore {

// The renderer's Fresnel plugin blends the other way round, so the colours leave inverted.
class FresnelTexture : public TextureClass<FresnelTexture> {
public:
    Color frontColor;
    Color sideColor;
    float fresnel_ior = 1.55f;
    float refract_ior = 1.55f;
    float black_color_tex_mult = 1.0f;
    float white_color_tex_mult = 1.0f;
    float fresnel_ior_tex_mult = 1.0f;
    float refract_ior_tex_mult = 1.0f;
    std::shared_ptr<BaseTexture> black_color_tex;
    std::shared_ptr<BaseTexture> white_color_tex;
    std::shared_ptr<BaseTexture> fresnel_ior_tex;
    std::shared_ptr<BaseTexture> refract_ior_tex;

    FresnelTexture() { setDefaults(); }
    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    int getType() override { return 1; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexFresnel"; }

    void cloneChildren();
    bool sameAs(const FresnelTexture& other) const;
};

class UVWTexture : public TextureClass<UVWTexture> {
public:
    std::shared_ptr<BaseUVW> uvwgen;

    UVWTexture() { setDefaults(); }
    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    int getType() override { return 2; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexUVW"; }

    void cloneChildren();
    bool sameAs(const UVWTexture& other) const;
};

class RampTexture : public TextureClass<RampTexture> {
public:
    std::shared_ptr<BaseUVW> uvwgen;
    std::shared_ptr<BaseTexture> colors;
    float positions = 0.5f;
    float u_wave = 0.0f;
    float v_wave = 0.0f;
    int32_t type = 0;
    int32_t interpolation = 1;

    RampTexture() { setDefaults(); }
    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    int getType() override { return 11; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexRamp"; }

    void cloneChildren();
    bool sameAs(const RampTexture& other) const;
};

class BulgeTexture : public TextureClass<BulgeTexture> {
public:
    std::shared_ptr<BaseUVW> uvwgen;
    float u_width = 0.1f;
    float v_width = 0.1f;

    BulgeTexture() { setDefaults(); }
    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    int getType() override { return 8; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexBulge"; }

    void cloneChildren();
    bool sameAs(const BulgeTexture& other) const;
};

class GridTexture : public TextureClass<GridTexture> {
public:
    std::shared_ptr<BaseUVW> uvwgen;
    std::shared_ptr<BaseTexture> line_color;
    std::shared_ptr<BaseTexture> fill_color;
    float lineColorMult = 1.0f;
    float fillColorMult = 1.0f;
    float u_width = 0.1f;
    float v_width = 0.1f;

    GridTexture() { setDefaults(); }
    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    int getType() override { return 6; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexGrid"; }

    void cloneChildren();
    bool sameAs(const GridTexture& other) const;
};

class ClothTexture : public TextureClass<ClothTexture> {
public:
    std::shared_ptr<BaseUVW> uvwgen;
    AColor gap_color;
    AColor u_color;
    AColor v_color;
    float u_width = 0.1f;
    float v_width = 0.1f;
    bool tile = true;  // one flag for both directions

    ClothTexture() { setDefaults(); }
    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    int getType() override { return 7; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexCloth"; }

    void cloneChildren();
    bool sameAs(const ClothTexture& other) const;
};

class BlendTexture : public TextureClass<BlendTexture> {
public:
    std::shared_ptr<BaseTexture> color_a;
    float colorAMult = 1.0f;
    std::shared_ptr<BaseTexture> color_b;
    float colorBMult = 1.0f;
    float blend_amount = 0.5f;

    BlendTexture() { setDefaults(); }
    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    int getType() override { return 10; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexBlend"; }

    void cloneChildren();
    bool sameAs(const BlendTexture& other) const;
};

class NoiseTexture : public TextureClass<NoiseTexture> {
public:
    std::shared_ptr<BaseUVW> uvwgen;
    std::shared_ptr<BaseTexture> color1_tex;
    std::shared_ptr<BaseTexture> color2_tex;
    Color color1;
    Color color2;
    float persistence = 1.0f;
    float amplitude_ratio = 1.0f;
    float frequency_ratio = 2.0f;
    float frequency1 = 1.0f;
    float amplitude1 = 1.0f;
    float size = 1.0f;
    float mix_ratio = 0.5f;
    float bias = 0.0f;
    float color1_tex_mult = 1.0f;
    float color2_tex_mult = 1.0f;
    int32_t octaves = 3;
    int32_t noiseType = 0;
    int32_t inflection = 0;

    NoiseTexture() { setDefaults(); }
    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    int getType() override { return 3; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexNoise"; }

    void cloneChildren();
    bool sameAs(const NoiseTexture& other) const;
};

class InvertTexture : public TextureClass<InvertTexture> {
public:
    std::shared_ptr<BaseTexture> texture;
    bool invert_alpha = false;

    InvertTexture() { setDefaults(); }
    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    int getType() override { return 9; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexInvert"; }

    void cloneChildren();
    bool sameAs(const InvertTexture& other) const;
};

// Starts out with a white and a black colour texture as its two colours.
class CheckerTexture : public TextureClass<CheckerTexture> {
public:
    std::shared_ptr<BaseUVW> uvwgen;
    std::shared_ptr<BaseTexture> white_color;
    std::shared_ptr<BaseTexture> black_color;
    bool tile_u = true;
    bool tile_v = true;
    float whiteColorMult = 1.0f;
    float blackColorMult = 1.0f;

    CheckerTexture() { setDefaults(); }
    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    int getType() override { return 4; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexChecker"; }

    void cloneChildren();
    bool sameAs(const CheckerTexture& other) const;
};

class AColorTexture : public TextureClass<AColorTexture> {
public:
    AColor texture;

    AColorTexture() { setDefaults(); }
    explicit AColorTexture(const AColor& color) : texture(color) {}
    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    int getType() override { return 5; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexAColor"; }

    void cloneChildren() {}
    bool sameAs(const AColorTexture& other) const;
};

}  // namespace CorvaneCore
