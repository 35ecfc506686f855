#include "batch_plan.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include "manifest_line.h"
#include "messages.h"
#include "platform/platform.h"
#include "record_input.h"
#include "record_request.h"

namespace quillon_cli {

namespace fs = std::filesystem;

namespace {

// Bounds a manifest: one line per record, each far shorter than this.
constexpr size_t kLongestManifestLine = 64 * 1024;

bool endsWith(const std::string& s, const std::string& tail) {
    return s.size() >= tail.size() && s.compare(s.size() - tail.size(), tail.size(), tail) == 0;
}

bool isRecordFileName(const std::string& base) {
    return endsWith(base, ".json") || endsWith(base, ".bin") || endsWith(base, ".cormat") ||
           endsWith(base, ".coropt");
}

std::string baseNameOf(const std::string& path) { return fs::u8path(path).filename().u8string(); }

std::string stemOf(const std::string& base) {
    const size_t dot = base.rfind('.');
    return dot == std::string::npos ? base : base.substr(0, dot);
}

// "light_type2_omni" → light, 2.
void nameKindAndType(BatchRecord& r, const std::string& stem) {
    const size_t first = stem.find('_');
    const std::string kindWord = stem.substr(0, first);
    const std::optional<RecordKind> kind = kindFromName(kindWord);
    if (!kind || (*kind != RecordKind::Scene && !kindNeedsType(*kind))) {
        r.problem =
            "the name does not tell the kind (light_typeN_..., material_typeN_..., "
            "scene_..., *.cormat or *.coropt)";
        return;
    }
    r.kind = *kind;
    if (!kindNeedsType(*kind)) return;
    const std::string rest = first == std::string::npos ? "" : stem.substr(first + 1);
    const std::string typeWord = rest.substr(0, rest.find('_'));
    const std::optional<int32_t> type =
        typeWord.compare(0, 4, "type") == 0 ? parseTypeId(typeWord.substr(4)) : std::nullopt;
    if (!type) {
        r.problem = "the name does not tell the type (" + kindWord + "_typeN_...)";
        return;
    }
    r.type = *type;
    r.hasType = true;
}

void markDuplicateNames(std::vector<BatchRecord>& records) {
    std::set<std::string> seen;
    for (BatchRecord& r : records) {
        if (!r.problem.empty()) continue;
        if (!seen.insert(r.name).second) {
            r.problem = "another record of this batch is also written as " + r.name + ".xml";
        }
    }
}

}  // namespace

BatchRecord recordFromName(const std::string& file) {
    BatchRecord r;
    r.file = file;
    const std::string base = baseNameOf(file);
    r.name = stemOf(base);
    if (endsWith(base, ".cormat")) {
        r.kind = RecordKind::Cormat;
    } else if (endsWith(base, ".coropt")) {
        r.kind = RecordKind::Coropt;
    } else if (endsWith(base, ".json") || endsWith(base, ".bin")) {
        nameKindAndType(r, r.name);
    } else {
        r.problem = "the name does not end in .json, .bin, .cormat or .coropt";
    }
    return r;
}

std::vector<BatchRecord> planFromPaths(const std::vector<std::string>& paths) {
    std::vector<BatchRecord> records;
    for (const std::string& path : paths) {
        if (quillon_platform::inspectPath(path).kind != quillon_platform::PathKind::Directory) {
            records.push_back(recordFromName(path));
            continue;
        }
        std::vector<std::string> files;
        std::error_code ec;
        for (const auto& entry : fs::directory_iterator(fs::u8path(path), ec)) {
            const std::string base = entry.path().filename().u8string();
            if (isRecordFileName(base)) files.push_back(entry.path().u8string());
        }
        if (ec) {
            BatchRecord r;
            r.file = path;
            r.problem = "cannot list the folder: " + ec.message();
            records.push_back(r);
        }
        std::sort(files.begin(), files.end());
        for (const std::string& f : files) records.push_back(recordFromName(f));
    }
    markDuplicateNames(records);
    return records;
}

bool planFromManifest(const std::string& manifest, std::vector<BatchRecord>& out,
                      std::string& error) {
    std::optional<std::string> text = readInputFile(manifest, error);
    if (!text) return false;
    const fs::path folder = fs::u8path(manifest).parent_path();
    size_t start = 0;
    for (size_t lineNo = 1; start < text->size(); ++lineNo) {
        size_t end = text->find('\n', start);
        if (end == std::string::npos) end = text->size();
        const std::string line = text->substr(start, end - start);
        start = end + 1;
        if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
        const std::string where = shownName(manifest) + " line " + std::to_string(lineNo);
        ManifestLine entry;
        if (line.size() > kLongestManifestLine || !parseManifestLine(line, entry, error)) {
            if (line.size() > kLongestManifestLine) error = "the line is too long";
            error = where + ": " + error;
            return false;
        }
        BatchRecord r;
        r.file = (folder / fs::u8path(entry.file)).u8string();
        r.name = stemOf(baseNameOf(entry.file));
        const std::optional<RecordKind> kind = kindFromName(entry.kind);
        if (!kind) {
            error = where + ": unknown kind \"" + entry.kind + "\"";
            return false;
        }
        r.kind = *kind;
        if (kindNeedsType(*kind) != entry.type.has_value()) {
            error = where + (entry.type ? ": a " + entry.kind + " record takes no type"
                                        : ": a " + entry.kind + " record needs a type");
            return false;
        }
        r.type = entry.type.value_or(0);
        r.hasType = entry.type.has_value();
        out.push_back(r);
    }
    markDuplicateNames(out);
    return true;
}

}  // namespace quillon_cli
