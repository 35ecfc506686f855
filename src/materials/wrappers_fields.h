// The declared field lists of the wrapper materials (archive/field_list.h) and the field kinds
// they hold: child materials and textures in their slots, the Base section, the object list.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "archive/field_list.h"
#include "archive/read_helpers.h"
#include "materials/brdf_layer.h"
#include "materials/brdf_slots.h"
#include "materials/material_helpers.h"

namespace CorvaneCore {

// Material slot: bool present, then the child's type id and stream. The texture slot's field
// kind sits beside the layers' slot helpers (materials/brdf_layer.h).
inline bool readField(QuickArchive& archive, MaterialPtr& slot) {
    return readMaterialSlot(archive, slot);
}
inline bool writeField(QuickArchive& archive, const MaterialPtr& slot) {
    return writeMaterialSlot(archive, slot);
}

// A list of wide strings behind a u32 count.
bool readField(QuickArchive& archive, std::vector<std::u16string>& entries);
bool writeField(QuickArchive& archive, const std::vector<std::u16string>& entries);

// Duplicates the children of a listed class: child materials by the given operation (clone
// or copy), textures always by clone. Everything else is a value and copies itself.
struct ChildDuplicator {
    MaterialDuplicator duplicate;
    void operator()(uint32_t, MaterialPtr& child) { child = duplicate(child); }
    void operator()(uint32_t, TexturePtr& texture) { texture = cloneTexture(texture); }
    template <class T>
    void operator()(uint32_t, T&) {}
};

// Gathers the child materials of a listed class in list order, empty slots included.
struct ChildCollector {
    std::vector<MaterialPtr> children;
    void operator()(uint32_t, const MaterialPtr& child) { children.push_back(child); }
    template <class T>
    void operator()(uint32_t, const T&) {}
};

// A wrapper whose stored fields, its Base section among them, stand in one `visitFields`
// list; `Derived` names kType, kNewestVersion and kResetsFirst. The list drives reading,
// writing, comparing and duplicating alike.
template <class Derived>
class WrapperMaterial : public MaterialClass<Derived> {
public:
    // Every wrapper starts under a fresh unique name; those whose setDefaults leaves the name
    // alone keep it until their section is read.
    WrapperMaterial() { this->resetMaterialBase(); }

    // Back to the defaults first in the classes that reset (kResetsFirst); then a version word
    // from 1 to the newest and the fields that version holds. False, with nothing more read,
    // for a word the class does not know.
    bool deserialize(QuickArchive& archive) override {
        if (Derived::kResetsFirst) self().setDefaults();
        uint32_t major = 0;
        if (!readVersionIn(archive, 1, Derived::kNewestVersion, major)) return false;
        return readListedFields(archive, major, self());
    }
    bool serialize(QuickArchive& archive) override {
        writeVersion(archive, Derived::kNewestVersion);
        return writeListedFields(archive, self());
    }
    // Name and uuid are not compared.
    bool isEqual(const MaterialPtr& other) override {
        if (!other || other->getType() != Derived::kType) return false;
        return sameListedFields(self(), static_cast<const Derived&>(*other));
    }
    // The walk of collectMaterials goes on into every child material the list holds.
    std::vector<MaterialPtr> walkedMaterials() override {
        ChildCollector collector;
        Derived::visitFields(collector, self());
        return collector.children;
    }
    void duplicateChildren(MaterialDuplicator duplicate) {
        ChildDuplicator duplicator{duplicate};
        Derived::visitFields(duplicator, self());
    }

    bool readSection(QuickArchive& archive) { return this->readMaterialSection(archive); }
    // Writing the section changes nothing; the base class only lacks the const.
    void writeSection(QuickArchive& archive) const {
        const_cast<WrapperMaterial&>(*this).writeMaterialSection(archive);
    }

private:
    Derived& self() { return static_cast<Derived&>(*this); }
};

// The Base section as an entry of a field list: `fn(3, baseSection(s)...)`.
template <class D>
WrapperMaterial<D>& baseSection(WrapperMaterial<D>& material) {
    return material;
}
template <class D>
const WrapperMaterial<D>& baseSection(const WrapperMaterial<D>& material) {
    return material;
}
template <class D>
bool readField(QuickArchive& archive, WrapperMaterial<D>& material) {
    return material.readSection(archive);
}
template <class D>
bool writeField(QuickArchive& archive, const WrapperMaterial<D>& material) {
    material.writeSection(archive);
    return true;
}
template <class D>
bool sameField(const WrapperMaterial<D>&, const WrapperMaterial<D>&) {
    return true;
}

// One texture of a wrapper that the folded output merges: the word that names both its child
// url and its plugin parameter, and its multiplier with the multiplier's parameter name.
// Reading, comparing and writing all take the slot from here.
template <class C>
struct WrapperSlot {
    const char* word;
    TexturePtr C::*texture;
    const char* multName;
    float C::*mult;
};

}  // namespace CorvaneCore
