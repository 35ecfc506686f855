// One record of a batch: converted in this process as a fresh process would, written to
// OUTDIR/NAME.xml, and described by one entry of the report.
#pragma once

#include <cstdint>
#include <string>

#include "batch_plan.h"
#include "record_input.h"

namespace quillon_cli {

enum class BatchOutcome { Converted, Refused, Unreadable };

struct BatchResult {
    BatchOutcome outcome = BatchOutcome::Unreadable;
    std::string reason;
    uint64_t bytesWritten = 0;
};

// Failures are reported on standard error, named after the record's file.
BatchResult convertBatchRecord(const BatchRecord& record, const std::string& outdir,
                               InputForm form);

// {"file", "kind", "type", "result", "reason", "bytes"} on one line.
std::string reportEntry(const BatchRecord& record, const BatchResult& result);

const char* outcomeName(BatchOutcome outcome);

}  // namespace quillon_cli
