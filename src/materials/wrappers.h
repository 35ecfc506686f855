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

namespace CorvaneCore {

class BaseTexture;
using TexturePtr = std::shared_ptr<BaseTexture>;

// A list of materials. Clone and copy share the entries; the walk of the folded output does
// not enter it, and it writes no XML.
class MaterialMulti : public MaterialClass<MaterialMulti> {
public:
    static constexpr int kType = 2;
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
    MaterialBump() { setDefaults(); }

    // False without a base material: the stream has no present flag for it.
    bool serialize(QuickArchive& archive) override;
    // Does not reset first.
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
    float bump_tex_mult = 1.0f;
};

// An instance of another material. `instanceOf` is not stored, and nothing in this system
// sets it; clone and copy share it. Never equal to anything, itself included.
class MaterialInstance : public MaterialClass<MaterialInstance> {
public:
    static constexpr int kType = 4;
    MaterialInstance() { setDefaults(); }

    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    bool isEqual(const MaterialPtr&) override { return false; }
    void duplicateChildren(MaterialDuplicator) {}

    MaterialPtr instanceOf;
};

class Material2Sided : public MaterialClass<Material2Sided> {
public:
    static constexpr int kType = 5;
    Material2Sided() {
        resetMaterialBase();
        setDefaults();
    }

    bool serialize(QuickArchive& archive) override;
    // Does not reset first.
    bool deserialize(QuickArchive& archive) override;
    // Leaves name and uuid alone.
    void setDefaults() override;
    bool isEqual(const MaterialPtr& other) override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"Mtl2Sided"; }
    std::vector<MaterialPtr> walkedMaterials() override { return {front, back}; }
    void duplicateChildren(MaterialDuplicator duplicate);

    MaterialPtr front;
    MaterialPtr back;
    TexturePtr translucency_tex;
    TexturePtr transparency_tex;
    Color translucency;
    Color transparency;
    float translucency_tex_mult = 1.0f;
    float transparency_tex_mult = 1.0f;
    bool force_1sided = false;
};

class MaterialSkp2Sided : public MaterialClass<MaterialSkp2Sided> {
public:
    static constexpr int kType = 7;
    MaterialSkp2Sided() {
        resetMaterialBase();
        setDefaults();
    }

    bool serialize(QuickArchive& archive) override;
    // Does not reset first.
    bool deserialize(QuickArchive& archive) override;
    // Leaves name and uuid alone.
    void setDefaults() override;
    bool isEqual(const MaterialPtr& other) override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"MtlSkp2Sided"; }
    std::vector<MaterialPtr> walkedMaterials() override { return {front, back}; }
    void duplicateChildren(MaterialDuplicator duplicate);

    MaterialPtr front;
    MaterialPtr back;
    bool force_1sided = false;
};

// Writes no block of its own: its writeXML passes the url on to the base material unchanged.
class MaterialOverrideEnvironment : public MaterialClass<MaterialOverrideEnvironment> {
public:
    static constexpr int kType = 8;
    MaterialOverrideEnvironment() {
        resetMaterialBase();
        setDefaults();
    }

    bool serialize(QuickArchive& archive) override;
    // Resets first.
    bool deserialize(QuickArchive& archive) override;
    // Leaves name and uuid alone.
    void setDefaults() override;
    bool isEqual(const MaterialPtr& other) override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"MtlOverrideEnvironment"; }
    std::vector<MaterialPtr> walkedMaterials() override { return {base_mtl}; }
    void writeFoldedTextures(AssetXmlWriter& writer, const std::u16string& url) override;
    void writeFoldedParameters(AssetXmlWriter& writer, const std::u16string& url) override;
    void duplicateChildren(MaterialDuplicator duplicate);

    MaterialPtr base_mtl;
    TexturePtr bg_tex;
    TexturePtr gi_tex;
    TexturePtr reflect_tex;
    TexturePtr refract_tex;
    Color bg_color;
    Color gi_color;
    Color reflect_color;
    Color refract_color;
    float bg_tex_mult = 1.0f;
    float gi_tex_mult = 1.0f;
    float reflect_tex_mult = 1.0f;
    float refract_tex_mult = 1.0f;
    bool override_bg = false;
    bool override_gi = false;
    bool override_reflect = false;
    bool override_refract = false;
};

// Writes no block of its own: its writeXML extends the url by its name and passes it on to the
// base material.
class MaterialDisplaced : public MaterialClass<MaterialDisplaced> {
public:
    static constexpr int kType = 9;
    MaterialDisplaced() {
        resetMaterialBase();
        setDefaults();
    }

