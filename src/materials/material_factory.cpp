#include "materials/base_material.h"

namespace CorvaneCore {

// No class of this family has landed yet: every id reads as unknown.
std::shared_ptr<BaseMaterial> createMaterial(int) { return nullptr; }

}  // namespace CorvaneCore
