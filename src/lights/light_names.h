// Display names of the light types, as the plug-in shows them.
#pragma once

#include <string>

namespace CorvaneCore {

constexpr int kLightDisplayNameCount = 9;

// The name for a light type id from 0 to 8. No bounds check: callers pass a type id.
const std::u16string& lightDisplayName(int index);

}  // namespace CorvaneCore
