// The multi-material and the instance: the two wrappers that share their children on clone
// and copy, and write no XML.
#include "archive/read_helpers.h"
#include "materials/wrappers.h"

namespace CorvaneCore {

void MaterialMulti::setDefaults() {
    resetMaterialBase();
    materials.clear();
}

// The count comes from the record: it is trusted only as far as there are bytes left. Entries
// already read stay when a later one fails.
bool MaterialMulti::readEntries(QuickArchive& archive) {
    uint32_t count = 0;
    archive.read(count);
    materials.clear();
    for (uint32_t i = 0; i < count; ++i) {
        if (archive.remaining() == 0) return false;
        MaterialPtr entry;
        if (!readBareMaterial(archive, entry)) return false;
        materials.push_back(entry);
    }
    return true;
}

bool MaterialMulti::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readVersionIn(archive, 1, kNewestVersion, major) || !readEntries(archive)) return false;
    if (major == 1) {
        readBareName(archive);
        return true;
    }
    return readMaterialSection(archive);
}

bool MaterialMulti::serialize(QuickArchive& archive) {
    writeVersion(archive, kNewestVersion);
    archive.write(static_cast<uint32_t>(materials.size()));
    for (const MaterialPtr& entry : materials) {
        if (!writeBareMaterial(archive, entry)) return false;
    }
    writeMaterialSection(archive);
    return true;
}

bool MaterialMulti::isEqual(const MaterialPtr& other) {
    if (!other || other->getType() != getType()) return false;
    const auto& o = static_cast<const MaterialMulti&>(*other);
    if (materials.size() != o.materials.size()) return false;
    for (size_t i = 0; i < materials.size(); ++i) {
        if (!sameMaterial(materials[i], o.materials[i])) return false;
    }
    return true;
}

void MaterialInstance::setDefaults() {
    resetMaterialBase();
    instanceOf.reset();
}

}  // namespace CorvaneCore
