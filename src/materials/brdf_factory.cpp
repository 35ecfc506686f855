#include "materials/brdf.h"

namespace CorvaneCore {

std::shared_ptr<Base_BRDF> createBRDF(int id) {
    switch (id) {
        case Glass_BRDF::kType:
            return std::make_shared<Glass_BRDF>();
        case Diffuse_BRDF::kType:
            return std::make_shared<Diffuse_BRDF>();
        case Blinn_BRDF::kType:
            return std::make_shared<Blinn_BRDF>();
        case Phong_BRDF::kType:
            return std::make_shared<Phong_BRDF>();
        case Mirror_BRDF::kType:
            return std::make_shared<Mirror_BRDF>();
        case Light_BRDF::kType:
            return std::make_shared<Light_BRDF>();
        default:
            return nullptr;
    }
}

}  // namespace CorvaneCore
