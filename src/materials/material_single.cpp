#include "archive/field_list.h"
#include "archive/read_helpers.h"
#include "materials/material.h"

namespace CorvaneCore {

void MaterialSingleBRDF::setDefaults() {
    resetMaterialBase();
    singleOptionA = 0;
    singleOptionB = 0;
}

bool MaterialSingleBRDF::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readVersionThenReset(archive, kNewestVersion, major, *this)) return false;
    readListedFields(archive, major, *this);
    if (major == 1) {
        readBareName(archive);
        return readRequiredChild<Base_BRDF>(archive, brdf, &createBRDF);
    }
    return readRequiredChild<Base_BRDF>(archive, brdf, &createBRDF) && readMaterialSection(archive);
}

bool MaterialSingleBRDF::serialize(QuickArchive& archive) {
    if (!brdf) return false;
    writeVersion(archive, kNewestVersion);
    writeListedFields(archive, *this);
    if (!writeRequiredChild(archive, brdf)) return false;
    writeMaterialSection(archive);
    return true;
}

bool MaterialSingleBRDF::isEqual(const std::shared_ptr<BaseMaterial>& other) {
    if (!other || other->getType() != getType()) return false;
    const auto& o = static_cast<const MaterialSingleBRDF&>(*other);
    const bool sameLayer = brdf ? brdf->isEqual(o.brdf) : !o.brdf;
    return sameLayer && sameListedFields(*this, o);
}

}  // namespace CorvaneCore
