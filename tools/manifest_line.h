// One line of a batch manifest: a flat JSON object with "file", "kind" and, for lights and
// materials, "type". Other keys are allowed and ignored.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quillon_cli {

struct ManifestLine {
    std::string file;
    std::string kind;
    std::optional<int32_t> type;
};

// False, with `error` set, for anything but such an object.
bool parseManifestLine(const std::string& line, ManifestLine& out, std::string& error);

}  // namespace quillon_cli
