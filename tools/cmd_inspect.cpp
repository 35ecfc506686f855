// inspect: the objects a record holds with their byte ranges, as indented text or as one JSON
// object per file.
#include "commands.h"
#include "findings.h"
#include "inspect_json.h"
#include "messages.h"
#include "record_request.h"

namespace quillon_cli {

namespace {

std::string inspectText(const Conversion& c, const std::vector<std::string>& findings) {
    std::string out = c.trace.treeText();
    for (const std::string& m : c.materials) out += "material: " + m + "\n";
    if (!c.converted) out += "refused: " + c.reason + "\n";
    for (const std::string& f : findings) out += "finding: " + f + "\n";
    return out;
}

}  // namespace

int runInspect(const Invocation& in) {
    const std::optional<RecordRequest> request = requestFromType(in.args);
    if (!request) return kExitUsage;
    if (in.args.files.empty()) {
        tell("", "inspect needs FILE (see --help)");
        return kExitUsage;
    }
    const bool json = in.args.format == "json";
    return forEachRecord(in.args, *request, [&](const std::string& file, const Conversion& c) {
        const std::vector<std::string> findings = allFindings(c);
        in.sink.write(json ? inspectJson(shownName(file), *request, c, findings) + "\n"
                           : inspectText(c, findings));
        return c.converted ? kExitConverted : kExitRefused;
    });
}

}  // namespace quillon_cli
