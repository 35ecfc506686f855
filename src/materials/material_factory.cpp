#include "materials/material.h"
#include "materials/material_linked.h"
#include "materials/wrappers.h"

namespace CorvaneCore {

// The ids are the stored format's values; 15 and above (and any negative id) name no class.
std::shared_ptr<BaseMaterial> createMaterial(int id) {
    switch (id) {
        case MaterialSingleBRDF::kType:
            return std::make_shared<MaterialSingleBRDF>();
        case MaterialLayeredBRDF::kType:
            return std::make_shared<MaterialLayeredBRDF>();
        case MaterialMulti::kType:
            return std::make_shared<MaterialMulti>();
        case MaterialBump::kType:
            return std::make_shared<MaterialBump>();
        case MaterialInstance::kType:
            return std::make_shared<MaterialInstance>();
        case Material2Sided::kType:
            return std::make_shared<Material2Sided>();
        case MaterialLinked::kType:
            return std::make_shared<MaterialLinked>();
        case MaterialSkp2Sided::kType:
            return std::make_shared<MaterialSkp2Sided>();
        case MaterialOverrideEnvironment::kType:
            return std::make_shared<MaterialOverrideEnvironment>();
        case MaterialDisplaced::kType:
            return std::make_shared<MaterialDisplaced>();
        case MaterialObjectExclusion::kType:
            return std::make_shared<MaterialObjectExclusion>();
        case MaterialAlphaContribution::kType:
            return std::make_shared<MaterialAlphaContribution>();
        case MaterialAngleBlend::kType:
            return std::make_shared<MaterialAngleBlend>();
        case MaterialReference::kType:
            return std::make_shared<MaterialReference>();
        case MaterialToon::kType:
            return std::make_shared<MaterialToon>();
        default:
            return nullptr;
    }
}

}  // namespace CorvaneCore
