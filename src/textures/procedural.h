// Procedural textures: each maps onto one plugin of the renderer. Each class names its stored
// fields once, in stored order with the version that brought them (archive/field_list.h).
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "archive/quick_archive.h"
#include "archive/value_types.h"
#include "textures/base_texture.h"
#include "textures/base_uvw.h"
#include "textures/child_slots.h"
#include "textures/family_helpers.h"

namespace CorvaneCore {

// The renderer's Fresnel plugin blends the other way round, so the colours leave inverted.
class FresnelTexture : public TextureClass<FresnelTexture> {
public:
    static constexpr uint32_t kNewestVersion = 2;
    static constexpr bool kChecksChildrenFirst = false;

    Color frontColor;
    Color sideColor;
    float fresnel_ior;
    float refract_ior;
    float black_color_tex_mult;
    float white_color_tex_mult;
    float fresnel_ior_tex_mult;
    float refract_ior_tex_mult;
    std::shared_ptr<BaseTexture> black_color_tex;
    std::shared_ptr<BaseTexture> white_color_tex;
    std::shared_ptr<BaseTexture> fresnel_ior_tex;
    std::shared_ptr<BaseTexture> refract_ior_tex;

    FresnelTexture() { setDefaults(); }
    void setDefaults() override;
    static constexpr int kType = 1;
    int getType() override { return kType; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexFresnel"; }

    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        fn(1, s.frontColor...);
        fn(1, s.sideColor...);
        fn(1, s.fresnel_ior...);
        fn(1, s.refract_ior...);
        fn(2, s.black_color_tex_mult...);
        fn(2, s.white_color_tex_mult...);
        fn(2, s.fresnel_ior_tex_mult...);
        fn(2, s.refract_ior_tex_mult...);
        visitSlot(fn, 2, optionalSlot(s.black_color_tex)...);
        visitSlot(fn, 2, optionalSlot(s.white_color_tex)...);
        visitSlot(fn, 2, optionalSlot(s.fresnel_ior_tex)...);
        visitSlot(fn, 2, optionalSlot(s.refract_ior_tex)...);
    }
};

class UVWTexture : public TextureClass<UVWTexture> {
public:
    static constexpr uint32_t kNewestVersion = 1;
    static constexpr bool kChecksChildrenFirst = false;

    std::shared_ptr<BaseUVW> uvwgen;

    UVWTexture() { setDefaults(); }
    void setDefaults() override;
    static constexpr int kType = 2;
    int getType() override { return kType; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexUVW"; }

    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        visitSlot(fn, 1, mandatorySlot(s.uvwgen)...);
    }
};

class RampTexture : public TextureClass<RampTexture> {
public:
    static constexpr uint32_t kNewestVersion = 1;
    static constexpr bool kChecksChildrenFirst = false;

    std::shared_ptr<BaseUVW> uvwgen;
    std::shared_ptr<BaseTexture> colors;
    float positions;
    float u_wave;
    float v_wave;
    int32_t type;
    int32_t interpolation;

    RampTexture() { setDefaults(); }
    void setDefaults() override;
    static constexpr int kType = 11;
    int getType() override { return kType; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexRamp"; }

    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        visitSlot(fn, 1, mandatorySlot(s.uvwgen)...);
        visitSlot(fn, 1, mandatorySlot(s.colors)...);
        fn(1, s.positions...);
        fn(1, s.u_wave...);
        fn(1, s.v_wave...);
        fn(1, s.type...);
        fn(1, s.interpolation...);
    }
};

// Unlike its sisters it tests its generator only behind the version word.
class BulgeTexture : public TextureClass<BulgeTexture> {
public:
    static constexpr uint32_t kNewestVersion = 1;
    static constexpr bool kChecksChildrenFirst = false;

    std::shared_ptr<BaseUVW> uvwgen;
    float u_width;
    float v_width;

    BulgeTexture() { setDefaults(); }
    void setDefaults() override;
    static constexpr int kType = 8;
    int getType() override { return kType; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexBulge"; }

    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        visitSlot(fn, 1, mandatorySlot(s.uvwgen)...);
        fn(1, s.u_width...);
        fn(1, s.v_width...);
    }
};

class GridTexture : public TextureClass<GridTexture> {
public:
    static constexpr uint32_t kNewestVersion = 2;
    static constexpr bool kChecksChildrenFirst = true;

    std::shared_ptr<BaseUVW> uvwgen;
    std::shared_ptr<BaseTexture> line_color;
    std::shared_ptr<BaseTexture> fill_color;
    float lineColorMult;
    float fillColorMult;
    float u_width;
    float v_width;

    GridTexture() { setDefaults(); }
    void setDefaults() override;
    static constexpr int kType = 6;
    int getType() override { return kType; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexGrid"; }

    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        visitSlot(fn, 1, mandatorySlot(s.uvwgen)...);
        visitSlot(fn, 1, mandatorySlot(s.line_color)...);
        visitSlot(fn, 1, mandatorySlot(s.fill_color)...);
        fn(2, s.lineColorMult...);
        fn(2, s.fillColorMult...);
        fn(1, s.u_width...);
        fn(1, s.v_width...);
    }
};

class ClothTexture : public TextureClass<ClothTexture> {
public:
    static constexpr uint32_t kNewestVersion = 2;
    static constexpr bool kChecksChildrenFirst = true;

