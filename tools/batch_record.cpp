#include "batch_record.h"

#include <filesystem>

#include "convert/process_state.h"
#include "json_text.h"
#include "messages.h"
#include "platform/platform.h"
#include "record_conversion.h"

namespace quillon_cli {

namespace {

BatchResult unreadable(const BatchRecord& record, const std::string& why) {
    tell(record.file, why);
    return {BatchOutcome::Unreadable, why, 0};
}

}  // namespace

BatchResult convertBatchRecord(const BatchRecord& record, const std::string& outdir,
                               InputForm form) {
    if (!record.problem.empty()) return unreadable(record, record.problem);
    std::string error;
    const std::optional<std::string> content = readInputFile(record.file, error);
    if (!content) return unreadable(record, error);
    std::optional<std::string> bytes = content;
    if (record.kind != RecordKind::Cormat) bytes = decodeRecord(*content, form, error);
    if (!bytes) return unreadable(record, error);
    CorvaneCore::restoreProcessState();
    const Conversion c = convertRecord(record.kind, record.type, *bytes);
    if (!c.converted) {
        tell(record.file, c.reason);
        return {BatchOutcome::Refused, c.reason, 0};
    }
    const std::string target =
        (std::filesystem::u8path(outdir) / std::filesystem::u8path(record.name + ".xml"))
            .u8string();
    if (!quillon_platform::replaceFile(target, c.xml, error)) {
        return unreadable(record, "cannot write " + target + ": " + error);
    }
    return {BatchOutcome::Converted, "", c.xml.size()};
}

const char* outcomeName(BatchOutcome outcome) {
    switch (outcome) {
        case BatchOutcome::Converted:
            return "converted";
        case BatchOutcome::Refused:
            return "refused";
        case BatchOutcome::Unreadable:
            return "unreadable";
    }
    return "unreadable";
}

std::string reportEntry(const BatchRecord& record, const BatchResult& result) {
    return "{\"file\":" + jsonString(record.file) +
           ",\"kind\":" + (record.problem.empty() ? jsonString(kindName(record.kind)) : "null") +
           ",\"type\":" + (record.hasType ? std::to_string(record.type) : "null") +
           ",\"result\":" + jsonString(outcomeName(result.outcome)) +
           ",\"reason\":" + (result.reason.empty() ? "null" : jsonString(result.reason)) +
           ",\"bytes\":" + std::to_string(result.bytesWritten) + "}";
}

}  // namespace quillon_cli
