// The options at their defaults: the whole document equals the bundled expected document, which
// was written from the options tables; and a major 0 stream, which holds only the rows every
// major has, written back as the newest layout, carries the table default in every later row.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "convert/conversions.h"
#include "options/all_options.h"
#include "options_stream_builder.h"

using namespace CorvaneCore;
using namespace options_test;

namespace {

std::vector<uint8_t> writtenAfterMajorZero() {
    AllOptions options;
    EXPECT_TRUE(readAll(options, buildOptions(OptionsStream(0))));
    QuickArchive out(1);
    EXPECT_TRUE(options.serialize(out));
    std::vector<uint8_t> bytes(static_cast<size_t>(out.writePos()));
    out.setReadPos(0);
    out.readBytes(bytes.data(), bytes.size());
    return bytes;
}

std::string bundled(const std::string& file) {
    std::ifstream in(std::string(QUILLON_SAMPLES_DIR) + "/" + file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

}  // namespace

TEST(OptionsDefaults, DefaultDocumentIsTheBundledExpectedDocument) {
    const std::string expected = bundled("default_options.xml");
    ASSERT_FALSE(expected.empty());
    AllOptions options;
    EXPECT_EQ(optionsDocument(options), expected);
}

TEST(OptionsDefaults, RowsAfterMajorZeroCarryTheirTableDefaults) {
    const std::vector<uint8_t> written = writtenAfterMajorZero();

    // Rows 9 to 19 as stored (each its row number), then rows 20 to 23 at their defaults, then
    // row 24 as stored again.
    StreamBuilder middle;
    middle.rows("iiiiiiiiiii", 9).ints({1, 1, 0, 0}).rows("f", 24);
    EXPECT_NE(std::search(written.begin(), written.end(), middle.data.begin(), middle.data.end()),
              written.end());
    StreamBuilder zdepth;  // rows 32 to 34, then the channel count
    zdepth.floats({0.0f, 1000.0f}).i32(1).u32(4).ints({126, 125, 1, 2});
    EXPECT_NE(std::search(written.begin(), written.end(), zdepth.data.begin(), zdepth.data.end()),
              written.end());

    // Rows 46 to 72 end the stream.
    StreamBuilder tail;
    tail.text("p45").color(0.5f, 0.5f, 0.5f).ints({1, 0, 0, 0, 0}).f32(30.0f);  // 45 to 52
    tail.color(0, 0, 0).color(0, 0, 0).floats({1, 1, 1, 1}).ints({0, 0});       // 53 to 60
    tail.boolean(false).boolean(false).i32(0).floats({0, 0}).u32(0x400CCCCD);   // 61 to 66
    tail.ints({1, 1, 0}).text("").ints({0, 0});                                 // 67 to 72
    ASSERT_GE(written.size(), tail.size());
    EXPECT_EQ(std::vector<uint8_t>(written.end() - long(tail.size()), written.end()), tail.data);
}
