#include "archive/type_factory.h"
#include "textures/uvw.h"

namespace CorvaneCore {

// Id 2 stays empty on purpose: stored ids keep their numbers.
std::shared_ptr<BaseUVW> createUVW(int id) {
    return makeByType<BaseUVW, GenPlanarWorldUVW, GenObjectUVW, GenEnvironmentUVW, GenChannelUVW>(
        id);
}

}  // namespace CorvaneCore
