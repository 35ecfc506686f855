// Shared machinery of the light classes, each of which declares its stored fields once
// (archive/field_list.h).
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "archive/field_list.h"
#include "archive/quick_archive.h"
#include "archive/read_helpers.h"
#include "lights/base_light.h"
#include "xml/asset_frame.h"

class AssetXmlWriter;

namespace CorvaneCore {

// Reads the version word; the major when the minor is 0 and the major lies in 1 .. newest.
inline bool readLightVersion(QuickArchive& archive, uint32_t newest, uint32_t& major) {
    return readVersionIn(archive, 1, newest, major);
}

// `other` as the same class as `self`, or null when it is another light or none.
template <class Light>
const Light* asSameClass(const std::shared_ptr<BaseLight>& other) {
    if (!other || other->getType() != Light::kType) return nullptr;
    return dynamic_cast<const Light*>(other.get());
}

template <class Light>
bool sameFields(const Light& a, const Light& b) {
    return sameListedFields(a, b);
}

// The record operations of a light whose stored fields are all in its `visitFields` list: the
// version word, then the fields that version holds. A class whose record carries more (a
// transform curve) extends the operations through `writeFields` and `readFields`.
template <class Light>
class ListedLight : public BaseLight {
public:
    int getType() override { return Light::kType; }
    bool serialize(QuickArchive& archive) override {
        writeFields(archive);
        return true;
    }
    bool deserialize(QuickArchive& archive) override {
        uint32_t major = 0;
        return readFields(archive, major);
    }
    std::shared_ptr<BaseLight> clone() override { return std::make_shared<Light>(self()); }
    bool isEqual(const std::shared_ptr<BaseLight>& other) override {
        const Light* that = asSameClass<Light>(other);
        return that && sameFields(self(), *that);
    }

protected:
    // Only the newest layout is ever written.
    void writeFields(QuickArchive& archive) {
        writeVersion(archive, Light::kNewestVersion);
        writeListedFields(archive, self());
    }
    // Back to the defaults, then the version word and the fields of that version; false, with
    // nothing more read, for a word the class does not know.
    bool readFields(QuickArchive& archive, uint32_t& major) {
        self().setDefaults();
        if (!readLightVersion(archive, Light::kNewestVersion, major)) return false;
        return readListedFields(archive, major, self());
    }

private:
    Light& self() { return static_cast<Light&>(*this); }
};

}  // namespace CorvaneCore
