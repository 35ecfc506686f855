#include "lights/sphere_light.h"

#include "lights/light_fields.h"

namespace CorvaneCore {

void SphereLight::setDefaults() {
    transform = Transform::identity();
    color = Color(1, 1, 1);
    shadowColor = Color(0, 0, 0);
    sphereScalarA = 0.0f;
    sphereThreshold = 0.005f;
    sphereScalarB = 1.0f;
    sphereScalarC = 1.0f;
    spherePhotonCount = 500;
    sphereCausticCount = 1000;
    sphereUnits = 0;
    sphereSubdivs = 8;
    sphereFlag0 = true;
    sphereFlag1 = true;
    sphereFlag2 = false;
    sphereFlag3 = false;
    sphereFlag4 = false;
    sphereFlag5 = true;
    sphereFlag6 = true;
    sphereFlag7 = true;
}

}  // namespace CorvaneCore
