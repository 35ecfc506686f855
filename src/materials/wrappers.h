// Wrapper materials: one effect around one or two other materials. Most of them reach the
// renderer only folded into the block of the layered material they wrap (material_file.h);
// their own writeXML serves the scene's material set.
//
// Some classes reset before reading and some keep old values in the fields that an old version
// does not hold; and only some reset name and uuid in setDefaults. Those that don't are named
// once, at construction, and keep that name until their section is read.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "archive/value_types.h"
#include "materials/material_helpers.h"
#include "materials/wrappers_fields.h"

namespace CorvaneCore {

// A list of materials. Clone and copy share the entries; the walk of the folded output does
// not enter it, and it writes no XML.
class MaterialMulti : public MaterialClass<MaterialMulti> {
public:
    static constexpr int kType = 2;
    static constexpr uint32_t kNewestVersion = 2;
    MaterialMulti() { setDefaults(); }

    bool serialize(QuickArchive& archive) override;
    // Does not reset first.
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    bool isEqual(const MaterialPtr& other) override;
    std::u16string pluginType() override { return u"MtlMulti"; }
    void duplicateChildren(MaterialDuplicator) {}

    std::vector<MaterialPtr> materials;

private:
    bool readEntries(QuickArchive& archive);
};

class MaterialBump : public MaterialClass<MaterialBump> {
public:
    static constexpr int kType = 3;
    static constexpr uint32_t kNewestVersion = 3;
    MaterialBump() { setDefaults(); }

    // False without a base material: the stream has no present flag for it.
    bool serialize(QuickArchive& archive) override;
    // Does not reset first. Each version orders the fields its own way.
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    bool isEqual(const MaterialPtr& other) override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"MtlBump"; }
    std::vector<MaterialPtr> walkedMaterials() override { return {base_mtl}; }
    void writeFoldedTextures(AssetXmlWriter& writer, const std::u16string& url) override;
    void writeFoldedParameters(AssetXmlWriter& writer, const std::u16string& url) override;
    void duplicateChildren(MaterialDuplicator duplicate);

    MaterialPtr base_mtl;
    TexturePtr bump_tex;
    float bump_tex_mult;

    static constexpr WrapperSlot<MaterialBump> kSlot = {
        "bump_tex", &MaterialBump::bump_tex, "bump_tex_mult", &MaterialBump::bump_tex_mult};
};

// An instance of another material. `instanceOf` is not stored, and nothing in this system
// sets it; clone and copy share it. Never equal to anything, itself included.
class MaterialInstance : public WrapperMaterial<MaterialInstance> {
public:
    static constexpr int kType = 4;
    static constexpr uint32_t kNewestVersion = 1;
    static constexpr bool kResetsFirst = false;
    MaterialInstance() { setDefaults(); }

    void setDefaults() override;
    bool isEqual(const MaterialPtr&) override { return false; }

    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        fn(1, baseSection(s)...);
    }

    MaterialPtr instanceOf;
};

class Material2Sided : public WrapperMaterial<Material2Sided> {
public:
    static constexpr int kType = 5;
    static constexpr uint32_t kNewestVersion = 3;
    static constexpr bool kResetsFirst = false;
    Material2Sided() { setDefaults(); }

    // Leaves name and uuid alone.
    void setDefaults() override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"Mtl2Sided"; }

    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        fn(1, s.front...);
        fn(1, s.back...);
        fn(1, s.translucency_tex...);
        fn(1, s.translucency...);
        fn(1, s.translucency_tex_mult...);
        fn(1, s.force_1sided...);
        fn(2, s.transparency_tex...);
        fn(2, s.transparency...);
        fn(2, s.transparency_tex_mult...);
        fn(3, baseSection(s)...);
    }

    MaterialPtr front;
    MaterialPtr back;
    TexturePtr translucency_tex;
    TexturePtr transparency_tex;
    Color translucency;
    Color transparency;
    float translucency_tex_mult;
    float transparency_tex_mult;
    bool force_1sided;
};

class MaterialSkp2Sided : public WrapperMaterial<MaterialSkp2Sided> {
public:
    static constexpr int kType = 7;
    static constexpr uint32_t kNewestVersion = 1;
    static constexpr bool kResetsFirst = false;
    MaterialSkp2Sided() { setDefaults(); }

    // Leaves name and uuid alone.
    void setDefaults() override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"MtlSkp2Sided"; }

    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        fn(1, baseSection(s)...);
        fn(1, s.front...);
        fn(1, s.back...);
        fn(1, s.force_1sided...);
    }

    MaterialPtr front;
    MaterialPtr back;
    bool force_1sided;
};

