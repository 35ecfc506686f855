// The scene's one material set: name to material, and uuid to name. Names compare without
// regard to case throughout.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "archive/serializable.h"
#include "materials/base_material.h"
#include "xml/text.h"

namespace CorvaneCore {

class SceneMaterials : public CorvaneSerializable {
public:
    using MaterialMap = std::map<std::u16string, MaterialPtr, LessIgnoreCase>;
    using IdMap = std::map<std::u16string, std::u16string, LessIgnoreCase>;

    bool serialize(QuickArchive& archive) override;
    // Replaces the content. A refused version word leaves the set empty; a failing material
    // keeps what was read before it.
    bool deserialize(QuickArchive& archive) override;
    virtual void writeXML(AssetXmlWriter& writer);

    // Enters a material under its name unless that name is taken (or empty). The uuid table
    // gets the material's own uuid, or a new one when it has none.
    bool addMaterial(const MaterialPtr& material);
    bool removeMaterial(const std::u16string& name);
    // Moves the entry of `oldName` to the material's current name; refused when that name
    // belongs to another entry.
    bool renameMaterial(const std::u16string& oldName, const MaterialPtr& material);
    MaterialPtr findByName(const std::u16string& name) const;
    MaterialPtr findByUuid(const std::u16string& uuid) const;
    bool isNameFree(const std::u16string& name) const;
    void names(std::vector<std::u16string>& list) const;
    // A name not in use, derived from `wish`; nothing is reserved by asking.
    std::u16string uniqueName(const std::u16string& wish) const;
    // Debug listing of both tables.
    void dump(std::ostream& stream) const;
    // Enters a material under its name as it stands, empty or not, in place of any entry of
    // that name; the uuid table is left alone. A version 2 set is read this way.
    void putMaterial(const MaterialPtr& material);
    // Empties both tables.
    void clear();

    // Changes go through the operations above, which keep uniqueName's memo in step.
    const MaterialMap& materials() const { return materials_; }
    const IdMap& ids() const { return ids_; }

private:
    // uniqueName's findings for the last stem asked, kept up to date while names are only
    // added. Reading a set asks for "DefaultMaterial" for every material it makes; without
    // this each ask would scan every name taken so far, and reading would be quadratic.
    struct NameMemo {
        bool valid = false;
        std::u16string stem;
        bool stemTaken = false;
        std::set<uint64_t> takenCounters;
        uint64_t firstFree = 1;
        size_t setSize = 0;     // of the set, when the memo was made
        uint64_t removals = 0;  // of the set, when the memo was made
    };

    bool readMaterialList(QuickArchive& archive, bool throughAdd);
    bool readIdList(QuickArchive& archive);
    void removeIdsNaming(const std::u16string& name);
    void nameAdded(const std::u16string& name);
    void nameRemoved() { ++removals_; }
    void takeIntoMemo(const std::u16string& name) const;

    MaterialMap materials_;
    IdMap ids_;
    mutable NameMemo memo_;
    uint64_t removals_ = 0;
};

// The process-wide set, made on first use.
std::shared_ptr<SceneMaterials> sceneMaterials();

// The materials of type `typeId` below `root`, depth first; the walk stops at each hit.
std::vector<MaterialPtr> collectMaterials(const MaterialPtr& root, int typeId);

}  // namespace CorvaneCore
