#include "arguments.h"

#include <cstring>

namespace quillon_cli {

namespace {

struct ValueOption {
    const char* longName;
    const char* shortName;  // may be empty
    std::optional<std::string> Arguments::*slot;
};

const ValueOption kValueOptions[] = {
    {"--type", "-t", &Arguments::type},       {"--output", "-o", &Arguments::output},
    {"--jobs", "-j", &Arguments::jobs},       {"--report", "", &Arguments::report},
    {"--manifest", "", &Arguments::manifest}, {"--worker", "", &Arguments::worker},
};

bool applyPlain(const std::string& name, const std::string& value, Arguments& out,
                std::string& error) {
    if (name == "--input") {
        if (value == "raw") {
            out.form = InputForm::Raw;
        } else if (value == "json") {
            out.form = InputForm::Json;
        } else {
            error = "--input takes raw or json";
            return false;
        }
        return true;
    }
    if (name == "--format") {
        if (value != "text" && value != "json") {
            error = "--format takes text or json";
            return false;
        }
        out.format = value;
        return true;
    }
    for (const ValueOption& o : kValueOptions) {
        if (name == o.longName || (*o.shortName && name == o.shortName)) {
            if (value.empty()) {
                error = name + " needs a value";
                return false;
            }
            out.*o.slot = value;
            return true;
        }
    }
    error = "unknown option " + name;
    return false;
}

bool takesValue(const std::string& name) {
    if (name == "--input" || name == "--format") return true;
    for (const ValueOption& o : kValueOptions) {
        if (name == o.longName || (*o.shortName && name == o.shortName)) return true;
    }
    return false;
}

}  // namespace

bool parseArguments(const std::vector<std::string>& args, Arguments& out, std::string& error) {
    bool optionsEnded = false;
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        const bool isOption = !optionsEnded && a.size() > 1 && a[0] == '-';
        if (!isOption) {
            (out.command.empty() ? out.command : out.files.emplace_back()) = a;
            continue;
        }
        if (a == "--") {
            optionsEnded = true;
        } else if (a == "--help" || a == "-h") {
            out.help = true;
        } else if (a == "--version") {
            out.version = true;
        } else if (const size_t eq = a.find('='); a.compare(0, 2, "--") == 0 && eq != a.npos) {
            if (!applyPlain(a.substr(0, eq), a.substr(eq + 1), out, error)) return false;
        } else if (!takesValue(a)) {
            error = "unknown option " + a;
            return false;
        } else if (i + 1 >= args.size()) {
            error = a + " needs a value";
            return false;
        } else if (!applyPlain(a, args[++i], out, error)) {
            return false;
        }
    }
    return true;
}

std::optional<long long> parseBoundedInteger(const std::string& text, long long low,
                                             long long high) {
    if (text.empty() || text.size() > 18) return std::nullopt;
    size_t i = text[0] == '-' ? 1 : 0;
    if (i == text.size()) return std::nullopt;
    long long value = 0;
    for (; i < text.size(); ++i) {
        if (text[i] < '0' || text[i] > '9') return std::nullopt;
        value = value * 10 + (text[i] - '0');
    }
    if (text[0] == '-') value = -value;
    if (value < low || value > high) return std::nullopt;
    return value;
}

}  // namespace quillon_cli
