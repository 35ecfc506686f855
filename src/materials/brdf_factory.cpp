#include "materials/base_brdf.h"

namespace CorvaneCore {

// No class of this family has landed yet: every id reads as unknown.
std::shared_ptr<Base_BRDF> createBRDF(int) { return nullptr; }

}  // namespace CorvaneCore
