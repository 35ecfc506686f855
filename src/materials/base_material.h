// Root of the material family.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "archive/serializable.h"
#include "xml/plugin_ref.h"

namespace CorvaneCore {

class BaseMaterial;
using MaterialPtr = std::shared_ptr<BaseMaterial>;

class BaseMaterial : public CorvaneSerializable, public PluginTarget {
public:
    virtual int getType() = 0;
    virtual void setDefaults() = 0;
    // A deep copy under a new unique name.
    virtual std::shared_ptr<BaseMaterial> clone() = 0;
    // A deep copy that keeps the name.
    virtual std::shared_ptr<BaseMaterial> copy() = 0;
    virtual bool isEqual(const std::shared_ptr<BaseMaterial>& other) = 0;

    int writeXML(AssetXmlWriter&, std::u16string) override { return 0; }
    std::u16string pluginType() override { return std::u16string(); }
    std::u16string pluginKind() override { return u"material"; }
    // A material is found under its name, not under its plugin type.
    bool urlSegment(std::u16string& segment) override {
        segment = name;
        return true;
    }

    // The materials that the tree walk of collectMaterials goes on with: `base_mtl` of a
    // wrapper, both children of a two-child wrapper, the target of a reference. Empty for the
    // materials that end the walk, a multi-material among them.
    virtual std::vector<MaterialPtr> walkedMaterials() { return {}; }

    // A wrapper's share of the folded material block, written under the url of the outermost
    // material: its textures ahead of the block, its parameters behind the layer list.
    virtual void writeFoldedTextures(AssetXmlWriter&, const std::u16string& /*url*/) {}
    virtual void writeFoldedParameters(AssetXmlWriter&, const std::u16string& /*url*/) {}

    // What the material upgrade pass reads and changes in linked, wrapper and reference
    // materials. A linked material's host material name (the text of its link id; empty when
    // the id holds a number); a wrapper's base material slot (false for a material without
    // one); a reference's target uuid.
    virtual std::u16string linkedHostName() { return std::u16string(); }
    virtual bool setBaseMaterial(const MaterialPtr& /*base*/) { return false; }
    virtual std::u16string referenceTarget() { return std::u16string(); }

    std::u16string name;  // also the last segment of the material's URL
    std::u16string uuid;

protected:
    // The base part of a reset: a fresh unique name and no uuid.
    void resetMaterialBase();
    // Name and uuid with their own version word. An empty name gets a unique one; control
    // characters leave the name afterwards, also when the version word is refused.
    bool readMaterialSection(QuickArchive& archive);
    void writeMaterialSection(QuickArchive& archive);
    // The bare name of the oldest layouts, from before the section existed.
    void readBareName(QuickArchive& archive);
};

// "DefaultMaterial" made unique in the scene's material set.
std::u16string uniqueDefaultName();

// Ids 0 to 14; null for any other.
std::shared_ptr<BaseMaterial> createMaterial(int id);

}  // namespace CorvaneCore
