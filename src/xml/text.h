// Small string helpers on the model's UTF-16 text: XML entities, control characters, file names,
// UUIDs and the format's case-insensitive order. The UTF-8 conversions come with it.
#pragma once

#include <string>

#include "util/utf8.h"

namespace CorvaneCore {

// The three XML entities on UTF-8 text; only ASCII bytes are ever replaced.
std::string escapeXml(const std::string& text, bool unescapeFirst = true);
std::string unescapeXml(const std::string& text);

// C0 and C1 control characters (U+0000..U+001F, U+007F..U+009F).
bool isControlChar(char16_t c);
void stripControlChars(std::u16string& text);
bool isAsciiDigit(char16_t c);

// Last path component; "/" and "\" both separate, a drive prefix is dropped.
std::u16string fileNameOf(const std::u16string& path);

// A new random UUID as lowercase 8-4-4-4-12 hex, no braces.
std::u16string newUuidText();

// Case-insensitive comparison of 16-bit units, as the format's names compare: each unit is
// folded by the "C" locale's mapping (A to Z only, like Ruby's casecmp) and the units are
// ordered by value, so a surrogate sorts below U+E000..U+FFFF. The process locale plays no part.
int compareIgnoreCase(const std::u16string& a, const std::u16string& b);
inline bool equalsIgnoreCase(const std::u16string& a, const std::u16string& b) {
    return compareIgnoreCase(a, b) == 0;
}
struct LessIgnoreCase {
    bool operator()(const std::u16string& a, const std::u16string& b) const {
        return compareIgnoreCase(a, b) < 0;
    }
};

}  // namespace CorvaneCore
