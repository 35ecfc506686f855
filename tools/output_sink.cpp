#include "output_sink.h"

#include <utility>

#include "exit_codes.h"
#include "messages.h"
#include "platform/platform.h"

namespace quillon_cli {

OutputSink::OutputSink(std::string target) : target_(std::move(target)) {}

void OutputSink::write(const std::string& text) {
    wrote_ = true;
    if (toFile()) {
        pending_ += text;
        return;
    }
    if (failed_ || text.empty()) return;
    std::string error;
    if (!quillon_platform::writeStandardOutput(text, error)) {
        failed_ = true;
        tell("", error);
    }
}

int OutputSink::finish() {
    if (toFile() && wrote_ && !failed_) {
        std::string error;
        if (!quillon_platform::replaceFile(target_, pending_, error)) {
            failed_ = true;
            tell(target_, error);
        }
        pending_.clear();
    }
    return failed_ ? kExitUsage : kExitConverted;
}

}  // namespace quillon_cli
