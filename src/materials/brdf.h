// The six BRDF layers. Each reads every layout it has ever written; only the newest is written.
// Every layer lists its stored fields once (brdf_layer.h); a version whose layout is not the
// newest list cut at that version has a read function of its own.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "archive/value_types.h"
#include "materials/base_brdf.h"
#include "materials/brdf_layer.h"

namespace CorvaneCore {

class Glass_BRDF : public ListedLayer<Glass_BRDF> {
public:
    static constexpr int kType = 1;
    static constexpr uint32_t kNewestVersion = 6;
    Glass_BRDF() { setDefaults(); }

    // Unlike the other layers this resets only the base part, so a reused object keeps the
    // fields that an old version does not hold.
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"BRDFRefraction"; }

    // Fields 12 on are those of version 5 and 6; versions 2 to 4 read some of them elsewhere.
    template <class Fn, class... L>
    static void visitFields(Fn& fn, L&... l) {
        fn(1, l.color...);
        fn(1, l.fog_color...);
        fn(1, l.ior...);
        fn(1, l.secondIor...);
        fn(1, l.cutoff...);
        fn(1, l.fog_color_mult...);
        fn(1, l.glossiness...);
        fn(1, l.traceDepth...);
        fn(1, l.subdivs...);
        fn(1, l.affect_shadows...);
        fn(1, l.affect_alpha...);
        fn(5, l.color_tex_mult...);
        fn(5, l.glossiness_tex_mult...);
        fn(5, l.ior_tex_mult...);
        visitTranslucencyFields(fn, 5, l...);
        fn(5, l.color_tex...);
        fn(5, l.glossiness_tex...);
        fn(5, l.ior_texture...);
        fn(5, l.translucency_tex...);
        fn(5, l.transparency...);
        fn(5, l.transparency_tex_mult...);
        fn(5, l.transparency_tex...);
    }

    Color color;
    Color fog_color;
    float ior;
    float secondIor;
    float cutoff;
    float fog_color_mult;
    float glossiness;
    int32_t traceDepth;
    int32_t subdivs;
    int32_t affect_shadows;
    int32_t affect_alpha;
    float color_tex_mult;
    float glossiness_tex_mult;
    float ior_tex_mult;
    int32_t translucency_on;
    float thickness;
    float scatter_coeff;
    float scatter_direction;
    float translucency_tex_mult;
    Color translucency;
    TexturePtr color_tex;
    TexturePtr glossiness_tex;
    TexturePtr ior_texture;
    TexturePtr translucency_tex;
    Color transparency;
    float transparency_tex_mult;
    TexturePtr transparency_tex;

private:
    // Fields 15 to 20, which versions 3 on hold as one block.
    template <class Fn, class... L>
    static void visitTranslucencyFields(Fn& fn, uint32_t since, L&... l) {
        fn(since, l.translucency_on...);
        fn(since, l.thickness...);
        fn(since, l.scatter_coeff...);
        fn(since, l.scatter_direction...);
        fn(since, l.translucency_tex_mult...);
        fn(since, l.translucency...);
    }
    // Until version 5 the transparency multiplier stood where the colour multiplier stands now.
    void readOldMultipliers(QuickArchive& archive);
    void readTranslucencyFields(QuickArchive& archive);
    bool readVersion2(QuickArchive& archive);
    bool readVersion3(QuickArchive& archive);
    bool readVersion4(QuickArchive& archive);
};

class Diffuse_BRDF : public ListedLayer<Diffuse_BRDF> {
public:
    static constexpr int kType = 2;
    static constexpr uint32_t kNewestVersion = 4;
    Diffuse_BRDF() { setDefaults(); }

    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"BRDFDiffuse"; }

    template <class Fn, class... L>
    static void visitFields(Fn& fn, L&... l) {
        fn(1, l.color...);
        fn(1, l.transparency...);
        fn(1, l.color_tex_mult...);
        fn(1, l.transparency_tex_mult...);
        fn(2, l.color_tex...);
        fn(2, l.transparency_tex...);
    }
    template <class Fn, class... L>
    static void visitTrailingFields(Fn& fn, L&... l) {
        fn(4, l.use_color_tex_alpha_as_transparency...);
    }

    Color color;
    Color transparency;
    float color_tex_mult;
    float transparency_tex_mult;
    TexturePtr color_tex;
    TexturePtr transparency_tex;
    bool use_color_tex_alpha_as_transparency;

private:
    bool readVersion1(QuickArchive& archive);
};

// The fresnel flag and index that the old reflective layouts stored where a texture slot
// stands today.
struct OldFresnelFields {
    float ior = 0;
    int32_t on = 0;
};

