// Text conversions and small string helpers. Wide text is the model's own form; UTF-8 is what
// the archive and the host hold.
#pragma once

#include <string>

namespace CorvaneCore {

// Strict UTF-8, falling back to Windows-1252 for text stored in the old system code page.
// The input ends at its first 0 byte.
std::wstring utf8ToWide(const std::string& text);
std::wstring utf8ToWide(const char* text, size_t length);
// UTF-8; characters that are not Unicode scalar values become U+FFFD.
std::string wideToUtf8(const std::wstring& text);

std::wstring escapeXml(const std::wstring& text, bool unescapeFirst = true);
std::wstring unescapeXml(const std::wstring& text);

// C0 and C1 control characters (U+0000..U+001F, U+007F..U+009F).
bool isControlChar(wchar_t c);
void stripControlChars(std::wstring& text);
bool isAsciiDigit(wchar_t c);

// Last path component; "/" and "\" both separate, a drive prefix is dropped.
std::wstring fileNameOf(const std::wstring& path);

// A new random UUID as lowercase 8-4-4-4-12 hex, no braces.
std::wstring newUuidText();

// Comparison that folds ASCII letters only, like Ruby's casecmp, whatever the process locale.
int compareIgnoreCase(const std::wstring& a, const std::wstring& b);
inline bool equalsIgnoreCase(const std::wstring& a, const std::wstring& b) {
    return compareIgnoreCase(a, b) == 0;
}
struct LessIgnoreCase {
    bool operator()(const std::wstring& a, const std::wstring& b) const {
        return compareIgnoreCase(a, b) < 0;
    }
};

}  // namespace CorvaneCore
