#include "record_request.h"

#include <limits>

#include "messages.h"

namespace quillon_cli {

std::optional<int32_t> parseTypeId(const std::string& text) {
    const std::optional<long long> value = parseBoundedInteger(
        text, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max());
    if (!value) return std::nullopt;
    return static_cast<int32_t>(*value);
}

namespace {

std::nullopt_t usage(const std::string& text) {
    tell("", text + " (see --help)");
    return std::nullopt;
}

}  // namespace

std::optional<RecordRequest> requestForKind(const Arguments& args, RecordKind kind) {
    RecordRequest request{kind, 0};
    if (!kindNeedsType(kind)) {
        if (args.type) return usage(std::string(kindName(kind)) + " takes no --type");
        return request;
    }
    if (!args.type) return usage(std::string(kindName(kind)) + " needs --type N");
    const std::optional<int32_t> type = parseTypeId(*args.type);
    if (!type) return usage("--type needs an integer type id, not \"" + *args.type + "\"");
    request.type = *type;
    return request;
}

std::optional<RecordRequest> requestFromType(const Arguments& args) {
    if (!args.type) return usage(args.command + " needs --type KIND[:N]");
    const std::string& text = *args.type;
    const size_t colon = text.find(':');
    const std::optional<RecordKind> kind = kindFromName(text.substr(0, colon));
    if (!kind) {
        return usage(args.command +
                     " needs --type light:N, material:N, scene, coropt or cormat, not \"" + text +
                     "\"");
    }
    RecordRequest request{*kind, 0};
    if (kindNeedsType(*kind) != (colon != std::string::npos)) {
        return usage(kindNeedsType(*kind) ? "--type " + text + " needs :N, the type id"
                                          : "--type " + text.substr(0, colon) + " takes no :N");
    }
    if (colon == std::string::npos) return request;
    const std::optional<int32_t> type = parseTypeId(text.substr(colon + 1));
    if (!type) return usage("--type needs an integer type id after \":\", not \"" + text + "\"");
    request.type = *type;
    return request;
}

std::optional<std::string> loadRecord(const std::string& file, InputForm form, RecordKind kind) {
    std::string error;
    std::optional<std::string> content = readInputFile(file, error);
    if (!content) {
        tell(shownName(file), error);
        return std::nullopt;
    }
    // A .cormat file is binary, never a JSON array.
    if (kind == RecordKind::Cormat) return content;
    std::optional<std::string> bytes = decodeRecord(*content, form, error);
    if (!bytes) tell(shownName(file), error);
    return bytes;
}

}  // namespace quillon_cli
