// The stored forms of a child slot in the texture family, as field kinds of a declared field
// list (archive/field_list.h). A class names a slot in its `visitFields` through
// `visitSlot(fn, since, mandatorySlot(s.uvwgen)...)`, so the slot is read, written, compared and
// deep copied with the other fields, in its place.
#pragma once

#include <cstdint>
#include <memory>

#include "archive/field_list.h"
#include "archive/read_helpers.h"
#include "textures/base_texture.h"
#include "textures/base_uvw.h"

namespace CorvaneCore {

inline ChildFactory<BaseTexture> childFactory(const BaseTexture*) { return createTexture; }
inline ChildFactory<BaseUVW> childFactory(const BaseUVW*) { return createUVW; }
inline ChildFactory<BaseBitmap> childFactory(const BaseBitmap*) { return createBitmap; }

// The factory that makes the children of a slot holding `std::shared_ptr<Base>`.
template <class Base>
ChildFactory<Base> factoryFor(const std::shared_ptr<Base>&) {
    return childFactory(static_cast<const Base*>(nullptr));
}

// Type id, then the child's data; the child enters the slot before it reads itself.
template <class Slot>
struct MandatorySlot {
    Slot& slot;
};

// A presence flag, then as a mandatory slot.
template <class Slot>
struct OptionalSlot {
    Slot& slot;
};

// Two mandatory children whose ids stand together ahead of both children's data.
template <class First, class Second>
struct MandatoryPair {
    First& first;
    Second& second;
};

template <class Slot>
MandatorySlot<Slot> mandatorySlot(Slot& slot) {
    return {slot};
}

template <class Slot>
OptionalSlot<Slot> optionalSlot(Slot& slot) {
    return {slot};
}

template <class First, class Second>
MandatoryPair<First, Second> mandatoryPair(First& first, Second& second) {
    return {first, second};
}

// Hands the slot views of one field to `fn` as named objects, as the list's visitors take them.
template <class Fn, class... View>
void visitSlot(Fn& fn, uint32_t since, View... views) {
    fn(since, views...);
}

template <class Base>
bool readField(QuickArchive& archive, MandatorySlot<std::shared_ptr<Base>>& field) {
    return readRequiredChildInPlace(archive, field.slot, factoryFor(field.slot));
}

template <class Base>
bool readField(QuickArchive& archive, OptionalSlot<std::shared_ptr<Base>>& field) {
    return readOptionalChild(archive, field.slot, factoryFor(field.slot));
}

template <class First, class Second>
bool readField(QuickArchive& archive,
               MandatoryPair<std::shared_ptr<First>, std::shared_ptr<Second>>& field) {
    return readChildPair(archive, field.first, factoryFor(field.first), field.second,
                         factoryFor(field.second));
}

template <class Base>
bool writeField(QuickArchive& archive, const MandatorySlot<const std::shared_ptr<Base>>& field) {
    return writeRequiredChild(archive, field.slot);
}

template <class Base>
bool writeField(QuickArchive& archive, const OptionalSlot<const std::shared_ptr<Base>>& field) {
    return writeOptionalChild(archive, field.slot);
}

template <class First, class Second>
bool writeField(
    QuickArchive& archive,
    const MandatoryPair<const std::shared_ptr<First>, const std::shared_ptr<Second>>& field) {
    return writeChildPair(archive, field.first, field.second);
}

template <class Slot>
bool sameField(const MandatorySlot<Slot>& a, const MandatorySlot<Slot>& b) {
    return sameField(a.slot, b.slot);
}

template <class Slot>
bool sameField(const OptionalSlot<Slot>& a, const OptionalSlot<Slot>& b) {
    return sameField(a.slot, b.slot);
}

template <class First, class Second>
bool sameField(const MandatoryPair<First, Second>& a, const MandatoryPair<First, Second>& b) {
    return sameField(a.first, b.first) && sameField(a.second, b.second);
}

template <class Slot>
void deepenField(MandatorySlot<Slot>& field) {
    deepenField(field.slot);
}

template <class Slot>
void deepenField(OptionalSlot<Slot>& field) {
    deepenField(field.slot);
}

template <class First, class Second>
void deepenField(MandatoryPair<First, Second>& field) {
    deepenField(field.first);
    deepenField(field.second);
}

// Finds an empty mandatory child, for the classes that refuse to write one before anything else.
struct MandatoryChildCheck {
    bool complete = true;
    template <class Slot>
    void operator()(uint32_t, const MandatorySlot<Slot>& field) {
        complete = complete && field.slot != nullptr;
    }
    template <class First, class Second>
    void operator()(uint32_t, const MandatoryPair<First, Second>& field) {
        complete = complete && field.first != nullptr && field.second != nullptr;
    }
    template <class T>
    void operator()(uint32_t, const T&) {}
};

template <class C>
bool mandatoryChildrenPresent(const C& object) {
    MandatoryChildCheck check;
    C::visitFields(check, object);
    return check.complete;
}

}  // namespace CorvaneCore
