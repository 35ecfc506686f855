#include "lights/base_light.h"

namespace CorvaneCore {

// No class of this family has landed yet: every id reads as unknown.
std::shared_ptr<BaseLight> createLight(int) { return nullptr; }

}  // namespace CorvaneCore
