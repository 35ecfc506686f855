// Shared machinery of the light classes. Each class lists its stored fields once, in stored
// order with the version that introduced each, through a static `visitFields(fn, lights...)`;
// reading, writing and comparing all walk that one list, so the three cannot drift apart.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "archive/compare.h"
#include "archive/quick_archive.h"
#include "archive/read_helpers.h"
#include "lights/base_light.h"

class AssetXmlWriter;

namespace CorvaneCore {

// Reads the fields that a record of version `major` holds; the others keep their defaults.
struct FieldReader {
    QuickArchive& archive;
    uint32_t major;
    template <class T>
    void operator()(uint32_t since, T& field) const {
        if (major >= since) archive.read(field);
    }
};

// Writes every field: only the newest layout is ever written.
struct FieldWriter {
    QuickArchive& archive;
    template <class T>
    void operator()(uint32_t, const T& field) const {
        archive.write(field);
    }
};

// Compares two lights field by field; a NaN float equals anything.
struct FieldComparer {
    bool same = true;
    void operator()(uint32_t, float a, float b) { same = same && sameFloat(a, b); }
    void operator()(uint32_t, const Color& a, const Color& b) { same = same && sameColor(a, b); }
    void operator()(uint32_t, const Vector& a, const Vector& b) { same = same && sameVector(a, b); }
    void operator()(uint32_t, const Transform& a, const Transform& b) {
        same = same && sameTransform(a, b);
    }
    template <class T>
    void operator()(uint32_t, const T& a, const T& b) {
        same = same && a == b;
    }
};

// Reads the version word; the major when the minor is 0 and the major lies in 1 .. newest.
inline bool readLightVersion(QuickArchive& archive, uint32_t newest, uint32_t& major) {
    return readVersion(archive, major) && major >= 1 && major <= newest;
}

// `other` as the same class as `self`, or null when it is another light or none.
template <class Light>
const Light* asSameClass(const std::shared_ptr<BaseLight>& other) {
    if (!other || other->getType() != Light::kType) return nullptr;
    return dynamic_cast<const Light*>(other.get());
}

template <class Light>
bool sameFields(const Light& a, const Light& b) {
    FieldComparer compare;
    Light::visitFields(compare, a, b);
    return compare.same;
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
        FieldWriter write{archive};
        Light::visitFields(write, self());
    }
    // Back to the defaults, then the version word and the fields of that version; false, with
    // nothing more read, for a word the class does not know.
    bool readFields(QuickArchive& archive, uint32_t& major) {
        self().setDefaults();
        if (!readLightVersion(archive, Light::kNewestVersion, major)) return false;
        FieldReader read{archive, major};
        Light::visitFields(read, self());
        return true;
    }

private:
    Light& self() { return static_cast<Light&>(*this); }
};

// Asset, plugin and parameters around a light's parameter list.
void beginLightXml(AssetXmlWriter& writer, const std::u16string& url, BaseLight& light);
void endLightXml(AssetXmlWriter& writer);

}  // namespace CorvaneCore
