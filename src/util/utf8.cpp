#include "util/utf8.h"

#include <cstdint>
#include <cstring>

namespace CorvaneCore {
namespace {

// Windows-1252 bytes 0x80..0x9F; the five unassigned bytes map to the same code point.
const char16_t kCp1252High[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                  0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                  0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                  0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

// Appends one code point as UTF-16: one unit, or a surrogate pair above U+FFFF.
void appendUtf16(std::u16string& out, uint32_t cp) {
    if (cp < 0x10000) {
        out.push_back(static_cast<char16_t>(cp));
        return;
    }
    cp -= 0x10000;
    out.push_back(static_cast<char16_t>(0xD800 | (cp >> 10)));
    out.push_back(static_cast<char16_t>(0xDC00 | (cp & 0x3FF)));
}

// Decodes strict UTF-8; false on any ill-formed sequence (overlong, surrogate, > U+10FFFF).
bool decodeStrictUtf8(const unsigned char* s, size_t n, std::u16string& out) {
    out.clear();
    out.reserve(n);
    size_t i = 0;
    while (i < n) {
        const unsigned char c = s[i];
        if (c < 0x80) {
            out.push_back(static_cast<char16_t>(c));
            ++i;
            continue;
        }
        int extra;
        uint32_t cp, min;
        if ((c & 0xE0) == 0xC0) {
            extra = 1, cp = c & 0x1F, min = 0x80;
        } else if ((c & 0xF0) == 0xE0) {
            extra = 2, cp = c & 0x0F, min = 0x800;
        } else if ((c & 0xF8) == 0xF0) {
            extra = 3, cp = c & 0x07, min = 0x10000;
        } else {
            return false;
        }
        if (static_cast<size_t>(extra) > n - i - 1) return false;
        for (int k = 1; k <= extra; ++k) {
            const unsigned char cc = s[i + k];
            if ((cc & 0xC0) != 0x80) return false;
            cp = (cp << 6) | (cc & 0x3F);
        }
        if (cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return false;
        appendUtf16(out, cp);
        i += static_cast<size_t>(extra) + 1;
    }
    return true;
}

std::u16string decodeCp1252(const unsigned char* s, size_t n) {
    std::u16string out;
    out.reserve(n);
    for (size_t i = 0; i < n; ++i) {
        const unsigned char c = s[i];
        out.push_back(c >= 0x80 && c < 0xA0 ? static_cast<char16_t>(kCp1252High[c - 0x80])
                                            : static_cast<char16_t>(c));
    }
    return out;
}

// Writes one code point (a Unicode scalar value) as UTF-8 and gives the end.
char* writeCodePoint(char* out, uint32_t cp) {
    if (cp < 0x80) {
        *out++ = static_cast<char>(cp);
    } else if (cp < 0x800) {
        *out++ = static_cast<char>(0xC0 | (cp >> 6));
        *out++ = static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        *out++ = static_cast<char>(0xE0 | (cp >> 12));
        *out++ = static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        *out++ = static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        *out++ = static_cast<char>(0xF0 | (cp >> 18));
        *out++ = static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        *out++ = static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        *out++ = static_cast<char>(0x80 | (cp & 0x3F));
    }
    return out;
}

// The code point that starts at unit `i`, moving `i` past it. A surrogate without its partner
// stands for no character and reads as U+FFFD.
uint32_t codePointAt(const char16_t* in, size_t n, size_t& i) {
    const uint32_t unit = in[i++];
    if (unit < 0xD800 || unit > 0xDFFF) return unit;
    if (unit <= 0xDBFF && i < n && in[i] >= 0xDC00 && in[i] <= 0xDFFF) {
        const uint32_t low = in[i++];
        return 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
    }
    return 0xFFFD;
}

}  // namespace

std::u16string utf8ToWide(const char* text, size_t length) {
    const void* nul = std::memchr(text, 0, length);
    if (nul) length = static_cast<size_t>(static_cast<const char*>(nul) - text);
    if (length == 0) return std::u16string();
    const auto* bytes = reinterpret_cast<const unsigned char*>(text);
    std::u16string out;
    if (decodeStrictUtf8(bytes, length, out)) return out;
    return decodeCp1252(bytes, length);
}

std::u16string utf8ToWide(const std::string& text) { return utf8ToWide(text.data(), text.size()); }

char* writeUtf8(char* out, const char16_t* in, size_t n) {
    // One unit never takes more than 3 bytes: a pair of 2 units takes 4. Runs of ASCII go
    // eight units at a time, which the compiler turns into vector code.
    size_t i = 0;
    while (i < n) {
        while (n - i >= 8) {
            uint32_t any = 0;
            for (int k = 0; k < 8; ++k) any |= in[i + k];
            if (any >= 0x80) break;
            for (int k = 0; k < 8; ++k) out[k] = static_cast<char>(in[i + k]);
            i += 8;
            out += 8;
        }
        while (i < n && in[i] < 0x80) *out++ = static_cast<char>(in[i++]);
        if (i < n) out = writeCodePoint(out, codePointAt(in, n, i));
    }
    return out;
}

void appendUtf8(std::string& out, const char16_t* in, size_t n) {
    const size_t start = out.size();
    out.resize(start + 3 * n);
    char* end = writeUtf8(&out[start], in, n);
    out.resize(static_cast<size_t>(end - out.data()));
}

std::string wideToUtf8(const std::u16string& text) {
    std::string out;
    appendUtf8(out, text.data(), text.size());
    return out;
}

}  // namespace CorvaneCore
