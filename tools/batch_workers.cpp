#include "batch_workers.h"

#include <chrono>
#include <cstdio>
#include <fstream>
#include <thread>

#include "exit_codes.h"
#include "messages.h"
#include "platform/platform.h"

namespace quillon_cli {

namespace {

constexpr auto kProgressInterval = std::chrono::milliseconds(100);

struct Worker {
    std::string part;  // the worker's entries, one line each: "INDEX OUTCOME JSON"
    std::optional<quillon_platform::ChildProcess> process;
    uint64_t readUpTo = 0;
    size_t lines = 0;
};

std::vector<std::string> workerArguments(const Arguments& args, const std::string& outdir,
                                         const std::string& share, const std::string& part) {
    std::vector<std::string> out = {"batch", "--worker", share, "--report", part, "-o", outdir};
    if (args.form != InputForm::Auto) {
        out.insert(out.end(), {"--input", args.form == InputForm::Raw ? "raw" : "json"});
    }
    if (args.manifest) out.insert(out.end(), {"--manifest", *args.manifest});
    out.push_back("--");
    out.insert(out.end(), args.files.begin(), args.files.end());
    return out;
}

// Counts the lines a worker has added since the last look.
void countNewLines(Worker& w) {
    std::ifstream in(w.part, std::ios::binary);
    in.seekg(static_cast<std::streamoff>(w.readUpTo));
    char buffer[65536];
    while (in.read(buffer, sizeof buffer) || in.gcount() > 0) {
        for (std::streamsize i = 0; i < in.gcount(); ++i) w.lines += buffer[i] == '\n';
        w.readUpTo += static_cast<uint64_t>(in.gcount());
    }
}

std::optional<BatchOutcome> outcomeFromName(const std::string& name) {
    for (BatchOutcome o :
         {BatchOutcome::Converted, BatchOutcome::Refused, BatchOutcome::Unreadable}) {
        if (name == outcomeName(o)) return o;
    }
    return std::nullopt;
}

void gatherEntries(const std::string& part, std::vector<std::optional<BatchEntry>>& entries) {
    std::ifstream in(part, std::ios::binary);
    std::string line;
    while (std::getline(in, line)) {
        const size_t a = line.find(' ');
        const size_t b = a == std::string::npos ? a : line.find(' ', a + 1);
        if (b == std::string::npos) continue;
        const std::optional<long long> index =
            parseBoundedInteger(line.substr(0, a), 0, static_cast<long long>(entries.size()) - 1);
        const std::optional<BatchOutcome> outcome = outcomeFromName(line.substr(a + 1, b - a - 1));
        if (index && outcome) entries[static_cast<size_t>(*index)] = {*outcome, line.substr(b + 1)};
    }
}

}  // namespace

std::vector<std::optional<BatchEntry>> runWorkers(const Invocation& in, const std::string& outdir,
                                                  size_t recordCount, unsigned jobs,
                                                  ProgressFn progress) {
    std::vector<Worker> workers(jobs);
    std::string error;
    for (unsigned k = 0; k < jobs; ++k) {
        Worker& w = workers[k];
        const std::optional<std::string> part =
            quillon_platform::createUniqueFile(outdir, ".quillon-batch-", error);
        if (part) {
            w.part = *part;
            const std::string share = std::to_string(k) + "/" + std::to_string(jobs);
            w.process = quillon_platform::startProcess(
                in.program, workerArguments(in.args, outdir, share, w.part), error);
        }
        if (!w.process) tell("", error);
    }
    for (bool running = true; running;) {
        running = false;
        size_t done = 0;
        for (Worker& w : workers) {
            if (w.process && !quillon_platform::childExitCode(*w.process, !progress)) {
                running = true;
            } else if (w.process) {
                w.process.reset();
            }
            if (progress && !w.part.empty()) countNewLines(w);
            done += w.lines;
        }
        if (progress) progress(done, recordCount);
        if (running && progress) std::this_thread::sleep_for(kProgressInterval);
    }
    std::vector<std::optional<BatchEntry>> entries(recordCount);
    for (const Worker& w : workers) {
        if (w.part.empty()) continue;
        gatherEntries(w.part, entries);
        std::remove(w.part.c_str());
    }
    return entries;
}

int runWorkerShare(const Invocation& in, const std::vector<BatchRecord>& plan,
                   const std::string& outdir) {
    const std::string& share = *in.args.worker;
    const size_t slash = share.find('/');
    const std::optional<long long> count =
        parseBoundedInteger(share.substr(slash == std::string::npos ? 0 : slash + 1), 1, 1024);
    const std::optional<long long> index =
        count ? parseBoundedInteger(share.substr(0, slash), 0, *count - 1) : std::nullopt;
    if (slash == std::string::npos || !index || !in.args.report) {
        tell("", "--worker K/N and --report PART go together");
        return kExitUsage;
    }
    std::ofstream part(*in.args.report, std::ios::binary | std::ios::app);
    for (size_t i = static_cast<size_t>(*index); i < plan.size();
         i += static_cast<size_t>(*count)) {
        const BatchResult result = convertBatchRecord(plan[i], outdir, in.args.form);
        part << std::to_string(i) + ' ' + outcomeName(result.outcome) + ' ' +
                    reportEntry(plan[i], result) + '\n';
        part.flush();
    }
    return part ? kExitConverted : kExitInternal;
}

}  // namespace quillon_cli
