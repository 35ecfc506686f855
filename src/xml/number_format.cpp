#include "xml/number_format.h"

#include <charconv>

namespace CorvaneCore {
namespace {

void appendAscii(std::wstring& out, const char* first, const char* last) {
    for (const char* p = first; p != last; ++p) out.push_back(static_cast<wchar_t>(*p));
}

}  // namespace

void appendNumber(std::wstring& out, double value) {
    // Same text as printf's "%g" with the default precision of 6.
    char buf[64];
    const auto result = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::general, 6);
    appendAscii(out, buf, result.ptr);
}

void appendNumber(std::wstring& out, int64_t value) {
    char buf[32];
    const auto result = std::to_chars(buf, buf + sizeof buf, value);
    appendAscii(out, buf, result.ptr);
}

std::wstring numberText(double value) {
    std::wstring out;
    appendNumber(out, value);
    return out;
}

std::wstring numberText(int64_t value) {
    std::wstring out;
    appendNumber(out, value);
    return out;
}

}  // namespace CorvaneCore
