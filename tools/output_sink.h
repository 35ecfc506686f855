// Where every command's output goes: standard output (no -o, or "-o -"), or one file that is
// replaced in a single step once the run has produced its text.
#pragma once

#include <string>

namespace quillon_cli {

class OutputSink {
public:
    explicit OutputSink(std::string target);

    // Standard output takes the text at once; a file collects it.
    void write(const std::string& text);
    // Puts a file's text in place when anything was written (a run that produced nothing
    // leaves the target alone). The exit code: converted, or usage when a write failed, which
    // has been reported on one line.
    int finish();

    bool toFile() const { return !target_.empty() && target_ != "-"; }

private:
    std::string target_;
    std::string pending_;
    bool wrote_ = false;
    bool failed_ = false;
};

}  // namespace quillon_cli
