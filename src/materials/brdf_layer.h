// The record operations that every BRDF layer shares. A layer declares its stored fields once:
// `visitFields` lists those ahead of the base section, in stored order and each with the version
// that introduced it, and `visitTrailingFields` those appended behind the section (most layers
// have none). Writing, comparing and deep copying walk both lists; reading walks them for the
// versions whose layout is the newest one cut at that version.
#pragma once

#include <cstdint>
#include <memory>

#include "archive/field_list.h"
#include "archive/quick_archive.h"
#include "archive/read_helpers.h"
#include "materials/base_brdf.h"

namespace CorvaneCore {

class BaseTexture;
using TexturePtr = std::shared_ptr<BaseTexture>;

// An optional texture child: bool present, then type id and the texture's own stream.
bool readTextureSlot(QuickArchive& archive, TexturePtr& slot);
bool writeTextureSlot(QuickArchive& archive, const TexturePtr& texture);
TexturePtr cloneTexture(const TexturePtr& texture);
// Both empty, or both filled and equal by the texture's own comparison.
bool sameTexture(const TexturePtr& a, const TexturePtr& b);

// A texture slot in a declared field list is such a child; a slot that fails refuses the read
// and the write.
inline bool readField(QuickArchive& archive, TexturePtr& slot) {
    return readTextureSlot(archive, slot);
}
inline bool writeField(QuickArchive& archive, const TexturePtr& slot) {
    return writeTextureSlot(archive, slot);
}
inline bool sameField(const TexturePtr& a, const TexturePtr& b) { return sameTexture(a, b); }
inline void deepenField(TexturePtr& slot) { slot = cloneTexture(slot); }

// The fields behind the base section that a record of version `major` holds.
template <class Layer>
bool readTrailingFields(QuickArchive& archive, uint32_t major, Layer& layer) {
    FieldReader read{archive, major};
    Layer::visitTrailingFields(read, layer);
    return read.ok;
}

// Type id, writing, comparing and copying of a concrete layer, from its field lists. `Fields`
// is the class that declares them (a base shared by layers that differ only in their id).
template <class Concrete, class Fields = Base_BRDF>
class ListedLayer : public Fields {
public:
    int getType() override { return Concrete::kType; }

    // The newest layout: version word, listed fields, base section, trailing fields. A child
    // that fails to write stops the record at once.
    bool serialize(QuickArchive& archive) override {
        writeVersion(archive, Concrete::kNewestVersion);
        FieldWriter write{archive};
        Concrete::visitFields(write, self());
        if (!write.ok) return false;
        self().writeBaseSection(archive);
        Concrete::visitTrailingFields(write, self());
        return write.ok;
    }

    // Child textures are cloned, not shared.
    std::shared_ptr<Base_BRDF> clone() override {
        auto copy = std::make_shared<Concrete>(self());
        FieldDeepener deepen;
        Concrete::visitFields(deepen, *copy);
        Concrete::visitTrailingFields(deepen, *copy);
        return copy;
    }

    // Same class and equal fields; the name and the flags of the base part do not count.
    bool isEqual(const std::shared_ptr<Base_BRDF>& other) override {
        if (!other || other->getType() != getType()) return false;
        const auto& that = static_cast<const Concrete&>(*other);
        FieldComparer compare;
        Concrete::visitFields(compare, self(), that);
        Concrete::visitTrailingFields(compare, self(), that);
        return compare.same;
    }

protected:
    ListedLayer() = default;

private:
    Concrete& self() { return static_cast<Concrete&>(*this); }
};

}  // namespace CorvaneCore
