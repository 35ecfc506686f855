// Names of the classes that read themselves from an archive, as diagnostics show them. They
// come from one list of the classes, so they read the same under every compiler.
#pragma once

#include <typeinfo>

namespace CorvaneCore {

// The class's own name without its namespace, or "unlisted class" for a class not in the list.
const char* className(const std::type_info& type);

}  // namespace CorvaneCore
