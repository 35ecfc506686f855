#include "xml/number_format.h"

#include <charconv>

namespace CorvaneCore {
namespace {

void appendAscii(std::u16string& out, const char* first, const char* last) {
    for (const char* p = first; p != last; ++p) out.push_back(static_cast<char16_t>(*p));
}

}  // namespace

void appendNumber(std::u16string& out, double value) {
    // Same text as printf's "%g" with the default precision of 6.
    char buf[64];
    const auto result = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::general, 6);
    appendAscii(out, buf, result.ptr);
}

void appendNumber(std::u16string& out, int64_t value) {
    char buf[32];
    const auto result = std::to_chars(buf, buf + sizeof buf, value);
    appendAscii(out, buf, result.ptr);
}

std::u16string numberText(double value) {
    std::u16string out;
    appendNumber(out, value);
    return out;
}

std::u16string numberText(int64_t value) {
    std::u16string out;
    appendNumber(out, value);
    return out;
}

}  // namespace CorvaneCore
