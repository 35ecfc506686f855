#include "archive/read_trace.h"

#include <cstdio>

#include "archive/class_names.h"

namespace CorvaneCore {
namespace {

std::string hexWord(uint32_t word) {
    char buf[16];
    std::snprintf(buf, sizeof buf, "0x%X", word);
    return buf;
}

}  // namespace

void ReadTrace::enter(const std::type_info& type, uint64_t offset) {
    Node node;
    node.className = className(type);
    node.begin = offset;
    node.parent = open_.empty() ? -1 : open_.back();
    const int index = static_cast<int>(nodes_.size());
    if (node.parent >= 0) nodes_[static_cast<size_t>(node.parent)].children.push_back(index);
    nodes_.push_back(std::move(node));
    open_.push_back(index);
    lastWordOffset_.push_back(offset);
}

void ReadTrace::leave(bool ok, uint64_t offset) {
    if (open_.empty()) return;
    Node& node = nodes_[static_cast<size_t>(open_.back())];
    node.end = offset;
    node.finished = true;
    node.refused = !ok;
    if (!ok && failure_.empty()) {
        // The innermost object that refuses is the one to blame; its last word tells why.
        std::string text = node.className + " refused the read";
        if (!node.versionWords.empty()) {
            text += " at version word " + hexWord(node.versionWords.back()) + " (byte " +
                    std::to_string(lastWordOffset_.back()) + ")";
        } else {
            text += " at byte " + std::to_string(node.begin);
        }
        noteFailure(text);
    }
    open_.pop_back();
    lastWordOffset_.pop_back();
}

void ReadTrace::versionWord(uint32_t word, uint64_t offset) {
    if (open_.empty()) return;
    nodes_[static_cast<size_t>(open_.back())].versionWords.push_back(word);
    lastWordOffset_.back() = offset;
}

void ReadTrace::unknownTypeId(const std::type_info& family, int32_t id, uint64_t offset) {
    noteFailure("type id " + std::to_string(id) + " at byte " + std::to_string(offset) +
                " has no class in the " + className(family) + " family");
}

void ReadTrace::depthExceeded(uint64_t offset) {
    noteFailure("objects nested too deep at byte " + std::to_string(offset));
}

void ReadTrace::documentTooLarge(size_t limitBytes) {
    noteFailure("the XML document would pass the limit of " + std::to_string(limitBytes >> 20) +
                " MiB");
}

void ReadTrace::noteFailure(const std::string& text) {
    if (failure_.empty()) failure_ = text;
}

std::string ReadTrace::failureText() const { return failure_; }

std::string ReadTrace::treeText() const {
    std::string out;
    // Iterative walk: a trace can be as deep as the nesting limit allows.
    std::vector<std::pair<int, int>> stack;
    for (int i = static_cast<int>(nodes_.size()) - 1; i >= 0; --i) {
        if (nodes_[static_cast<size_t>(i)].parent < 0) stack.emplace_back(i, 0);
    }
    while (!stack.empty()) {
        const auto [index, depth] = stack.back();
        stack.pop_back();
        const Node& node = nodes_[static_cast<size_t>(index)];
        out.append(static_cast<size_t>(depth) * 2, ' ');
        out += node.className;
        if (!node.versionWords.empty())
            out += " version " + std::to_string(node.versionWords[0] >> 16);
        out += " bytes " + std::to_string(node.begin) + ".." +
               (node.finished ? std::to_string(node.end) : std::string("?"));
        if (node.refused) out += " REFUSED";
        out += "\n";
        for (auto it = node.children.rbegin(); it != node.children.rend(); ++it) {
            stack.emplace_back(*it, depth + 1);
        }
    }
    return out;
}

}  // namespace CorvaneCore