// Writes no block of its own: its writeXML passes the url on to the base material unchanged.
class MaterialOverrideEnvironment : public WrapperMaterial<MaterialOverrideEnvironment> {
public:
    static constexpr int kType = 8;
    static constexpr uint32_t kNewestVersion = 1;
    static constexpr bool kResetsFirst = true;
    MaterialOverrideEnvironment() { setDefaults(); }

    // Leaves name and uuid alone.
    void setDefaults() override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"MtlOverrideEnvironment"; }
    void writeFoldedTextures(AssetXmlWriter& writer, const std::u16string& url) override;
    void writeFoldedParameters(AssetXmlWriter& writer, const std::u16string& url) override;

    // The stream holds the textures, then the colours, multipliers and switches, each group
    // in channel order.
    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        fn(1, baseSection(s)...);
        fn(1, s.base_mtl...);
        for (const Channel& c : kChannels) fn(1, (s.*c.slot.texture)...);
        for (const Channel& c : kChannels) fn(1, (s.*c.color)...);
        for (const Channel& c : kChannels) fn(1, (s.*c.slot.mult)...);
        for (const Channel& c : kChannels) fn(1, (s.*c.flag)...);
    }

    MaterialPtr base_mtl;
    TexturePtr bg_tex;
    TexturePtr gi_tex;
    TexturePtr reflect_tex;
    TexturePtr refract_tex;
    Color bg_color;
    Color gi_color;
    Color reflect_color;
    Color refract_color;
    float bg_tex_mult;
    float gi_tex_mult;
    float reflect_tex_mult;
    float refract_tex_mult;
    bool override_bg;
    bool override_gi;
    bool override_reflect;
    bool override_refract;

    // One overridden environment channel: its texture slot, colour and switch.
    struct Channel {
        WrapperSlot<MaterialOverrideEnvironment> slot;
        const char* colorName;
        Color MaterialOverrideEnvironment::*color;
        const char* flagName;
        bool MaterialOverrideEnvironment::*flag;
    };
    using Env = MaterialOverrideEnvironment;
    // In stream order, bg before gi; the folded output walks the textures gi first.
    static constexpr Channel kChannels[] = {
        {{"bg_tex", &Env::bg_tex, "bg_tex_mult", &Env::bg_tex_mult},
         "bg_color",
         &Env::bg_color,
         "override_bg",
         &Env::override_bg},
        {{"gi_tex", &Env::gi_tex, "gi_tex_mult", &Env::gi_tex_mult},
         "gi_color",
         &Env::gi_color,
         "override_gi",
         &Env::override_gi},
        {{"reflect_tex", &Env::reflect_tex, "reflect_tex_mult", &Env::reflect_tex_mult},
         "reflect_color",
         &Env::reflect_color,
         "override_reflect",
         &Env::override_reflect},
        {{"refract_tex", &Env::refract_tex, "refract_tex_mult", &Env::refract_tex_mult},
         "refract_color",
         &Env::refract_color,
         "override_refract",
         &Env::override_refract},
    };
};

// Writes no block of its own: its writeXML extends the url by its name and passes it on to the
// base material.
class MaterialDisplaced : public WrapperMaterial<MaterialDisplaced> {
public:
    static constexpr int kType = 9;
    static constexpr uint32_t kNewestVersion = 2;
    static constexpr bool kResetsFirst = true;
    MaterialDisplaced() { setDefaults(); }

    // Leaves name and uuid alone.
    void setDefaults() override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"MtlDisplaced"; }
    void writeFoldedTextures(AssetXmlWriter& writer, const std::u16string& url) override;
    void writeFoldedParameters(AssetXmlWriter& writer, const std::u16string& url) override;

    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        fn(1, baseSection(s)...);
        fn(1, s.base_mtl...);
        fn(1, (s.*kSlot.texture)...);
        fn(1, (s.*kSlot.mult)...);
        fn(2, s.displace_shift...);
        fn(2, s.displace_edge_length...);
        fn(2, s.displace_max_subdivs...);
        fn(2, s.displace_continuity...);
        fn(2, s.displace_view_dependent...);
        fn(2, s.displace_use_globals...);
    }

    MaterialPtr base_mtl;
    TexturePtr displace_tex;
    float displace_tex_mult;
    float displace_shift;
    float displace_edge_length;
    int32_t displace_max_subdivs;
    int32_t displace_continuity;
    int32_t displace_view_dependent;
    int32_t displace_use_globals;

    static constexpr WrapperSlot<MaterialDisplaced> kSlot = {
        "displace_tex", &MaterialDisplaced::displace_tex, "displace_tex_mult",
        &MaterialDisplaced::displace_tex_mult};
};

class MaterialObjectExclusion : public WrapperMaterial<MaterialObjectExclusion> {
public:
    static constexpr int kType = 10;
    static constexpr uint32_t kNewestVersion = 3;
    static constexpr bool kResetsFirst = true;
    // Version 1 has no section: the name stays the one given at construction.
    MaterialObjectExclusion() { setDefaults(); }

