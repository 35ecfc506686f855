#include "lights/dome_light.h"

#include "archive/read_helpers.h"

namespace CorvaneCore {

bool DomeLight::serialize(QuickArchive& archive) {
    writeVersion(archive, kNewestVersion);
    return true;
}

}  // namespace CorvaneCore
