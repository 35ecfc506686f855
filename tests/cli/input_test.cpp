// Decoding record inputs and reading the command line.
#include <gtest/gtest.h>

#include "arguments.h"
#include "json_text.h"
#include "manifest_line.h"
#include "record_input.h"

namespace quillon_cli {
namespace {

std::string bytesOf(std::initializer_list<int> values) {
    std::string out;
    for (int v : values) out.push_back(static_cast<char>(v));
    return out;
}

TEST(JsonByteArray, ReadsIntegersAndKeepsTheirLowByte) {
    std::string error;
    EXPECT_EQ(parseJsonByteArray(" [ 0 ,1,\n255 ]\n", error), bytesOf({0, 1, 255}));
    EXPECT_EQ(parseJsonByteArray("[]", error), std::string());
    // 300 and 2^64 - 1: the module keeps the low 8 bits as well.
    EXPECT_EQ(parseJsonByteArray("[300, 18446744073709551615]", error), bytesOf({44, 255}));
}

TEST(JsonByteArray, EachKindOfWrongValueHasItsOwnMessage) {
    const std::pair<const char*, const char*> cases[] = {
        {"[18446744073709551616]", "number at byte 1 is beyond 18446744073709551615"},
        {"[99999999999999999999999]", "number at byte 1 is beyond 18446744073709551615"},
        {"[1, -1]", "negative number at byte 4"},
        {"[1.0]", "not an integer (a fraction or exponent) at byte 1"},
        {"[2E1]", "not an integer (a fraction or exponent) at byte 1"},
        {"\xEF\xBB\xBF[1]", "starts with a byte order mark; save the JSON without one"},
        {"{\"bytes\": [1]}", "expected a JSON array of integers, found an object"},
        {"\"text\"", "expected a JSON array of integers, found a string"},
        {"", "expected a JSON array of integers, found nothing"},
        {"[[1]]", "expected an integer at byte 1"},
        {"[true]", "a boolean at byte 1 where an integer belongs"},
        {"[null]", "null at byte 1 where an integer belongs"},
        {"[1,]", "expected an integer at byte 3"},
        {"[1 2]", "expected \",\" or \"]\" at byte 3"},
        {"[1] x", "unexpected text after the array at byte 4"},
    };
    for (const auto& [text, message] : cases) {
        std::string error;
        EXPECT_FALSE(parseJsonByteArray(text, error)) << text;
        EXPECT_NE(error.find(message), std::string::npos) << text << " gave: " << error;
    }
}

TEST(RecordForm, BinaryRecordsAreNeverTakenForJson) {
    EXPECT_FALSE(looksLikeJson(bytesOf({0, 0, 2, 0, '[', 1})));
    EXPECT_FALSE(looksLikeJson(bytesOf({1, 0, 5, 0})));
    for (const char* json : {"[1]", "  [1]", "\n[", "{}", "\xEF\xBB\xBF[1]", "12", "\"a\""}) {
        EXPECT_TRUE(looksLikeJson(json)) << json;
    }
    std::string error;
    EXPECT_EQ(decodeRecord("[65]", InputForm::Raw, error), "[65]");
    EXPECT_EQ(decodeRecord("[65]", InputForm::Auto, error), "A");
    EXPECT_FALSE(decodeRecord(bytesOf({0, 0}), InputForm::Json, error));
}

TEST(Arguments, BothOptionFormsAnywhereAndDashAsAFile) {
    Arguments a;
    std::string error;
    ASSERT_TRUE(parseArguments(
        {"light", "x.json", "--type=2", "-o", "-", "--input", "json", "-", "--", "--odd"}, a,
        error))
        << error;
    EXPECT_EQ(a.command, "light");
    EXPECT_EQ(a.files, (std::vector<std::string>{"x.json", "-", "--odd"}));
    EXPECT_EQ(a.type, "2");
    EXPECT_EQ(a.output, "-");
    EXPECT_EQ(a.form, InputForm::Json);
}

TEST(Arguments, MalformedLinesAreRefusedWithAReason) {
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"light", "--type"}, "--type needs a value"},
        {{"light", "--type="}, "--type needs a value"},
        {{"light", "--frob"}, "unknown option --frob"},
        {{"light", "--frob=1"}, "unknown option --frob"},
        {{"light", "--input=xml"}, "--input takes raw or json"},
        {{"inspect", "--format", "yaml"}, "--format takes text or json"},
    };
    for (const auto& [args, message] : cases) {
        Arguments a;
        std::string error;
        EXPECT_FALSE(parseArguments(args, a, error)) << message;
        EXPECT_EQ(error, message);
    }
}

TEST(Arguments, BoundedIntegersRejectSignsBlanksAndOverflow) {
    EXPECT_EQ(parseBoundedInteger("7", 1, 256), 7);
    EXPECT_EQ(parseBoundedInteger("-3", -5, 5), -3);
    for (const char* bad : {"", "-", "0", "257", "+2", " 2", "2 ", "2x", "99999999999999999999"}) {
        EXPECT_FALSE(parseBoundedInteger(bad, 1, 256)) << bad;
    }
}

TEST(ManifestLine, ReadsFileKindTypeAndIgnoresOtherKeys) {
    ManifestLine line;
    std::string error;
    ASSERT_TRUE(parseManifestLine(
        R"( {"note": "x", "file": "a\\caf\u00e9.json", "kind": "light", "type": 4, "n": null} )",
        line, error))
        << error;
    EXPECT_EQ(line.file, "a\\caf\xC3\xA9.json");
    EXPECT_EQ(line.kind, "light");
    EXPECT_EQ(line.type, 4);
    ManifestLine scene;
    ASSERT_TRUE(parseManifestLine(R"({"file": "s.bin", "kind": "scene"})", scene, error));
    EXPECT_FALSE(scene.type);
}

TEST(ManifestLine, RefusesWhatIsNoSuchObject) {
    for (const char* bad :
         {R"({"file": "a.json"})", R"({"file": "a", "kind": "light", "type": "2"})",
          R"({"file": "a", "kind": "light", "type": 4294967296})", R"({"file": 1, "kind": "x"})",
          R"({"file": "a", "kind": "light"} x)", R"(["a", "light"])", R"({"file": "a)"}) {
        ManifestLine line;
        std::string error;
        EXPECT_FALSE(parseManifestLine(bad, line, error)) << bad;
        EXPECT_FALSE(error.empty());
    }
}

TEST(JsonText, EscapesQuotesBackslashesAndControlCharacters) {
    EXPECT_EQ(jsonString("a\"b\\c\n\x01\xC3\xA9"), "\"a\\\"b\\\\c\\u000a\\u0001\xC3\xA9\"");
}

}  // namespace
}  // namespace quillon_cli
