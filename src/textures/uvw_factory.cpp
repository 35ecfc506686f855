#include "textures/uvw.h"

namespace CorvaneCore {

// Id 2 stays empty on purpose: stored ids keep their numbers.
std::shared_ptr<BaseUVW> createUVW(int id) {
    switch (id) {
        case 0:
            return std::make_shared<GenPlanarWorldUVW>();
        case 1:
            return std::make_shared<GenObjectUVW>();
        case 3:
            return std::make_shared<GenEnvironmentUVW>();
        case 4:
            return std::make_shared<GenChannelUVW>();
        default:
            return nullptr;
    }
}

}  // namespace CorvaneCore
