// The command line, parsed once for every command: options may come as "--opt value" or
// "--opt=value", anywhere among the file names; "--" ends the options.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "record_input.h"

namespace quillon_cli {

struct Arguments {
    std::string command;
    std::vector<std::string> files;
    std::optional<std::string> type;  // as given; each command reads it its own way
    InputForm form = InputForm::Auto;
    std::optional<std::string> output;
    std::string format = "text";
    std::optional<std::string> jobs;
    std::optional<std::string> report;
    std::optional<std::string> manifest;
    std::optional<std::string> worker;  // internal: the share of a batch run by a worker
    bool help = false;
    bool version = false;
};

// The arguments after the program name; false, with `error` set, for a malformed line.
bool parseArguments(const std::vector<std::string>& args, Arguments& out, std::string& error);

// A whole decimal number in [low, high]; nothing for anything else (signs, blanks, overflow).
std::optional<long long> parseBoundedInteger(const std::string& text, long long low,
                                             long long high);

}  // namespace quillon_cli
