#include "xml/text.h"

#include <cstdint>
#include <cstring>
#include <random>

namespace CorvaneCore {
namespace {

// Replaces each occurrence of `from`, scanning on just behind every replacement.
void replaceAll(std::string& text, const char* from, const char* to) {
    const size_t fromLen = std::strlen(from);
    const size_t toLen = std::strlen(to);
    size_t pos = 0;
    while ((pos = text.find(from, pos, fromLen)) != std::string::npos) {
        text.replace(pos, fromLen, to, toLen);
        pos += toLen;
    }
}

// The "C" locale's lower-case mapping of one 16-bit unit: A to Z only, every other unit
// (surrogates included) is its own lower case.
char16_t foldAscii(char16_t c) {
    return (c >= u'A' && c <= u'Z') ? static_cast<char16_t>(c + (u'a' - u'A')) : c;
}

}  // namespace

std::string unescapeXml(const std::string& text) {
    std::string out = text;
    replaceAll(out, "&lt;", "<");
    replaceAll(out, "&gt;", ">");
    replaceAll(out, "&amp;", "&");
    return out;
}

std::string escapeXml(const std::string& text, bool unescapeFirst) {
    std::string out = unescapeFirst ? unescapeXml(text) : text;
    replaceAll(out, "&", "&amp;");
    replaceAll(out, "<", "&lt;");
    replaceAll(out, ">", "&gt;");
    return out;
}

bool isControlChar(char16_t c) { return c <= 0x1F || (c >= 0x7F && c <= 0x9F); }

void stripControlChars(std::u16string& text) {
    size_t kept = 0;
    for (char16_t c : text) {
        if (!isControlChar(c)) text[kept++] = c;
    }
    text.resize(kept);
}

bool isAsciiDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

std::u16string fileNameOf(const std::u16string& path) {
    size_t start = 0;
    if (path.size() >= 2 && path[1] == u':') start = 2;
    const size_t sep = path.find_last_of(u"/\\");
    if (sep != std::u16string::npos && sep + 1 > start) start = sep + 1;
    return path.substr(start);
}

std::u16string newUuidText() {
    static std::mt19937_64 engine{std::random_device{}()};
    const uint64_t hi = engine();
    const uint64_t lo = engine();
    unsigned char b[16];
    for (int i = 0; i < 8; ++i) {
        b[i] = static_cast<unsigned char>(hi >> (8 * i));
        b[8 + i] = static_cast<unsigned char>(lo >> (8 * i));
    }
    b[6] = static_cast<unsigned char>((b[6] & 0x0F) | 0x40);  // version 4
    b[8] = static_cast<unsigned char>((b[8] & 0x3F) | 0x80);  // RFC 4122 variant
    static const char16_t kHex[] = u"0123456789abcdef";
    std::u16string out;
    out.reserve(36);
    for (int i = 0; i < 16; ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) out.push_back(u'-');
        out.push_back(kHex[b[i] >> 4]);
        out.push_back(kHex[b[i] & 0x0F]);
    }
    return out;
}

int compareIgnoreCase(const std::u16string& a, const std::u16string& b) {
    const size_t n = a.size() < b.size() ? a.size() : b.size();
    for (size_t i = 0; i < n; ++i) {
        const char16_t x = foldAscii(a[i]);
        const char16_t y = foldAscii(b[i]);
        if (x != y) return x < y ? -1 : 1;
    }
    if (a.size() == b.size()) return 0;
    return a.size() < b.size() ? -1 : 1;
}

}  // namespace CorvaneCore
