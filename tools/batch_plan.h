// Which records a batch converts, in a fixed order, and what each is: from the file names
// (KIND_typeN[_anything].json|bin, scene_*.json|bin, *.cormat, *.coropt; folders give their
// files of those forms, by name) or from a JSON Lines manifest.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "record_conversion.h"

namespace quillon_cli {

struct BatchRecord {
    std::string file;
    RecordKind kind = RecordKind::Light;
    int32_t type = 0;
    bool hasType = false;
    std::string name;     // the output is NAME.xml
    std::string problem;  // set when the record cannot be converted at all
};

// The same paths always give the same list in the same order: workers rely on it.
std::vector<BatchRecord> planFromPaths(const std::vector<std::string>& paths);

// One {"file": ..., "kind": ..., "type": ...} per line; files are relative to the manifest's
// folder. False, with `error` set, when the manifest itself cannot be read.
bool planFromManifest(const std::string& manifest, std::vector<BatchRecord>& out,
                      std::string& error);

// What a record's file name tells, or a problem when it tells nothing.
BatchRecord recordFromName(const std::string& file);

}  // namespace quillon_cli
