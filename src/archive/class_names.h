// Names of the classes that read themselves from an archive, as diagnostics show them. They
// come from one list of the classes, so they read the same under every compiler. The list is
// defined in convert/class_name_list.cpp, above every scene family, so the archive needs none.
#pragma once

#include <typeinfo>

namespace CorvaneCore {

// The class's own name without its namespace, or "unlisted class" for a class not in the list.
const char* className(const std::type_info& type);

}  // namespace CorvaneCore
