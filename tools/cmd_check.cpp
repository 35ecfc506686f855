// check: one line per finding, "FILE: finding", so that a person can grep a whole archive.
#include "commands.h"
#include "findings.h"
#include "messages.h"
#include "record_request.h"

namespace quillon_cli {

int runCheck(const Invocation& in) {
    const std::optional<RecordRequest> request = requestFromType(in.args);
    if (!request) return kExitUsage;
    if (in.args.files.empty()) {
        tell("", "check needs FILE (see --help)");
        return kExitUsage;
    }
    if (!xmlCheckBuiltIn()) {
        tell("", "the XML check is not built in; only the byte findings are reported");
    }
    return forEachRecord(in.args, *request, [&](const std::string& file, const Conversion& c) {
        std::vector<std::string> findings = allFindings(c);
        if (!c.converted) findings.insert(findings.begin(), "refused: " + c.reason);
        std::string lines;
        for (const std::string& f : findings) lines += shownName(file) + ": " + f + "\n";
        in.sink.write(lines);
        return findings.empty() ? kExitConverted : kExitRefused;
    });
}

}  // namespace quillon_cli
