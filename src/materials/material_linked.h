// Materials that find one another by identity: the linked material with its link id, the
// reference to a material of the scene's set, and the operations that see through a
// reference. Also the rules for proposed names and the scene's default material.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "archive/serializable.h"
#include "materials/material_helpers.h"

namespace CorvaneCore {

class MaterialLinked : public MaterialClass<MaterialLinked> {
public:
    static constexpr int kType = 6;

    // A tagged value: kinds 0 and 1 hold text (the name of the host material that the link
    // stands for), kind 2 a number. Nothing here tells 0 and 1 apart; both survive as read.
    class IdData : public CorvaneSerializable {
    public:
        static constexpr int32_t kNumber = 2;
        // False for a kind outside 0 to 2, before anything is written.
        bool serialize(QuickArchive& archive) override;
        // False for a version other than 1 and for a kind outside 0 to 2.
        bool deserialize(QuickArchive& archive) override;
        bool holdsText() const { return kind == 0 || kind == 1; }
        // Same kind and same payload: numbers by value, text ignoring case.
        bool sameAs(const IdData& other) const;

        int32_t kind = kNumber;
        std::u16string text;  // kinds 0 and 1
        int32_t number = 0;   // kind 2
    };

    MaterialLinked() {
        resetMaterialBase();
        setDefaults();
    }

    // False without a base material, before anything is written.
    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    // Drops the base material and the link id; name and uuid stay.
    void setDefaults() override;
    bool isEqual(const MaterialPtr& other) override;
    std::vector<MaterialPtr> walkedMaterials() override { return {base_mtl}; }
    void duplicateChildren(MaterialDuplicator duplicate) { base_mtl = duplicate(base_mtl); }
    // The host material the link stands for, when the link id holds text.
    std::u16string linkedHostName() override {
        return linkId.holdsText() ? linkId.text : std::u16string();
    }

    MaterialPtr base_mtl;
    IdData linkId;
};

class MaterialReference : public BaseMaterial {
public:
    static constexpr int kType = 13;

    MaterialReference() {
        resetMaterialBase();
        setDefaults();
    }

    // Refreshes `resolved` from the scene's set when the target is found there, then writes
    // it: serializing changes the object. False for a reference met again while it is being
    // written (a target whose material holds this very reference).
    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    int getType() override { return kType; }
    // Drops target and resolved; name and uuid stay.
    void setDefaults() override;
    // Both are member-wise: `resolved` is shared and the name is kept.
    MaterialPtr clone() override;
    MaterialPtr copy() override;
    // Same target ignoring case, then the targets' materials in the set compared. A
    // comparison that comes back to this reference gives false.
    bool isEqual(const MaterialPtr& other) override;
    // The walk goes on with the target's material in the set, which then becomes `resolved`,
    // or else with `resolved` as it is.
    std::vector<MaterialPtr> walkedMaterials() override;
    std::u16string referenceTarget() override { return target; }

    // A reference has no XML form: it has to be resolved before output, and these two end the
    // process at once rather than hide a gap in a walk. No conversion reaches them: the folded
    // output puts every material it writes through resolveReference first, refers to child
    // materials by `name` alone, and asks `pluginType` only of the layered material it finds;
    // the materials' own writeXML is reached only through SceneMaterials::writeXML, which no
    // conversion calls.
    [[noreturn]] int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    [[noreturn]] std::u16string pluginType() override;

    std::u16string target;  // uuid of the referenced material
    MaterialPtr resolved;   // the referenced material as last found

private:
    // Set while this reference is being written or compared; never copied.
    struct ReentryFlag {
        bool on = false;
        ReentryFlag() = default;
        ReentryFlag(const ReentryFlag&) {}
        ReentryFlag& operator=(const ReentryFlag&) { return *this; }
    };
    ReentryFlag writing_;
    ReentryFlag comparing_;
};

// The `resolved` material of a reference; any other material (or nothing) as it is. No look-up
// and no recursion: a reference to a reference gives the inner reference.
MaterialPtr resolveReference(const MaterialPtr& material);
// False for nothing, and for a reference without a target; true for every other material.
bool isUsable(const MaterialPtr& material);

// True with an empty message for a free, non-empty name. Otherwise false, with the message for
// a name in use (tested first) or for an empty one.
bool validateName(const std::u16string& name, std::u16string& message);

// The fixed name of the scene's default material.
std::u16string defaultMaterialName();
// Builds the scene's default material (a layered material holding one diffuse layer named
// "Diffuse"), enters it in the scene's set and gives it back. No conversion calls this.
MaterialPtr makeDefaultMaterial();

}  // namespace CorvaneCore
