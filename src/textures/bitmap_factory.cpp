#include "archive/type_factory.h"
#include "textures/texture.h"

namespace CorvaneCore {

std::shared_ptr<BaseBitmap> createBitmap(int id) {
    return makeByType<BaseBitmap, BitmapBuffer>(id);
}

}  // namespace CorvaneCore
