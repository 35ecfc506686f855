// Numbers as the default stream format writes them in the "C" locale: general notation with
// six significant digits for floating point, plain decimal for integers. No stream and no
// locale is involved, so the host's locale can never change the text.
#pragma once

#include <cstdint>
#include <string>

namespace CorvaneCore {

void appendNumber(std::wstring& out, double value);
void appendNumber(std::wstring& out, int64_t value);
std::wstring numberText(double value);
std::wstring numberText(int64_t value);

}  // namespace CorvaneCore
