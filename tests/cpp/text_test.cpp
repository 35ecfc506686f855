#include "xml/text.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstring>
#include <limits>
#include <locale>
#include <regex>
#include <set>
#include <sstream>
#include <vector>

#include "xml/number_format.h"

using namespace CorvaneCore;

TEST(Text, Utf8RoundTripStrictnessAndAnsiFallback) {
    const std::u16string text = u"a\u00e9\u20ac\U0001F600";
    EXPECT_EQ(wideToUtf8(text), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(utf8ToWide(wideToUtf8(text)), text);
    // Overlong, surrogate and truncated sequences are not UTF-8: the ANSI reading is used.
    EXPECT_EQ(utf8ToWide(std::string("\xC0\xAF")), u"\u00c0\u00af");
    EXPECT_EQ(utf8ToWide(std::string("\xED\xA0\x80")), u"\u00ed\u00a0\u20ac");
    EXPECT_EQ(utf8ToWide(std::string("\xE2\x82")), u"\u00e2\u201a");
    EXPECT_EQ(utf8ToWide(std::string("\xE9")), u"\u00e9");  // the fallback is Windows-1252
    EXPECT_EQ(utf8ToWide(std::string("\x80\x99\x81")), u"\u20ac\u2122\u0081");
    EXPECT_EQ(utf8ToWide(std::string("ab\0cd", 5)), u"ab");  // decoding stops at a zero byte
    EXPECT_EQ(utf8ToWide(std::string()), u"");
    EXPECT_EQ(wideToUtf8(std::u16string(1, static_cast<char16_t>(0xD800))), "\xEF\xBF\xBD");
    // Surrogates pair up only high then low; any other one stands alone and becomes U+FFFD.
    const char16_t odd[] = {0xDC00, 0xD800, u'x', 0xD83D, 0xDE00, 0xD83D};
    EXPECT_EQ(wideToUtf8(std::u16string(odd, 6)),
              "\xEF\xBF\xBD\xEF\xBF\xBDx\xF0\x9F\x98\x80\xEF\xBF\xBD");
    EXPECT_EQ(utf8ToWide(std::string("\xF4\x8F\xBF\xBF")), u"\U0010FFFF");  // the last pair
}

TEST(Text, EscapeIsStableAndLeavesQuotes) {
    const struct {
        const char* in;
        bool unescapeFirst;
        const char* out;
    } cases[] = {{"a<b", true, "a&lt;b"},        {"a&lt;b", true, "a&lt;b"},
                 {"a&b", true, "a&amp;b"},       {"a&amp;b", true, "a&amp;b"},
                 {"&amp;lt;", true, "&amp;lt;"}, {"\"'", true, "\"'"},
                 {"x>y", false, "x&gt;y"},       {"&lt;", false, "&amp;lt;"}};
    for (const auto& c : cases) EXPECT_EQ(escapeXml(c.in, c.unescapeFirst), c.out) << c.in;
    EXPECT_EQ(unescapeXml("&lt;&gt;&amp;&amp;lt;"), "<>&&lt;");
}

TEST(Text, ControlCharactersAndFileNames) {
    std::u16string name = u"\tBrick\nWall\u0085\u007f!";
    stripControlChars(name);
    EXPECT_EQ(name, u"BrickWall!");
    EXPECT_TRUE(isControlChar(u'\0') && !isControlChar(u'\u00a0'));
    for (const char16_t* path :
         {u"C:\\maps\\wood.jpg", u"/home/u/maps/wood.jpg", u"D:wood.jpg", u"wood.jpg"})
        EXPECT_EQ(fileNameOf(path), u"wood.jpg") << path;
    EXPECT_EQ(fileNameOf(u"dir/"), u"");
}

TEST(Text, UuidsAreFreshLowercaseAndBraceless) {
    const std::regex form("[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}");
    std::set<std::u16string> seen;
    for (int i = 0; i < 100; ++i) {
        const std::u16string id = newUuidText();
        EXPECT_TRUE(std::regex_match(wideToUtf8(id), form)) << wideToUtf8(id);
        seen.insert(id);
    }
    EXPECT_EQ(seen.size(), 100u);
}

// Names compare as 16-bit units: letters beyond ASCII keep their case and order by unit value,
// and a character above U+FFFF (a surrogate pair) sorts below U+E000..U+FFFF.
TEST(Text, CaseInsensitiveOrderIsTheOrderOfUnits) {
    EXPECT_GT(compareIgnoreCase(u"\u00e9mile", u"\u00c9MILE"), 0);  // 0xE9 after 0xC9
    EXPECT_LT(compareIgnoreCase(u"\U0001D400", u"\uFF21"), 0);      // 0xD835 before 0xFF21
    EXPECT_LT(compareIgnoreCase(u"a\U0001F600", u"A\uE000"), 0);
    EXPECT_EQ(compareIgnoreCase(u"x\U0001F600Y", u"X\U0001F600y"), 0);
    std::set<std::u16string, LessIgnoreCase> names{u"\uFF21", u"\U0001D400", u"\u00e9", u"\u00c9",
                                                   u"E"};
    EXPECT_EQ(std::vector<std::u16string>(names.begin(), names.end()),
              (std::vector<std::u16string>{u"E", u"\u00c9", u"\u00e9", u"\U0001D400", u"\uFF21"}));
}

TEST(Text, CaseIsFoldedForAsciiOnly) {
    EXPECT_TRUE(equalsIgnoreCase(u"Brick", u"bRICK") && !equalsIgnoreCase(u"\u00c9", u"\u00e9"));
    EXPECT_LT(compareIgnoreCase(u"abc", u"ABD"), 0);
    EXPECT_LT(compareIgnoreCase(u"ab", u"ABC"), 0);
    EXPECT_TRUE(isAsciiDigit(u'7') && !isAsciiDigit(u'\u0663'));  // an Arabic-Indic digit is none
}

TEST(NumberFormat, IntegersAndTheProcessLocale) {
    EXPECT_EQ(numberText(int64_t(-42)), u"-42");
    EXPECT_EQ(numberText(int64_t(4000000000)), u"4000000000");
    // A comma-decimal locale, where one is installed, must not change the text.
    const char* candidates[] = {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE", "C.UTF-8"};
    std::string previous = std::setlocale(LC_ALL, nullptr);
    for (const char* name : candidates) {
        if (!std::setlocale(LC_ALL, name)) continue;
        EXPECT_EQ(numberText(1.5), u"1.5") << name;
        EXPECT_EQ(numberText(int64_t(1234567)), u"1234567") << name;
    }
    std::setlocale(LC_ALL, previous.c_str());
}

// The edge values first, then random bit patterns, against a classic-locale stream.
TEST(NumberFormat, AgreesWithAClassicLocaleStream) {
    const std::pair<float, const char16_t*> edges[] = {
        {1234567.0f, u"1.23457e+06"}, {0.0001f, u"0.0001"}, {0.00001f, u"1e-05"}, {-0.0f, u"-0"}};
    for (const auto& [value, text] : edges) EXPECT_EQ(numberText(double(value)), text) << text;
    EXPECT_EQ(numberText(100000.0), u"100000");
    // Infinities and NaNs read as the GNU C library prints them, on every platform, so that one
    // record gives one document everywhere (other C libraries drop a NaN's sign).
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(numberText(nan), u"nan");
    EXPECT_EQ(numberText(-nan), u"-nan");
    EXPECT_EQ(numberText(inf), u"inf");
    EXPECT_EQ(numberText(-inf), u"-inf");
    uint32_t state = 12345;
    for (int i = 0; i < 20000; ++i) {
        state = state * 1664525u + 1013904223u;
        float f;
        std::memcpy(&f, &state, sizeof f);
        if (std::isnan(f)) continue;  // the text above, whatever this platform's stream says
        std::ostringstream stream;
        stream.imbue(std::locale::classic());
        stream << f;
        ASSERT_EQ(wideToUtf8(numberText(double(f))), stream.str()) << "bits " << state;
    }
}
