#include "inspect_json.h"

#include "json_text.h"

namespace quillon_cli {

namespace {

using Trace = CorvaneCore::ReadTrace;

// Depth is bounded by the readers' own nesting limit.
std::string objectJson(const Trace& trace, int index) {
    const Trace::Node& n = trace.nodes()[static_cast<size_t>(index)];
    std::string out = "{\"class\":" + jsonString(n.className) + ",\"version\":";
    out += n.versionWords.empty() ? "null" : std::to_string(n.versionWords[0] >> 16);
    out += ",\"begin\":" + std::to_string(n.begin) +
           ",\"end\":" + (n.finished ? std::to_string(n.end) : std::string("null")) +
           ",\"refused\":" + (n.refused ? "true" : "false") + ",\"children\":[";
    for (size_t i = 0; i < n.children.size(); ++i) {
        out += (i ? "," : "") + objectJson(trace, n.children[i]);
    }
    return out + "]}";
}

std::string stringList(const std::vector<std::string>& items) {
    std::string out = "[";
    for (size_t i = 0; i < items.size(); ++i) out += (i ? "," : "") + jsonString(items[i]);
    return out + "]";
}

}  // namespace

std::string inspectJson(const std::string& file, const RecordRequest& request, const Conversion& c,
                        const std::vector<std::string>& findings) {
    std::string out =
        "{\"file\":" + jsonString(file) + ",\"kind\":" + jsonString(kindName(request.kind)) +
        ",\"type\":" + (kindNeedsType(request.kind) ? std::to_string(request.type) : "null");
    out += ",\"result\":" + jsonString(c.converted ? "converted" : "refused") +
           ",\"reason\":" + (c.converted ? std::string("null") : jsonString(c.reason));
    out += ",\"size\":" + std::to_string(c.recordSize) +
           ",\"read_end\":" + (c.measured ? std::to_string(c.readEnd) : std::string("null"));
    out += ",\"objects\":[";
    bool first = true;
    const auto& nodes = c.trace.nodes();
    for (size_t i = 0; i < nodes.size(); ++i) {
        if (nodes[i].parent >= 0) continue;
        out += (first ? "" : ",") + objectJson(c.trace, static_cast<int>(i));
        first = false;
    }
    out += "],\"materials\":" + stringList(c.materials) + ",\"findings\":" + stringList(findings) +
           "}";
    return out;
}

}  // namespace quillon_cli
