// Shared reading and writing helpers for version words and child objects. Every class reads
// its children through these, so nesting depth is bounded in one place.
//
// Records come from files anyone can send. The rules every deserialize keeps:
// - Children (a type id and the child's own stream) are read only through the form A/B/C
//   helpers below; they bound the nesting depth (kMaxNestingDepth, archive/limits.h) and feed
//   ReadTrace. Fixed members (an animated value, a transform) may read themselves directly.
// - Version words are read through readVersion.
// - A declared count (list entries, string and buffer lengths, keys, channel ids, entries of
//   the material set) never sizes an allocation beyond what archive.remaining() can hold, and
//   a loop over such a count stops once remaining() is 0 (reading past the end is silent, so
//   it would otherwise spin for up to 4 billion rounds). Strings and buffers already do this
//   in QuickArchive; lists do it in their own loop.
// - So reading stays linear in the record's size, whatever the record declares.
// - What is written is bounded too: AssetXmlWriter refuses a document that passes
//   kMaxDocumentBytes (archive/limits.h), so output stays in proportion as well.
// - Walks over what was read (collectMaterials, references that may form a cycle) bound both
//   their depth and their total number of visits.
#pragma once

#include <cstdint>
#include <memory>
#include <typeinfo>

#include "archive/limits.h"
#include "archive/quick_archive.h"
#include "archive/read_trace.h"
#include "archive/serializable.h"

