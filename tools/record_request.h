// What the converting commands are asked for: the kind of record and, for lights and
// materials, its type id, from the command's name or from "--type KIND[:N]".
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "arguments.h"
#include "record_conversion.h"

namespace quillon_cli {

struct RecordRequest {
    RecordKind kind = RecordKind::Light;
    int32_t type = 0;
};

// A type id as given to --type: a decimal number that fits 32 bits.
std::optional<int32_t> parseTypeId(const std::string& text);

// From --type N for a command that names its kind. Reports a usage error and gives nothing.
std::optional<RecordRequest> requestForKind(const Arguments& args, RecordKind kind);

// From --type KIND[:N] (inspect, check). Reports a usage error and gives nothing.
std::optional<RecordRequest> requestFromType(const Arguments& args);

// Loads, decodes and converts each FILE in turn, each as if in a fresh process; `each` gets
// the file and its conversion and gives that record's exit code. Unreadable files are
// reported here. The worst exit code.
template <class Each>
int forEachRecord(const Arguments& args, const RecordRequest& request, Each each);

// The bytes of one input, or nothing after reporting why it cannot be read.
std::optional<std::string> loadRecord(const std::string& file, InputForm form, RecordKind kind);

}  // namespace quillon_cli

#include "convert/process_state.h"
#include "exit_codes.h"

namespace quillon_cli {

template <class Each>
int forEachRecord(const Arguments& args, const RecordRequest& request, Each each) {
    int worst = kExitConverted;
    for (const std::string& file : args.files) {
        const std::optional<std::string> bytes = loadRecord(file, args.form, request.kind);
        if (!bytes) {
            worst = worseExit(worst, kExitUsage);
            continue;
        }
        CorvaneCore::restoreProcessState();
        worst = worseExit(worst, each(file, convertRecord(request.kind, request.type, *bytes)));
    }
    return worst;
}

}  // namespace quillon_cli
