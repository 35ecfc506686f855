#include "textures/base_uvw.h"

namespace CorvaneCore {

// No class of this family has landed yet: every id reads as unknown.
std::shared_ptr<BaseUVW> createUVW(int) { return nullptr; }

}  // namespace CorvaneCore
