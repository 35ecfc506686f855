#include "lights/light_names.h"

#include <array>

namespace CorvaneCore {

namespace {
// Indexed by type id. Id 1 never had a class; id 8 has one that no record reaches.
const std::array<std::wstring, kLightDisplayNameCount> kLightDisplayNames = {
    L"Infinite Direct Light",
    L"Positional Direct Light",
    L"Omni Light",
    L"Rectangle Light",
    L"Spot Light",
    L"Sun Light",
    L"IES Light",
    L"Sphere Light",
    L"Invalid Light"};
}  // namespace

const std::wstring& lightDisplayName(int index) { return kLightDisplayNames[index]; }

}  // namespace CorvaneCore
