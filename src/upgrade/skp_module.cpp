#include "upgrade/skp_module.h"

#include <memory>
#include <string>

#include "archive/read_helpers.h"
#include "lights/sun_light.h"
#include "materials/scene_materials.h"
#include "textures/sky.h"
#include "upgrade/skp_material_editor.h"

using CorvaneCore::QuickArchive;

SkpModule& SkpModule::instance() {
    static SkpModule* module = new SkpModule();  // never destroyed, like every singleton
    return *module;
}

bool SkpModule::serialize(QuickArchive&) { return false; }

bool SkpModule::deserialize(QuickArchive& archive) {
    uint32_t major = 0;
    const bool minorIsZero = CorvaneCore::readVersion(archive, major);
    options.setDefaults();
    if (!minorIsZero || major < 1 || major > kUpgradedMajor) return false;

    if (!CorvaneCore::readTracedObject(archive, options)) return false;
    // Majors 2 and 5 read the same objects; only what the objects hold differs.
    if (major >= 2 && !CorvaneCore::readTracedObject(archive, *CorvaneCore::sceneMaterials())) {
        return false;
    }
    if ((major == 3 || major == 4) && !readDefaultSun(archive)) return false;
    if (major == 4 && !skipSky(archive)) return false;
    // A record of the upgraded layout has had its materials moved to the host already.
    if (major != kUpgradedMajor) SkpMaterialEditor::instance().offerUpgrade();
    return true;
}

bool SkpModule::readDefaultSun(QuickArchive& archive) {
    const std::shared_ptr<CorvaneCore::SunLight> sun = CorvaneCore::defaultSunLight();
    const std::u16string id = sun->sunId;
    const std::u16string name = sun->sunName;
    if (!CorvaneCore::readTracedObject(archive, *sun)) return false;
    sun->sunId = id;
    sun->sunName = name;
    return true;
}

bool SkpModule::skipSky(QuickArchive& archive) {
    auto sky = std::make_shared<CorvaneCore::SkyTexture>();
    return CorvaneCore::readTracedObject(archive, *sky);
}

namespace CorvaneCore {

// The scene's options are the stored record's: what old_deserialize left is what the options
// document shows.
AllOptions& sceneOptions() { return SkpModule::instance().options; }

}  // namespace CorvaneCore
