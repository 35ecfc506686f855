#include "xml/text.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstring>
#include <locale>
#include <regex>
#include <set>
#include <sstream>

#include "xml/number_format.h"

using namespace CorvaneCore;

TEST(Text, Utf8RoundTripStrictnessAndAnsiFallback) {
    const std::wstring text = L"a\u00e9\u20ac\U0001F600";
    EXPECT_EQ(wideToUtf8(text), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(utf8ToWide(wideToUtf8(text)), text);
    // Overlong, surrogate and truncated sequences are not UTF-8: the ANSI reading is used.
    EXPECT_EQ(utf8ToWide(std::string("\xC0\xAF")), L"\u00c0\u00af");
    EXPECT_EQ(utf8ToWide(std::string("\xED\xA0\x80")), L"\u00ed\u00a0\u20ac");
    EXPECT_EQ(utf8ToWide(std::string("\xE2\x82")), L"\u00e2\u201a");
    EXPECT_EQ(utf8ToWide(std::string("\xE9")), L"\u00e9");  // the fallback is Windows-1252
    EXPECT_EQ(utf8ToWide(std::string("\x80\x99\x81")), L"\u20ac\u2122\u0081");
    EXPECT_EQ(utf8ToWide(std::string("ab\0cd", 5)), L"ab");  // decoding stops at a zero byte
    EXPECT_EQ(utf8ToWide(std::string()), L"");
    EXPECT_EQ(wideToUtf8(std::wstring(1, static_cast<wchar_t>(0xD800))), "\xEF\xBF\xBD");
}

TEST(Text, EscapeIsStableAndLeavesQuotes) {
    const struct {
        const wchar_t* in;
        bool unescapeFirst;
        const wchar_t* out;
    } cases[] = {{L"a<b", true, L"a&lt;b"},        {L"a&lt;b", true, L"a&lt;b"},
                 {L"a&b", true, L"a&amp;b"},       {L"a&amp;b", true, L"a&amp;b"},
                 {L"&amp;lt;", true, L"&amp;lt;"}, {L"\"'", true, L"\"'"},
                 {L"x>y", false, L"x&gt;y"},       {L"&lt;", false, L"&amp;lt;"}};
    for (const auto& c : cases) EXPECT_EQ(escapeXml(c.in, c.unescapeFirst), c.out) << c.in;
    EXPECT_EQ(unescapeXml(L"&lt;&gt;&amp;&amp;lt;"), L"<>&&lt;");
}

TEST(Text, ControlCharactersAndFileNames) {
    std::wstring name = L"\tBrick\nWall\u0085\u007f!";
    stripControlChars(name);
    EXPECT_EQ(name, L"BrickWall!");
    EXPECT_TRUE(isControlChar(L'\0') && !isControlChar(L'\u00a0'));
    for (const wchar_t* path :
         {L"C:\\maps\\wood.jpg", L"/home/u/maps/wood.jpg", L"D:wood.jpg", L"wood.jpg"})
        EXPECT_EQ(fileNameOf(path), L"wood.jpg") << path;
    EXPECT_EQ(fileNameOf(L"dir/"), L"");
}

TEST(Text, UuidsAreFreshLowercaseAndBraceless) {
    const std::wregex form(L"[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}");
    std::set<std::wstring> seen;
    for (int i = 0; i < 100; ++i) {
        const std::wstring id = newUuidText();
        EXPECT_TRUE(std::regex_match(id, form)) << wideToUtf8(id);
        seen.insert(id);
    }
    EXPECT_EQ(seen.size(), 100u);
}

TEST(Text, CaseIsFoldedForAsciiOnly) {
    EXPECT_TRUE(equalsIgnoreCase(L"Brick", L"bRICK") && !equalsIgnoreCase(L"\u00c9", L"\u00e9"));
    EXPECT_LT(compareIgnoreCase(L"abc", L"ABD"), 0);
    EXPECT_LT(compareIgnoreCase(L"ab", L"ABC"), 0);
    EXPECT_TRUE(isAsciiDigit(L'7') && !isAsciiDigit(L'\u0663'));  // an Arabic-Indic digit is none
}

TEST(NumberFormat, IntegersAndTheProcessLocale) {
    EXPECT_EQ(numberText(int64_t(-42)), L"-42");
    EXPECT_EQ(numberText(int64_t(4000000000)), L"4000000000");
    // A comma-decimal locale, where one is installed, must not change the text.
    const char* candidates[] = {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE", "C.UTF-8"};
    std::string previous = std::setlocale(LC_ALL, nullptr);
    for (const char* name : candidates) {
        if (!std::setlocale(LC_ALL, name)) continue;
        EXPECT_EQ(numberText(1.5), L"1.5") << name;
        EXPECT_EQ(numberText(int64_t(1234567)), L"1234567") << name;
    }
    std::setlocale(LC_ALL, previous.c_str());
}

// The edge values first, then random bit patterns, against a classic-locale stream.
TEST(NumberFormat, AgreesWithAClassicLocaleStream) {
    const std::pair<float, const wchar_t*> edges[] = {
        {1234567.0f, L"1.23457e+06"}, {0.0001f, L"0.0001"}, {0.00001f, L"1e-05"}, {-0.0f, L"-0"}};
    for (const auto& [value, text] : edges) EXPECT_EQ(numberText(double(value)), text) << text;
    EXPECT_EQ(numberText(100000.0), L"100000");
    uint32_t state = 12345;
    for (int i = 0; i < 20000; ++i) {
        state = state * 1664525u + 1013904223u;
        float f;
        std::memcpy(&f, &state, sizeof f);
        std::wostringstream stream;
        stream.imbue(std::locale::classic());
        stream << f;
        ASSERT_EQ(numberText(double(f)), stream.str()) << "bits " << state;
    }
}
