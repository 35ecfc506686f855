// JSON string literals for the machine-readable outputs (inspect --format json, batch reports).
#pragma once

#include <string>

namespace quillon_cli {

// `text` (UTF-8) as a quoted JSON string; control characters become \u escapes.
std::string jsonString(const std::string& text);

}  // namespace quillon_cli
