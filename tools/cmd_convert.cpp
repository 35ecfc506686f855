// The converting commands: each FILE's document goes to the output in turn.
#include "archive/read_trace.h"
#include "commands.h"
#include "convert/conversions.h"
#include "messages.h"
#include "record_request.h"

namespace quillon_cli {

namespace {

int convertFiles(const Invocation& in, RecordKind kind) {
    const std::optional<RecordRequest> request = requestForKind(in.args, kind);
    if (!request) return kExitUsage;
    if (in.args.files.empty()) {
        tell("", in.args.command + " needs FILE (see --help)");
        return kExitUsage;
    }
    return forEachRecord(in.args, *request, [&](const std::string& file, const Conversion& c) {
        if (!c.converted) {
            tell(shownName(file), c.reason);
            return kExitRefused;
        }
        in.sink.write(c.xml);
        return kExitConverted;
    });
}

}  // namespace

int runLight(const Invocation& in) { return convertFiles(in, RecordKind::Light); }
int runMaterial(const Invocation& in) { return convertFiles(in, RecordKind::Material); }
int runScene(const Invocation& in) { return convertFiles(in, RecordKind::Scene); }
int runCoropt(const Invocation& in) { return convertFiles(in, RecordKind::Coropt); }
int runCormat(const Invocation& in) { return convertFiles(in, RecordKind::Cormat); }

int runOptions(const Invocation& in) {
    if (!in.args.files.empty() || in.args.type) {
        tell("", "options takes no FILE and no --type (see --help)");
        return kExitUsage;
    }
    CorvaneCore::ReadTrace trace;
    const std::optional<std::string> xml = CorvaneCore::optionsDocument(&trace);
    if (!xml) {
        tell("options", trace.failureText());
        return kExitRefused;
    }
    in.sink.write(*xml);
    return kExitConverted;
}

}  // namespace quillon_cli
