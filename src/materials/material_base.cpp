#include "archive/read_helpers.h"
#include "materials/base_material.h"
#include "materials/scene_materials.h"
#include "xml/text.h"

namespace CorvaneCore {

namespace {
constexpr uint32_t kMaterialSectionVersion = 2;
}  // namespace

std::u16string uniqueDefaultName() { return sceneMaterials()->uniqueName(u"DefaultMaterial"); }

void BaseMaterial::resetMaterialBase() {
    name = uniqueDefaultName();
    uuid.clear();
}

void BaseMaterial::readBareName(QuickArchive& archive) {
    archive.read(name);
    if (name.empty()) name = uniqueDefaultName();
}

bool BaseMaterial::readMaterialSection(QuickArchive& archive) {
    uint32_t major = 0;
    const bool known = readVersionIn(archive, 1, kMaterialSectionVersion, major);
    // Version 1 holds the name alone, version 2 the uuid behind it.
    if (known) readBareName(archive);
    if (known && major == 2) archive.read(uuid);
    stripControlChars(name);
    return known;
}

void BaseMaterial::writeMaterialSection(QuickArchive& archive) {
    writeVersion(archive, kMaterialSectionVersion);
    archive.write(name);
    archive.write(uuid);
}

}  // namespace CorvaneCore