    std::shared_ptr<BaseUVW> uvwgen;
    AColor gap_color;
    AColor u_color;
    AColor v_color;
    float u_width;
    float v_width;
    bool tile;  // one flag for both directions

    ClothTexture() { setDefaults(); }
    void setDefaults() override;
    static constexpr int kType = 7;
    int getType() override { return kType; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexCloth"; }

    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        visitSlot(fn, 1, mandatorySlot(s.uvwgen)...);
        fn(1, s.gap_color...);
        fn(1, s.u_color...);
        fn(1, s.v_color...);
        fn(1, s.u_width...);
        fn(1, s.v_width...);
        fn(2, s.tile...);
    }
};

class BlendTexture : public TextureClass<BlendTexture> {
public:
    static constexpr uint32_t kNewestVersion = 2;
    static constexpr bool kChecksChildrenFirst = false;

    std::shared_ptr<BaseTexture> color_a;
    float colorAMult;
    std::shared_ptr<BaseTexture> color_b;
    float colorBMult;
    float blend_amount;

    BlendTexture() { setDefaults(); }
    void setDefaults() override;
    static constexpr int kType = 10;
    int getType() override { return kType; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexBlend"; }

    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        visitSlot(fn, 1, optionalSlot(s.color_a)...);
        fn(2, s.colorAMult...);
        visitSlot(fn, 1, optionalSlot(s.color_b)...);
        fn(2, s.colorBMult...);
        fn(1, s.blend_amount...);
    }
};

class NoiseTexture : public TextureClass<NoiseTexture> {
public:
    static constexpr uint32_t kNewestVersion = 1;
    static constexpr bool kChecksChildrenFirst = true;

    std::shared_ptr<BaseUVW> uvwgen;
    std::shared_ptr<BaseTexture> color1_tex;
    std::shared_ptr<BaseTexture> color2_tex;
    Color color1;
    Color color2;
    float persistence;
    float amplitude_ratio;
    float frequency_ratio;
    float frequency1;
    float amplitude1;
    float size;
    float mix_ratio;
    float bias;
    float color1_tex_mult;
    float color2_tex_mult;
    int32_t octaves;
    int32_t noiseType;
    int32_t inflection;

    NoiseTexture() { setDefaults(); }
    void setDefaults() override;
    static constexpr int kType = 3;
    int getType() override { return kType; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexNoise"; }

    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        visitSlot(fn, 1, mandatorySlot(s.uvwgen)...);
        visitSlot(fn, 1, optionalSlot(s.color1_tex)...);
        visitSlot(fn, 1, optionalSlot(s.color2_tex)...);
        fn(1, s.color1...);
        fn(1, s.color2...);
        fn(1, s.persistence...);
        fn(1, s.amplitude_ratio...);
        fn(1, s.frequency_ratio...);
        fn(1, s.frequency1...);
        fn(1, s.amplitude1...);
        fn(1, s.size...);
        fn(1, s.mix_ratio...);
        fn(1, s.bias...);
        fn(1, s.color1_tex_mult...);
        fn(1, s.color2_tex_mult...);
        fn(1, s.octaves...);
        fn(1, s.noiseType...);
        fn(1, s.inflection...);
    }
};

class InvertTexture : public TextureClass<InvertTexture> {
public:
    static constexpr uint32_t kNewestVersion = 1;
    static constexpr bool kChecksChildrenFirst = true;

    std::shared_ptr<BaseTexture> texture;
    bool invert_alpha;

    InvertTexture() { setDefaults(); }
    void setDefaults() override;
    static constexpr int kType = 9;
    int getType() override { return kType; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexInvert"; }

    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        visitSlot(fn, 1, mandatorySlot(s.texture)...);
        fn(1, s.invert_alpha...);
    }
};

// Starts out with a white and a black colour texture as its two colours.
class CheckerTexture : public TextureClass<CheckerTexture> {
public:
    static constexpr uint32_t kNewestVersion = 2;
    static constexpr bool kChecksChildrenFirst = true;

    std::shared_ptr<BaseUVW> uvwgen;
    std::shared_ptr<BaseTexture> white_color;
    std::shared_ptr<BaseTexture> black_color;
    bool tile_u;
    bool tile_v;
    float whiteColorMult;
    float blackColorMult;

    CheckerTexture() { setDefaults(); }
    void setDefaults() override;
    static constexpr int kType = 4;
    int getType() override { return kType; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexChecker"; }

    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        visitSlot(fn, 1, mandatorySlot(s.uvwgen)...);
        visitSlot(fn, 1, mandatorySlot(s.white_color)...);
        visitSlot(fn, 1, mandatorySlot(s.black_color)...);
        fn(1, s.tile_u...);
        fn(1, s.tile_v...);
        fn(2, s.whiteColorMult...);
        fn(2, s.blackColorMult...);
    }
};

class AColorTexture : public TextureClass<AColorTexture> {
public:
    static constexpr uint32_t kNewestVersion = 1;
    static constexpr bool kChecksChildrenFirst = false;

    AColor texture;

    AColorTexture() { setDefaults(); }
    explicit AColorTexture(const AColor& color) : texture(color) {}
    void setDefaults() override;
    static constexpr int kType = 5;
    int getType() override { return kType; }
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"TexAColor"; }

    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        fn(1, s.texture...);
    }
};

}  // namespace CorvaneCore
