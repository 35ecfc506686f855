#include "xml/number_format.h"

#include <charconv>
#include <cmath>

namespace CorvaneCore {
namespace {

std::u16string widened(const std::string& ascii) {
    return std::u16string(ascii.begin(), ascii.end());
}

// Standard libraries spell infinities and NaNs their own ways (one writes "-nan(ind)"); the
// GNU spelling is written on every platform, so one record gives one document everywhere.
char* writeSpecial(char* out, double value) {
    const char* text =
        std::isnan(value) ? (std::signbit(value) ? "-nan" : "nan") : (value < 0 ? "-inf" : "inf");
    while (*text) *out++ = *text++;
    return out;
}

}  // namespace

char* writeNumber(char* out, double value) {
    if (!std::isfinite(value)) return writeSpecial(out, value);
    // Same text as printf's "%g" with the default precision of 6; the longest is
    // "-1.23457e-308", well inside kNumberRoom.
    return std::to_chars(out, out + kNumberRoom, value, std::chars_format::general, 6).ptr;
}

char* writeNumber(char* out, int64_t value) {
    return std::to_chars(out, out + kNumberRoom, value).ptr;
}

void appendNumber(std::string& out, double value) {
    char text[kNumberRoom];
    out.append(text, writeNumber(text, value));
}

void appendNumber(std::string& out, int64_t value) {
    char text[kNumberRoom];
    out.append(text, writeNumber(text, value));
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
