// An optional record of what a read went through: which objects were entered, at which byte
// ranges, with which version words, and where and why a read was refused. Reading code reports
// to it only through the shared helpers, and only when a trace is attached to the archive.
#pragma once

#include <cstdint>
#include <string>
#include <typeinfo>
#include <vector>

namespace CorvaneCore {

class ReadTrace {
public:
    struct Node {
        std::string className;
        std::vector<uint32_t> versionWords;  // the object's own word first, then its sections'
        uint64_t begin = 0;
        uint64_t end = 0;
        bool finished = false;
        bool refused = false;
        int parent = -1;
        std::vector<int> children;
    };

    // Classes show under the names that class_names.h gives them.
    void enter(const std::type_info& type, uint64_t offset);
    void leave(bool ok, uint64_t offset);
    void versionWord(uint32_t word, uint64_t offset);
    void unknownTypeId(const std::type_info& family, int32_t id, uint64_t offset);
    void depthExceeded(uint64_t offset);
    // The record was read, but its XML would pass `limitBytes`.
    void documentTooLarge(size_t limitBytes);

    const std::vector<Node>& nodes() const { return nodes_; }
    // One line on why the read was refused, or empty when nothing was refused.
    std::string failureText() const;
    // The objects that were read, one per line, indented by nesting.
    std::string treeText() const;

private:
    void noteFailure(const std::string& text);

    std::vector<Node> nodes_;
    std::vector<int> open_;
    std::vector<uint64_t> lastWordOffset_;
    std::string failure_;
};

}  // namespace CorvaneCore
