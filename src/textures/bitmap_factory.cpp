#include "textures/texture.h"

namespace CorvaneCore {

std::shared_ptr<BaseBitmap> createBitmap(int id) {
    if (id == 0) return std::make_shared<BitmapBuffer>();
    return nullptr;
}

}  // namespace CorvaneCore
