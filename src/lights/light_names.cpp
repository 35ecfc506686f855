#include "lights/light_names.h"

#include <array>

namespace CorvaneCore {

namespace {
// Indexed by type id. Id 1 never had a class; id 8 has one that no record reaches.
const std::array<std::u16string, kLightDisplayNameCount> kLightDisplayNames = {
    u"Infinite Direct Light",
    u"Positional Direct Light",
    u"Omni Light",
    u"Rectangle Light",
    u"Spot Light",
    u"Sun Light",
    u"IES Light",
    u"Sphere Light",
    u"Invalid Light"};
}  // namespace

const std::u16string& lightDisplayName(int index) { return kLightDisplayNames[index]; }

}  // namespace CorvaneCore
