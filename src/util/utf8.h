// UTF-8 and the model's UTF-16 text, both ways. Wide text is the model's own form: UTF-16 code
// units on every platform, since the stored format counts text in 16-bit units. UTF-8 is what
// the archive, the host and the XML hold.
#pragma once

#include <cstddef>
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

}  // namespace CorvaneCore
