#include "record_input.h"

#include <cctype>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

namespace quillon_cli {

std::optional<std::string> readInputFile(const std::string& path) {
    std::ostringstream content;
    if (path == "-") {
        content << std::cin.rdbuf();
        if (std::cin.bad()) return std::nullopt;
        return content.str();
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    content << in.rdbuf();
    if (in.bad()) return std::nullopt;
    return content.str();
}

namespace {

void skipBlanks(const std::string& s, size_t& i) {
    while (i < s.size() && std::isspace(static_cast<unsigned char>(s[i]))) ++i;
}

}  // namespace

std::optional<std::string> parseJsonByteArray(const std::string& text, std::string& error) {
    size_t i = 0;
    skipBlanks(text, i);
    if (i >= text.size() || text[i] != '[') {
        error = "expected a JSON array of integers";
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
            const bool negative = i < text.size() && text[i] == '-';
            if (negative) ++i;
            if (i >= text.size() || !std::isdigit(static_cast<unsigned char>(text[i]))) {
                error = "expected an integer at byte " + std::to_string(i);
                return std::nullopt;
            }
            unsigned long long value = 0;
            while (i < text.size() && std::isdigit(static_cast<unsigned char>(text[i]))) {
                value =
                    value * 10 + static_cast<unsigned>(text[i] - '0');  // wraps; low 8 bits kept
                ++i;
            }
            if (negative) value = 0 - value;
            bytes.push_back(static_cast<char>(value & 0xFF));
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
    if (form == InputForm::Raw) return content;
    if (form == InputForm::Auto) {
        size_t i = 0;
        skipBlanks(content, i);
        if (i >= content.size() || content[i] != '[') return content;
    }
    return parseJsonByteArray(content, error);
}

}  // namespace quillon_cli