namespace CorvaneCore {

// Counts one level of nesting for as long as it lives.
class ChildDepthGuard {
public:
    explicit ChildDepthGuard(QuickArchive& archive) : depth_(archive.readDepth()) { ++depth_; }
    ~ChildDepthGuard() { --depth_; }
    ChildDepthGuard(const ChildDepthGuard&) = delete;
    ChildDepthGuard& operator=(const ChildDepthGuard&) = delete;
    bool withinLimit() const { return depth_ <= kMaxNestingDepth; }

private:
    int& depth_;
};

// The two halves of a version word.
struct VersionWord {
    uint32_t major = 0;
    uint32_t minor = 0;
};

// Reads a version word and reports it to the trace. Every class, record, curve and camera
// reads its version word here, so an inspection names the version of everything it shows.
inline VersionWord readVersionWord(QuickArchive& archive) {
    uint32_t word = 0;
    const uint64_t offset = archive.readPos();
    archive.read(word);
    if (ReadTrace* trace = archive.trace()) trace->versionWord(word, offset);
    return VersionWord{versionMajor(word), versionMinor(word)};
}

// Reads a version word and splits it; false when the minor half is not 0.
inline bool readVersion(QuickArchive& archive, uint32_t& major) {
    const VersionWord word = readVersionWord(archive);
    major = word.major;
    return word.minor == 0;
}

// Reads a version word; true when the minor half is 0 and the major lies in oldest .. newest.
inline bool readVersionIn(QuickArchive& archive, uint32_t oldest, uint32_t newest,
                          uint32_t& major) {
    return readVersion(archive, major) && major >= oldest && major <= newest;
}

inline void writeVersion(QuickArchive& archive, uint32_t major) {
    archive.write(versionWord(major));
}

template <class Base>
using ChildFactory = std::shared_ptr<Base> (*)(int);

// Lets an object read itself, reporting to the archive's trace when one is attached.
template <class T>
bool readTracedObject(QuickArchive& archive, T& object) {
    ReadTrace* trace = archive.trace();
    if (!trace) return object.deserialize(archive);
    trace->enter(typeid(object), archive.readPos());
    const bool ok = object.deserialize(archive);
    trace->leave(ok, archive.readPos());
    return ok;
}

// True while the nesting stays within kMaxNestingDepth; reports the refusal to the trace.
inline bool depthAllowed(const ChildDepthGuard& guard, QuickArchive& archive) {
    if (guard.withinLimit()) return true;
    if (ReadTrace* trace = archive.trace()) trace->depthExceeded(archive.readPos());
    return false;
}

// The factory's object for a stored id; null, reported to the trace, for an id it does not know.
template <class Base>
std::shared_ptr<Base> makeChild(QuickArchive& archive, int32_t id, uint64_t idOffset,
                                ChildFactory<Base> factory) {
    std::shared_ptr<Base> child = factory(id);
    if (!child) {
        if (ReadTrace* trace = archive.trace()) {
            trace->unknownTypeId(typeid(Base), id, idOffset);
        }
    }
    return child;
}

// Puts the child for a stored id in `slot`, then lets it read itself, within the depth limit.
// A child that fails stays in its slot, partly read, and is written out like any other; an
// unknown id leaves the slot empty. Beyond the depth limit the slot is not touched.
template <class Base>
bool readChildInPlace(QuickArchive& archive, int32_t id, uint64_t idOffset,
                      ChildFactory<Base> factory, std::shared_ptr<Base>& slot) {
    ChildDepthGuard guard(archive);
    if (!depthAllowed(guard, archive)) return false;
    slot = makeChild(archive, id, idOffset, factory);
    return slot && readTracedObject(archive, *slot);
}

// Form B, required child: int type id, then the child's stream.
template <class Base>
bool writeRequiredChild(QuickArchive& archive, const std::shared_ptr<Base>& child) {
    if (!child) return false;
    archive.write(static_cast<int32_t>(child->getType()));
    return child->serialize(archive);
}

// Form A, optional child: bool present; if present, the child as in form B.
template <class Base>
bool writeOptionalChild(QuickArchive& archive, const std::shared_ptr<Base>& child) {
    archive.write(child != nullptr);
    return !child || writeRequiredChild(archive, child);
}

// The texture family's mandatory child: the same stream as form B, but the child enters its
// slot before it reads itself, as in form A.
template <class Base>
bool readRequiredChildInPlace(QuickArchive& archive, std::shared_ptr<Base>& slot,
                              ChildFactory<Base> factory) {
    const uint64_t idOffset = archive.readPos();
    int32_t id = 0;
    archive.read(id);
    return readChildInPlace(archive, id, idOffset, factory, slot);
}

// An absent child leaves `slot` as it is. A present one enters the slot before it reads itself.
// An id the factory does not know refuses the read, since the length of the child's data is
// unknown.
template <class Base>
bool readOptionalChild(QuickArchive& archive, std::shared_ptr<Base>& slot,
                       ChildFactory<Base> factory) {
    bool present = false;
    archive.read(present);
    return !present || readRequiredChildInPlace(archive, slot, factory);
}

// The slot is set only once the child has read itself.
template <class Base>
bool readRequiredChild(QuickArchive& archive, std::shared_ptr<Base>& slot,
                       ChildFactory<Base> factory) {
    std::shared_ptr<Base> child;
    if (!readRequiredChildInPlace(archive, child, factory)) return false;
    slot = child;
    return true;
}

// Form C, two required children in a group: both ids first, then both streams.
template <class First, class Second>
bool writeChildPair(QuickArchive& archive, const std::shared_ptr<First>& first,
                    const std::shared_ptr<Second>& second) {
    if (!first || !second) return false;
    archive.write(static_cast<int32_t>(first->getType()));
    archive.write(static_cast<int32_t>(second->getType()));
    return first->serialize(archive) && second->serialize(archive);
}

// Both children enter their slots as soon as the factories made them; an unknown id in either
// refuses the read before any child data is read.
template <class First, class Second>
bool readChildPair(QuickArchive& archive, std::shared_ptr<First>& first,
                   ChildFactory<First> firstFactory, std::shared_ptr<Second>& second,
                   ChildFactory<Second> secondFactory) {
    const uint64_t idOffset = archive.readPos();
    int32_t firstId = 0, secondId = 0;
    archive.read(firstId);
    archive.read(secondId);
    ChildDepthGuard guard(archive);
    if (!depthAllowed(guard, archive)) return false;
    first = makeChild(archive, firstId, idOffset, firstFactory);
    second = makeChild(archive, secondId, idOffset + 4, secondFactory);
    return first && second && readTracedObject(archive, *first) &&
           readTracedObject(archive, *second);
}

}  // namespace CorvaneCore
