#include "archive/type_factory.h"
#include "materials/material.h"
#include "materials/material_linked.h"
#include "materials/wrappers.h"

namespace CorvaneCore {

// The ids are the stored format's values; 15 and above (and any negative id) name no class.
std::shared_ptr<BaseMaterial> createMaterial(int id) {
    return makeByType<BaseMaterial, MaterialSingleBRDF, MaterialLayeredBRDF, MaterialMulti,
                      MaterialBump, MaterialInstance, Material2Sided, MaterialLinked,
                      MaterialSkp2Sided, MaterialOverrideEnvironment, MaterialDisplaced,
                      MaterialObjectExclusion, MaterialAlphaContribution, MaterialAngleBlend,
                      MaterialReference, MaterialToon>(id);
}

}  // namespace CorvaneCore
