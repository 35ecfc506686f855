#include "archive/read_helpers.h"
#include "materials/material.h"
#include "materials/scene_materials.h"

namespace CorvaneCore {

namespace {
constexpr uint32_t kSingleVersion = 2;
}  // namespace

void MaterialSingleBRDF::setDefaults() {
    resetMaterialBase();
    singleOptionA = 0;
    singleOptionB = 0;
}

bool MaterialSingleBRDF::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    const bool minorOk = readVersion(archive, major);
    setDefaults();
    if (!minorOk || major < 1 || major > kSingleVersion) return false;

    archive.read(singleOptionA);
    archive.read(singleOptionB);
    if (major == 1) {
        readBareName(archive);
        return readRequiredChild<Base_BRDF>(archive, brdf, &createBRDF);
    }
    return readRequiredChild<Base_BRDF>(archive, brdf, &createBRDF) && readMaterialSection(archive);
}

bool MaterialSingleBRDF::serialize(QuickArchive& archive) {
    if (!brdf) return false;
    writeVersion(archive, kSingleVersion);
    archive.write(singleOptionA);
    archive.write(singleOptionB);
    if (!writeRequiredChild(archive, brdf)) return false;
    writeMaterialSection(archive);
    return true;
}

std::shared_ptr<BaseMaterial> MaterialSingleBRDF::clone() {
    auto duplicate = std::make_shared<MaterialSingleBRDF>(*this);
    duplicate->name = sceneMaterials()->uniqueName(name);
    return duplicate;
}

std::shared_ptr<BaseMaterial> MaterialSingleBRDF::copy() {
    return std::make_shared<MaterialSingleBRDF>(*this);
}

bool MaterialSingleBRDF::isEqual(const std::shared_ptr<BaseMaterial>& other) {
    if (!other || other->getType() != getType()) return false;
    const auto& o = static_cast<const MaterialSingleBRDF&>(*other);
    const bool sameLayer = brdf ? brdf->isEqual(o.brdf) : !o.brdf;
    return sameLayer && singleOptionA == o.singleOptionA && singleOptionB == o.singleOptionB;
}

}  // namespace CorvaneCore
