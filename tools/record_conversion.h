// One record through the core, as every command sees it: the document or the reason it was
// refused, the trace of the read, and how far the read went against the record's length.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "archive/read_trace.h"

namespace quillon_cli {

enum class RecordKind { Light, Material, Scene, Coropt, Cormat };

const char* kindName(RecordKind kind);
std::optional<RecordKind> kindFromName(const std::string& name);
// Light and material records need a type id; the others carry their own.
bool kindNeedsType(RecordKind kind);

struct Conversion {
    bool converted = false;
    std::string xml;
    std::string reason;  // why the record was refused
    CorvaneCore::ReadTrace trace;
    bool measured = false;  // the two counts below are known (all kinds but cormat)
    uint64_t recordSize = 0;
    uint64_t readEnd = 0;  // where reading stopped; past recordSize when it read past the end
    uint64_t padding = 0;  // trailing bytes that belong to the format (a .coropt's last block)
    std::vector<std::string> materials;  // a scene's material set, a .cormat's materials
};

// Converts in this process; the scene kind changes the process-wide scene state.
Conversion convertRecord(RecordKind kind, int32_t type, const std::string& bytes);

}  // namespace quillon_cli
