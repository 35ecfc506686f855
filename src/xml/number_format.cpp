#include "xml/number_format.h"

#include <charconv>

namespace CorvaneCore {
namespace {

// Longest text either form can give: "-1.23457e-308" for doubles, 20 characters for int64.
constexpr size_t kNumberRoom = 32;

template <class Format>
void appendFormatted(std::string& out, Format format) {
    const size_t start = out.size();
    out.resize(start + kNumberRoom);
    char* first = &out[start];
    const std::to_chars_result result = format(first, first + kNumberRoom);
    out.resize(start + static_cast<size_t>(result.ptr - first));
}

std::u16string widened(const std::string& ascii) {
    return std::u16string(ascii.begin(), ascii.end());
}

}  // namespace

void appendNumber(std::string& out, double value) {
    // Same text as printf's "%g" with the default precision of 6.
    appendFormatted(out, [value](char* first, char* last) {
        return std::to_chars(first, last, value, std::chars_format::general, 6);
    });
}

void appendNumber(std::string& out, int64_t value) {
    appendFormatted(out,
                    [value](char* first, char* last) { return std::to_chars(first, last, value); });
}

std::u16string numberText(double value) {
    std::string out;
    appendNumber(out, value);
    return widened(out);
}

std::u16string numberText(int64_t value) {
    std::string out;
    appendNumber(out, value);
    return widened(out);
}

}  // namespace CorvaneCore
