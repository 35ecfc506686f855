// Numbers as the default stream format writes them in the "C" locale: general notation with
// six significant digits for floating point, plain decimal for integers. No stream and no
// locale is involved, so the host's locale can never change the text.
#pragma once

#include <cstdint>
#include <string>

namespace CorvaneCore {

// Room a number's text may need at most.
constexpr size_t kNumberRoom = 32;
// The number's text written at `out`, which has kNumberRoom bytes; gives its end.
char* writeNumber(char* out, double value);
char* writeNumber(char* out, int64_t value);
// Append the number's text to UTF-8 output.
void appendNumber(std::string& out, double value);
void appendNumber(std::string& out, int64_t value);
// The same text as model text, for names built from numbers.
std::u16string numberText(double value);
std::u16string numberText(int64_t value);

}  // namespace CorvaneCore
