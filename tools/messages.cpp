#include "messages.h"

#include <cstdio>

namespace quillon_cli {

void tell(const std::string& subject, const std::string& text) {
    std::string line = "quillonbin2xml: ";
    if (!subject.empty()) line += subject + ": ";
    line += text + "\n";
    std::fputs(line.c_str(), stderr);
}

std::string shownName(const std::string& path) { return path == "-" ? "<stdin>" : path; }

}  // namespace quillon_cli