    // Leaves name and uuid alone.
    void setDefaults() override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"MtlObjectExclusion"; }
    void writeFoldedParameters(AssetXmlWriter& writer, const std::u16string& url) override;

    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        fn(1, s.mode...);
        fn(1, s.base_mtl...);
        fn(1, s.objects...);
        fn(2, baseSection(s)...);
        fn(3, s.short_circuit...);
    }

    int32_t mode;  // non-zero: ignore the objects
    MaterialPtr base_mtl;
    std::vector<std::u16string> objects;
    bool short_circuit;
};

class MaterialAlphaContribution : public WrapperMaterial<MaterialAlphaContribution> {
public:
    static constexpr int kType = 11;
    static constexpr uint32_t kNewestVersion = 1;
    static constexpr bool kResetsFirst = true;
    MaterialAlphaContribution() { setDefaults(); }

    // Leaves name and uuid alone.
    void setDefaults() override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"MtlAlphaContribution"; }
    void writeFoldedTextures(AssetXmlWriter& writer, const std::u16string& url) override;
    void writeFoldedParameters(AssetXmlWriter& writer, const std::u16string& url) override;

    // The multiplier stands ahead of alpha in the stream, behind it in the XML.
    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        fn(1, baseSection(s)...);
        fn(1, s.base_mtl...);
        fn(1, (s.*kSlot.texture)...);
        fn(1, (s.*kSlot.mult)...);
        fn(1, s.alpha...);
    }

    MaterialPtr base_mtl;
    TexturePtr alpha_tex;
    float alpha_tex_mult;
    float alpha;

    static constexpr WrapperSlot<MaterialAlphaContribution> kSlot = {
        "alpha_tex", &MaterialAlphaContribution::alpha_tex, "alpha_tex_mult",
        &MaterialAlphaContribution::alpha_tex_mult};
};

class MaterialAngleBlend : public WrapperMaterial<MaterialAngleBlend> {
public:
    static constexpr int kType = 12;
    static constexpr uint32_t kNewestVersion = 1;
    static constexpr bool kResetsFirst = true;
    MaterialAngleBlend() { setDefaults(); }

    // Leaves name and uuid alone.
    void setDefaults() override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"MtlAngleBlend"; }

    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        fn(1, baseSection(s)...);
        fn(1, s.mtl_one...);
        fn(1, s.mtl_two...);
        fn(1, s.start_angle...);
        fn(1, s.stop_angle...);
    }

    MaterialPtr mtl_one;
    MaterialPtr mtl_two;
    float start_angle;
    float stop_angle;
};

// A toon outline. Its own writeXML and the toon layout of the folded output name the same
// fields differently ("width" here, "lineWidth" there), on purpose.
class MaterialToon : public WrapperMaterial<MaterialToon> {
public:
    static constexpr int kType = 14;
    static constexpr uint32_t kNewestVersion = 2;
    static constexpr bool kResetsFirst = true;
    MaterialToon() { setDefaults(); }

    // Leaves name and uuid alone.
    void setDefaults() override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"MtlToon"; }

    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        fn(1, s.base_mtl...);
        fn(1, s.lineWidth...);
        fn(1, s.lineWidthTexMult...);
        fn(1, s.lineWidthTex...);
        fn(1, s.opacity...);
        fn(1, s.opacityTexMult...);
        fn(1, s.opacityTex...);
        fn(1, s.distort...);
        fn(1, s.distortTexMult...);
        fn(1, s.distortTex...);
        fn(1, s.lineColor...);
        fn(1, s.lineColorTexMult...);
        fn(1, s.lineColorTex...);
        fn(1, s.zThreshold...);
        fn(1, s.traceBias...);
        fn(1, s.normalThreshold...);
        fn(1, s.line_units...);
        fn(1, s.doSecondary...);
        fn(1, s.divideByDist...);
        fn(1, baseSection(s)...);
        fn(2, s.doSilhouetteMult...);
        fn(2, s.silhouetteMult...);
    }

    MaterialPtr base_mtl;
    float lineWidth;
    float lineWidthTexMult;
    TexturePtr lineWidthTex;
    float opacity;
    float opacityTexMult;
    TexturePtr opacityTex;
    float distort;
    float distortTexMult;
    TexturePtr distortTex;
    Color lineColor;
    float lineColorTexMult;
    TexturePtr lineColorTex;
    float zThreshold;
    float traceBias;
    float normalThreshold;
    float line_units;  // not part of the toon layout
    bool doSecondary;
    bool divideByDist;
    bool doSilhouetteMult;
    float silhouetteMult;
};

}  // namespace CorvaneCore
