// Running a batch's records in several worker processes of this same program. The converter
// keeps process-wide state, so records run in processes rather than threads; each worker
// restores that state before every record. Worker K of N takes the records K, K+N, K+2N ...
// of the plan, which every worker makes alike from the same arguments.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "batch_plan.h"
#include "batch_record.h"
#include "commands.h"

namespace quillon_cli {

// One finished record: its outcome and its report entry.
struct BatchEntry {
    BatchOutcome outcome = BatchOutcome::Unreadable;
    std::string json;
};

using ProgressFn = void (*)(size_t done, size_t total);

// Runs `jobs` workers over the plan and gathers their entries in plan order; a record whose
// worker ended without an entry for it is reported and left empty. Progress, when given, is
// shown while they run.
std::vector<std::optional<BatchEntry>> runWorkers(const Invocation& in, const std::string& outdir,
                                                  size_t recordCount, unsigned jobs,
                                                  ProgressFn progress);

// The worker's side: "--worker K/N --report PART". Its exit code.
int runWorkerShare(const Invocation& in, const std::vector<BatchRecord>& plan,
                   const std::string& outdir);

}  // namespace quillon_cli
