#include "record_input.h"

#include <cstdio>
#include <fstream>
#include <iostream>

#include "platform/platform.h"

namespace quillon_cli {

namespace {

constexpr const char kBom[] = "\xEF\xBB\xBF";

bool readBounded(std::istream& in, std::string& out, std::string& error) {
    char buffer[65536];
    while (in) {
        in.read(buffer, sizeof buffer);
        const std::streamsize n = in.gcount();
        if (static_cast<uint64_t>(n) > kInputSizeLimit - out.size()) {
            error = "larger than the limit of " + std::to_string(kInputSizeLimit >> 20) + " MiB";
            return false;
        }
        out.append(buffer, static_cast<size_t>(n));
    }
    if (in.bad()) {
        error = "cannot read the file";
        return false;
    }
    return true;
}

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

void skipBlanks(const std::string& s, size_t& i) {
    while (i < s.size() && isBlank(s[i])) ++i;
}

const char* jsonValueName(char c) {
    switch (c) {
        case '{':
            return "an object";
        case '"':
            return "a string";
        case 't':
        case 'f':
            return "a boolean";
        case 'n':
            return "null";
        default:
            return isDigit(c) || c == '-' ? "a number" : nullptr;
    }
}

// One array element at `i`: an integer 0 to 2^64 - 1, of which the low 8 bits are kept. Digits
// beyond 2^64 - 1 and other JSON values get a message of their own.
bool readByteValue(const std::string& text, size_t& i, std::string& bytes, std::string& error) {
    const size_t start = i;
    const std::string where = " at byte " + std::to_string(start);
    if (i < text.size() && text[i] == '-') {
        error = "negative number" + where + "; integers 0 to 18446744073709551615 are read";
        return false;
    }
    if (i >= text.size() || !isDigit(text[i])) {
        const char* name = i < text.size() ? jsonValueName(text[i]) : nullptr;
        error = name ? std::string(name) + where + " where an integer belongs"
                     : "expected an integer" + where;
        return false;
    }
    unsigned long long value = 0;
    bool overflow = false;
    for (; i < text.size() && isDigit(text[i]); ++i) {
        const unsigned digit = static_cast<unsigned>(text[i] - '0');
        if (value > (~0ull - digit) / 10) overflow = true;
        value = value * 10 + digit;
    }
    if (i < text.size() && (text[i] == '.' || text[i] == 'e' || text[i] == 'E')) {
        error = "not an integer (a fraction or exponent)" + where;
        return false;
    }
    if (overflow) {
        error = "number" + where + " is beyond 18446744073709551615";
        return false;
    }
    bytes.push_back(static_cast<char>(value & 0xFF));  // low 8 bits, as the Ruby module keeps
    return true;
}

}  // namespace

std::optional<std::string> readInputFile(const std::string& path, std::string& error) {
    std::string content;
    if (path == "-") {
        quillon_platform::useBinaryStandardInput();
        if (!readBounded(std::cin, content, error)) return std::nullopt;
        return content;
    }
    const quillon_platform::PathInfo info = quillon_platform::inspectPath(path);
    switch (info.kind) {
        case quillon_platform::PathKind::Missing:
            error = "no such file";
            return std::nullopt;
        case quillon_platform::PathKind::Directory:
            error = "a directory, not a record file";
            return std::nullopt;
        case quillon_platform::PathKind::Other:
            error = "not a regular file";
            return std::nullopt;
        case quillon_platform::PathKind::Regular:
            break;
    }
    if (info.size > kInputSizeLimit) {
        error = "larger than the limit of " + std::to_string(kInputSizeLimit >> 20) + " MiB";
        return std::nullopt;
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        error = "cannot read the file";
        return std::nullopt;
    }
    if (!readBounded(in, content, error)) return std::nullopt;
    return content;
}

bool looksLikeJson(const std::string& content) {
    if (content.compare(0, 3, kBom) == 0) return true;
    size_t i = 0;
    skipBlanks(content, i);
    if (i > 0) return true;
    return i < content.size() && (content[i] == '[' || jsonValueName(content[i]) != nullptr);
}

std::optional<std::string> parseJsonByteArray(const std::string& text, std::string& error) {
    if (text.compare(0, 3, kBom) == 0) {
        error = "starts with a byte order mark; save the JSON without one";
        return std::nullopt;
    }
    size_t i = 0;
    skipBlanks(text, i);
    if (i >= text.size() || text[i] != '[') {
        const char* name = i < text.size() ? jsonValueName(text[i]) : "nothing";
        error =
            std::string("expected a JSON array of integers, found ") + (name ? name : "no JSON");
        return std::nullopt;
    }
    ++i;
    std::string bytes;
    skipBlanks(text, i);
    if (i < text.size() && text[i] == ']') {
        ++i;
    } else {
        for (;;) {
            skipBlanks(text, i);
            if (!readByteValue(text, i, bytes, error)) return std::nullopt;
            skipBlanks(text, i);
            if (i < text.size() && text[i] == ',') {
                ++i;
                continue;
            }
            if (i < text.size() && text[i] == ']') {
                ++i;
                break;
            }
            error = "expected \",\" or \"]\" at byte " + std::to_string(i);
            return std::nullopt;
        }
    }
    skipBlanks(text, i);
    if (i != text.size()) {
        error = "unexpected text after the array at byte " + std::to_string(i);
        return std::nullopt;
    }
    return bytes;
}

std::optional<std::string> decodeRecord(const std::string& content, InputForm form,
                                        std::string& error) {
    if (form == InputForm::Raw || (form == InputForm::Auto && !looksLikeJson(content))) {
        return content;
    }
    return parseJsonByteArray(content, error);
}

}  // namespace quillon_cli