// Blinn and Phong differ only in their type id: fields, layouts and XML are shared here.
class ReflectionBRDF : public Base_BRDF {
public:
    static constexpr uint32_t kNewestVersion = 6;

    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"BRDFReflection"; }

    // The layout of version 6; versions 1 to 5 held the old fresnel fields among these.
    template <class Fn, class... L>
    static void visitFields(Fn& fn, L&... l) {
        fn(6, l.color...);
        fn(6, l.reflectFilter...);
        fn(6, l.hilightGlossiness...);
        fn(6, l.reflectionGlossiness...);
        fn(6, l.cutoff...);
        fn(6, l.subdivs...);
        fn(6, l.back_side...);
        fn(6, l.traceDepth...);
        fn(6, l.color_tex_mult...);
        fn(6, l.hilightGlossiness_tex_mult...);
        fn(6, l.reflectionGlossiness_tex_mult...);
        fn(6, l.transparency_tex_mult...);
        fn(6, l.color_tex...);
        fn(6, l.hilightGlossiness_tex...);
        fn(6, l.reflectionGlossiness_tex...);
        fn(6, l.transparency_tex...);
        fn(6, l.anisotropy...);
        fn(6, l.anisotropy_rotation...);
    }

    Color color;
    Color reflectFilter;  // written inverted, as "transparency"
    float hilightGlossiness;
    float reflectionGlossiness;
    float cutoff;
    int32_t subdivs;
    int32_t back_side;
    int32_t traceDepth;
    float color_tex_mult;
    float hilightGlossiness_tex_mult;
    float reflectionGlossiness_tex_mult;
    float transparency_tex_mult;
    TexturePtr color_tex;
    TexturePtr hilightGlossiness_tex;
    TexturePtr reflectionGlossiness_tex;
    TexturePtr transparency_tex;
    float anisotropy;
    float anisotropy_rotation;

protected:
    ReflectionBRDF() = default;

private:
    OldFresnelFields readOldHead(QuickArchive& archive);
    void readOldMultipliers(QuickArchive& archive);
    void readAnisotropy(QuickArchive& archive);
    bool readVersion1(QuickArchive& archive);
    bool readVersion2(QuickArchive& archive);
    bool readVersion3(QuickArchive& archive);
    bool readVersion4(QuickArchive& archive);
};

class Blinn_BRDF : public ListedLayer<Blinn_BRDF, ReflectionBRDF> {
public:
    static constexpr int kType = 4;
    Blinn_BRDF() { setDefaults(); }
};

class Phong_BRDF : public ListedLayer<Phong_BRDF, ReflectionBRDF> {
public:
    static constexpr int kType = 8;
    Phong_BRDF() { setDefaults(); }
};

class Mirror_BRDF : public ListedLayer<Mirror_BRDF> {
public:
    static constexpr int kType = 16;
    static constexpr uint32_t kNewestVersion = 5;
    Mirror_BRDF() { setDefaults(); }

    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"BRDFReflection"; }

    // The layout of version 5; versions 1 to 4 held the old fresnel fields among these.
    template <class Fn, class... L>
    static void visitFields(Fn& fn, L&... l) {
        fn(5, l.color...);
        fn(5, l.reflectFilter...);
        fn(5, l.transparency_tex_mult...);
        fn(5, l.cutoff...);
        fn(5, l.mirrorMode...);
        fn(5, l.color_tex_mult...);
        fn(5, l.transparency_tex...);
        fn(5, l.color_tex...);
    }

    Color color;
    Color reflectFilter;  // written inverted, as "transparency"
    float transparency_tex_mult;
    float cutoff;
    int32_t mirrorMode;
    float color_tex_mult;
    TexturePtr transparency_tex;
    TexturePtr color_tex;

private:
    OldFresnelFields readOldHead(QuickArchive& archive);
    bool readVersion1(QuickArchive& archive);
    bool readVersion2(QuickArchive& archive);
    bool readVersion3(QuickArchive& archive);
};

class Light_BRDF : public ListedLayer<Light_BRDF> {
public:
    static constexpr int kType = 32;
    static constexpr uint32_t kNewestVersion = 5;
    Light_BRDF() { setDefaults(); }

    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"BRDFLight"; }

    // Version 1 holds fields 1, 3 and 6 of these, then one path where slot 8 stands.
    template <class Fn, class... L>
    static void visitFields(Fn& fn, L&... l) {
        fn(1, l.color...);
        fn(2, l.transparency...);
        fn(1, l.intensity...);
        fn(2, l.glowLevel...);
        fn(2, l.color_tex_mult...);
        fn(1, l.transparency_tex_mult...);
        fn(3, l.color_tex...);
        fn(3, l.transparency_tex...);
    }
    template <class Fn, class... L>
    static void visitTrailingFields(Fn& fn, L&... l) {
        fn(5, l.doubleSided...);
    }

    Color color;
    Color transparency;
    float intensity;
    float glowLevel;
    float color_tex_mult;
    float transparency_tex_mult;
    TexturePtr color_tex;
    TexturePtr transparency_tex;
    int32_t doubleSided;
};

}  // namespace CorvaneCore
