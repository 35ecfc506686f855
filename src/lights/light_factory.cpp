#include "lights/base_light.h"
#include "lights/ies_light.h"
#include "lights/maya_direct_light.h"
#include "lights/omni_light.h"
#include "lights/rectangle_light.h"
#include "lights/sphere_light.h"
#include "lights/spot_light.h"
#include "lights/sun_light.h"

namespace CorvaneCore {

// Id 1 has never had a class. DomeLight reports 8, but stored ids stop at 7 and no record
// may become one.
std::shared_ptr<BaseLight> createLight(int id) {
    switch (id) {
        case MayaDirectLight::kType:
            return std::make_shared<MayaDirectLight>();
        case OmniLight::kType:
            return std::make_shared<OmniLight>();
        case RectangleLight::kType:
            return std::make_shared<RectangleLight>();
        case SpotLight::kType:
            return std::make_shared<SpotLight>();
        case SunLight::kType:
            return std::make_shared<SunLight>();
        case IESLight::kType:
            return std::make_shared<IESLight>();
        case SphereLight::kType:
            return std::make_shared<SphereLight>();
        default:
            return nullptr;
    }
}

}  // namespace CorvaneCore
