#include "archive/type_factory.h"
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
    return makeByType<BaseLight, MayaDirectLight, OmniLight, RectangleLight, SpotLight, SunLight,
                      IESLight, SphereLight>(id);
}

}  // namespace CorvaneCore