    bool serialize(QuickArchive& archive) override;
    // Resets first.
    bool deserialize(QuickArchive& archive) override;
    // Leaves name and uuid alone.
    void setDefaults() override;
    bool isEqual(const MaterialPtr& other) override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"MtlDisplaced"; }
    std::vector<MaterialPtr> walkedMaterials() override { return {base_mtl}; }
    void writeFoldedTextures(AssetXmlWriter& writer, const std::u16string& url) override;
    void writeFoldedParameters(AssetXmlWriter& writer, const std::u16string& url) override;
    void duplicateChildren(MaterialDuplicator duplicate);

    MaterialPtr base_mtl;
    TexturePtr displace_tex;
    float displace_tex_mult = 1.0f;
    float displace_shift = 0.0f;
    float displace_edge_length = 4.0f;
    int32_t displace_max_subdivs = 256;
    int32_t displace_continuity = 1;
    int32_t displace_view_dependent = 1;
    int32_t displace_use_globals = 1;
};

class MaterialObjectExclusion : public MaterialClass<MaterialObjectExclusion> {
public:
    static constexpr int kType = 10;
    MaterialObjectExclusion() {
        resetMaterialBase();
        setDefaults();
    }

    bool serialize(QuickArchive& archive) override;
    // Resets first. Version 1 has no section: the name stays the one given at construction.
    bool deserialize(QuickArchive& archive) override;
    // Leaves name and uuid alone.
    void setDefaults() override;
    bool isEqual(const MaterialPtr& other) override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"MtlObjectExclusion"; }
    std::vector<MaterialPtr> walkedMaterials() override { return {base_mtl}; }
    void writeFoldedParameters(AssetXmlWriter& writer, const std::u16string& url) override;
    void duplicateChildren(MaterialDuplicator duplicate) { base_mtl = duplicate(base_mtl); }

    int32_t mode = 0;  // non-zero: ignore the objects
    MaterialPtr base_mtl;
    std::vector<std::u16string> objects;
    bool short_circuit = true;

private:
    bool readObjects(QuickArchive& archive);
};

class MaterialAlphaContribution : public MaterialClass<MaterialAlphaContribution> {
public:
    static constexpr int kType = 11;
    MaterialAlphaContribution() {
        resetMaterialBase();
        setDefaults();
    }

    bool serialize(QuickArchive& archive) override;
    // Resets first.
    bool deserialize(QuickArchive& archive) override;
    // Leaves name and uuid alone.
    void setDefaults() override;
    bool isEqual(const MaterialPtr& other) override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"MtlAlphaContribution"; }
    std::vector<MaterialPtr> walkedMaterials() override { return {base_mtl}; }
    void writeFoldedTextures(AssetXmlWriter& writer, const std::u16string& url) override;
    void writeFoldedParameters(AssetXmlWriter& writer, const std::u16string& url) override;
    void duplicateChildren(MaterialDuplicator duplicate);

    MaterialPtr base_mtl;
    TexturePtr alpha_tex;
    float alpha_tex_mult = 1.0f;  // ahead of alpha in the stream, behind it in the XML
    float alpha = 1.0f;
};

class MaterialAngleBlend : public MaterialClass<MaterialAngleBlend> {
public:
    static constexpr int kType = 12;
    MaterialAngleBlend() {
        resetMaterialBase();
        setDefaults();
    }

    bool serialize(QuickArchive& archive) override;
    // Resets first.
    bool deserialize(QuickArchive& archive) override;
    // Leaves name and uuid alone.
    void setDefaults() override;
    bool isEqual(const MaterialPtr& other) override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"MtlAngleBlend"; }
    std::vector<MaterialPtr> walkedMaterials() override { return {mtl_one, mtl_two}; }
    void duplicateChildren(MaterialDuplicator duplicate);

    MaterialPtr mtl_one;
    MaterialPtr mtl_two;
    float start_angle = 75.0f;
    float stop_angle = 150.0f;
};

// A toon outline. Its own writeXML and the toon layout of the folded output name the same
// fields differently ("width" here, "lineWidth" there), on purpose.
class MaterialToon : public MaterialClass<MaterialToon> {
public:
    static constexpr int kType = 14;
    MaterialToon() {
        resetMaterialBase();
        setDefaults();
    }

    bool serialize(QuickArchive& archive) override;
    // Resets first.
    bool deserialize(QuickArchive& archive) override;
    // Leaves name and uuid alone.
    void setDefaults() override;
    bool isEqual(const MaterialPtr& other) override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"MtlToon"; }
    std::vector<MaterialPtr> walkedMaterials() override { return {base_mtl}; }
    void duplicateChildren(MaterialDuplicator duplicate);

    MaterialPtr base_mtl;
    float lineWidth = 1.5f;
    float lineWidthTexMult = 1.0f;
    TexturePtr lineWidthTex;
    float opacity = 1.0f;
    float opacityTexMult = 1.0f;
    TexturePtr opacityTex;
    float distort = 0.0f;
    float distortTexMult = 1.0f;
    TexturePtr distortTex;
    Color lineColor;
    float lineColorTexMult = 1.0f;
    TexturePtr lineColorTex;
    float zThreshold = 0.95f;
    float traceBias = 0.02f;
    float normalThreshold = 0.7f;
    float line_units = 1.0f;  // not part of the toon layout
    bool doSecondary = true;
    bool divideByDist = false;
    bool doSilhouetteMult = false;
    float silhouetteMult = 1.5f;
};

}  // namespace CorvaneCore
