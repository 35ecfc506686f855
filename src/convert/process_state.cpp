#include "convert/process_state.h"

#include "lights/sun_light.h"
#include "materials/scene_materials.h"
#include "options/all_options.h"

namespace CorvaneCore {

void restoreProcessState() {
    sceneOptions().setDefaults();
    // Assigning a fresh set also drops its name bookkeeping.
    *sceneMaterials() = SceneMaterials();
    // Skies hold the shared sun by pointer, so its content is restored in place.
    const std::shared_ptr<SunLight> sun = defaultSunLight();
    const auto id = sun->sunId;
    const auto name = sun->sunName;
    *sun = SunLight();
    sun->sunId = id;
    sun->sunName = name;
}

}  // namespace CorvaneCore
