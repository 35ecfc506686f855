#include "textures/base_texture.h"

namespace CorvaneCore {

// No class of this family has landed yet: every id reads as unknown.
std::shared_ptr<BaseTexture> createTexture(int) { return nullptr; }

}  // namespace CorvaneCore
