// The one form of every family's factory: a stored type id to a fresh object of its class.
#pragma once

#include <memory>

namespace CorvaneCore {

// A fresh object of the class among `Classes` whose `kType` is `id`, or null when none has it.
template <class Base, class... Classes>
std::shared_ptr<Base> makeByType(int id) {
    std::shared_ptr<Base> made;
    (void)((id == Classes::kType && (made = std::make_shared<Classes>(), true)) || ...);
    return made;
}

}  // namespace CorvaneCore
