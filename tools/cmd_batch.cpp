// batch: many records in one run, on several cores, each result as a fresh process would give
// it; a closing summary and, when asked, a JSON report of every record.
#include <cstdio>
#include <filesystem>
#include <thread>

#include "batch_workers.h"
#include "commands.h"
#include "exit_codes.h"
#include "messages.h"
#include "platform/platform.h"

namespace quillon_cli {

namespace {

constexpr long long kMostJobs = 256;

void showProgress(size_t done, size_t total) {
    const std::string line = "\rbatch: " + std::to_string(done) + " of " + std::to_string(total);
    std::fputs(line.c_str(), stderr);
}

void clearProgress() { std::fputs("\r\033[K", stderr); }

std::optional<unsigned> jobCount(const Arguments& args) {
    if (!args.jobs) return std::max(1u, std::thread::hardware_concurrency());
    const std::optional<long long> n = parseBoundedInteger(*args.jobs, 1, kMostJobs);
    if (!n) return std::nullopt;
    return static_cast<unsigned>(*n);
}

bool prepareOutdir(const std::string& outdir) {
    std::error_code ec;
    std::filesystem::create_directories(std::filesystem::u8path(outdir), ec);
    if (quillon_platform::inspectPath(outdir).kind == quillon_platform::PathKind::Directory) {
        return true;
    }
    tell(outdir, ec ? "cannot make the output folder: " + ec.message() : "not a folder");
    return false;
}

std::optional<std::vector<BatchRecord>> makePlan(const Arguments& args) {
    std::vector<BatchRecord> plan;
    if (args.manifest) {
        std::string error;
        if (!planFromManifest(*args.manifest, plan, error)) {
            tell("", error);
            return std::nullopt;
        }
    }
    for (BatchRecord& r : planFromPaths(args.files)) plan.push_back(std::move(r));
    return plan;
}

std::vector<std::optional<BatchEntry>> runHere(const std::vector<BatchRecord>& plan,
                                               const std::string& outdir, InputForm form,
                                               ProgressFn progress) {
    std::vector<std::optional<BatchEntry>> entries;
    for (const BatchRecord& record : plan) {
        const BatchResult result = convertBatchRecord(record, outdir, form);
        entries.push_back(BatchEntry{result.outcome, reportEntry(record, result)});
        if (progress) progress(entries.size(), plan.size());
    }
    return entries;
}

// The summary line, the report, and the exit code.
int conclude(const Invocation& in, const std::vector<BatchRecord>& plan,
             const std::vector<std::optional<BatchEntry>>& entries) {
    size_t counts[3] = {0, 0, 0};
    std::string records;
    bool lost = false;
    for (size_t i = 0; i < entries.size(); ++i) {
        if (!entries[i]) {
            tell(plan[i].file, "its worker ended without converting it");
            lost = true;
            continue;
        }
        ++counts[static_cast<int>(entries[i]->outcome)];
        records += (records.empty() ? "\n  " : ",\n  ") + entries[i]->json;
    }
    const std::string summary = std::to_string(counts[0]) + " converted, " +
                                std::to_string(counts[1]) + " refused, " +
                                std::to_string(counts[2]) + " unreadable";
    tell("", summary);
    int status = counts[2] ? kExitUsage : counts[1] ? kExitRefused : kExitConverted;
    if (lost) status = kExitInternal;
    if (in.args.report) {
        OutputSink report(*in.args.report);
        report.write("{\"converted\":" + std::to_string(counts[0]) + ",\"refused\":" +
                     std::to_string(counts[1]) + ",\"unreadable\":" + std::to_string(counts[2]) +
                     ",\"records\":[" + records + (records.empty() ? "]}\n" : "\n]}\n"));
        status = worseExit(status, report.finish());
    }
    return status;
}

}  // namespace

int runBatch(const Invocation& in) {
    const std::optional<unsigned> jobs = jobCount(in.args);
    if (!jobs) {
        tell("",
             "-j needs a number of jobs from 1 to " + std::to_string(kMostJobs) + " (see --help)");
        return kExitUsage;
    }
    if (in.args.files.empty() && !in.args.manifest) {
        tell("", "batch needs PATH or --manifest FILE (see --help)");
        return kExitUsage;
    }
    const std::string outdir = in.args.output.value_or(".");
    if (outdir == "-") {
        tell("", "batch writes files; -o names their folder (see --help)");
        return kExitUsage;
    }
    if (!prepareOutdir(outdir)) return kExitUsage;
    const std::optional<std::vector<BatchRecord>> plan = makePlan(in.args);
    if (!plan) return kExitUsage;
    if (in.args.worker) return runWorkerShare(in, *plan, outdir);
    const bool terminal = quillon_platform::standardErrorIsTerminal();
    const ProgressFn progress = terminal ? showProgress : nullptr;
    const unsigned workers = static_cast<unsigned>(std::min<size_t>(*jobs, plan->size()));
    const std::vector<std::optional<BatchEntry>> entries =
        workers > 1 ? runWorkers(in, outdir, plan->size(), workers, progress)
                    : runHere(*plan, outdir, in.args.form, progress);
    if (terminal) clearProgress();
    return conclude(in, *plan, entries);
}

}  // namespace quillon_cli
