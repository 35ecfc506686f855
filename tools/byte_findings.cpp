#include "findings.h"

namespace quillon_cli {

std::vector<std::string> byteFindings(const Conversion& c) {
    std::vector<std::string> out;
    if (!c.measured) return out;
    if (c.readEnd > c.recordSize) {
        out.push_back("read " + std::to_string(c.readEnd - c.recordSize) +
                      " bytes past the end of the record (" + std::to_string(c.recordSize) +
                      " bytes); they were taken as zeros");
    } else if (c.readEnd + c.padding < c.recordSize) {
        out.push_back(std::to_string(c.recordSize - c.readEnd - c.padding) +
                      " bytes after the last byte read (at byte " + std::to_string(c.readEnd) +
                      ") were not used");
    }
    return out;
}

std::vector<std::string> allFindings(const Conversion& c) {
    std::vector<std::string> out = byteFindings(c);
    if (c.converted && xmlCheckBuiltIn()) {
        for (std::string& f : xmlFindings(c.xml)) out.push_back(std::move(f));
    }
    return out;
}

}  // namespace quillon_cli
