#include "archive/type_factory.h"
#include "materials/brdf.h"

namespace CorvaneCore {

std::shared_ptr<Base_BRDF> createBRDF(int id) {
    return makeByType<Base_BRDF, Glass_BRDF, Diffuse_BRDF, Blinn_BRDF, Phong_BRDF, Mirror_BRDF,
                      Light_BRDF>(id);
}

}  // namespace CorvaneCore
