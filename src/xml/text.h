// Text conversions and small string helpers. Wide text is the model's own form: UTF-16 code
// units on every platform, since the stored format counts text in 16-bit units. UTF-8 is what
// the archive, the host and the XML hold.
#pragma once

#include <string>

namespace CorvaneCore {

// Strict UTF-8 into UTF-16 (surrogate pairs above U+FFFF), falling back to Windows-1252 for text
// stored in the old system code page. The input ends at its first 0 byte.
std::u16string utf8ToWide(const std::string& text);
std::u16string utf8ToWide(const char* text, size_t length);
// UTF-8 with surrogate pairs joined; a surrogate without its partner becomes U+FFFD.
std::string wideToUtf8(const std::u16string& text);

// Appends `text` as UTF-8, as wideToUtf8 would give it.
void appendUtf8(std::string& out, const char16_t* text, size_t length);
// The same bytes written at `out`, which has room for 3 bytes per unit; gives their end.
char* writeUtf8(char* out, const char16_t* text, size_t length);

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
