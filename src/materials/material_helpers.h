// Helpers shared by the materials that hold other materials: the two child forms in the
// archive, null-safe duplication and comparison, and the clone/copy pair of a class.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include "archive/quick_archive.h"
#include "archive/read_helpers.h"
#include "materials/base_material.h"
#include "materials/scene_materials.h"
#include "xml/asset_frame.h"

class AssetXmlWriter;

namespace CorvaneCore {

// Material-slot: bool present, then type id and the child's own stream. An absent child
// leaves `slot` as it is.
bool readMaterialSlot(QuickArchive& archive, MaterialPtr& slot);
bool writeMaterialSlot(QuickArchive& archive, const MaterialPtr& material);
// Bare material: type id and stream, no present flag; the child has to exist. The slot is
// set only once the child has read itself.
bool readBareMaterial(QuickArchive& archive, MaterialPtr& slot);
bool writeBareMaterial(QuickArchive& archive, const MaterialPtr& material);

inline MaterialPtr cloneMaterial(const MaterialPtr& material) {
    return material ? material->clone() : nullptr;
}
inline MaterialPtr copyMaterial(const MaterialPtr& material) {
    return material ? material->copy() : nullptr;
}
// Both empty, or both filled and equal by the first one's comparison.
inline bool sameMaterial(const MaterialPtr& a, const MaterialPtr& b) {
    if (!a || !b) return !a && !b;
    return a->isEqual(b);
}

// A child material's own blocks below `url`, when there is a child.
void writeChildMaterial(AssetXmlWriter& writer, const MaterialPtr& child,
                        const std::u16string& url);
// A parameter that refers to a child material: `url`, "/" and the child's name.
void writeMaterialParameter(AssetXmlWriter& writer, const char* name, const MaterialPtr& child,
                            const std::u16string& url);

// Reads a material's version word, then resets the material whatever the word said; true for a
// word of version 1 .. newest.
template <class Material>
bool readVersionThenReset(QuickArchive& archive, uint32_t newest, uint32_t& major,
                          Material& material) {
    const bool known = readVersionIn(archive, 1, newest, major);
    material.setDefaults();
    return known;
}

using MaterialDuplicator = MaterialPtr (*)(const MaterialPtr&);

// The duplicating pair of a material class. `Derived` names its type id as kType and
// duplicates its children in `duplicateChildren`, with the given operation for child
// materials (clone for a clone, copy for a copy) and clone for child textures.
// Whether a material class has a `base_mtl` slot.
template <class T, class = void>
struct HasBaseSlot : std::false_type {};
template <class T>
struct HasBaseSlot<T, std::void_t<decltype(std::declval<T&>().base_mtl)>> : std::true_type {};

template <class Derived>
class MaterialClass : public BaseMaterial {
public:
    int getType() override { return Derived::kType; }
    // A wrapper with a `base_mtl` slot lets the upgrade pass put another material there.
    bool setBaseMaterial(const MaterialPtr& base) override {
        if constexpr (HasBaseSlot<Derived>::value) {
            static_cast<Derived&>(*this).base_mtl = base;
            return true;
        } else {
            (void)base;
            return false;
        }
    }
    // A duplicate under a unique name derived from this one.
    MaterialPtr clone() override {
        auto result = std::make_shared<Derived>(static_cast<Derived&>(*this));
        result->duplicateChildren(&cloneMaterial);
        result->name = sceneMaterials()->uniqueName(name);
        return result;
    }
    // A duplicate that keeps the name.
    MaterialPtr copy() override {
        auto result = std::make_shared<Derived>(static_cast<Derived&>(*this));
        result->duplicateChildren(&copyMaterial);
        return result;
    }
};

}  // namespace CorvaneCore
