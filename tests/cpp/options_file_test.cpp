#include "options/options_file.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "convert/conversions.h"
#include "options/all_options.h"
#include "xml/text.h"

using namespace CorvaneCore;

namespace {

std::string tempPath(const char* name) {
    return ::testing::TempDir() + name + std::to_string(::getpid());
}

long fileSize(const std::string& path) {
    std::ifstream in(path, std::ios::binary | std::ios::ate);
    return in ? static_cast<long>(in.tellg()) : -1;
}

}  // namespace

TEST(CorOptFile, WritesWholeBlocksAndReadsThemBack) {
    const std::string path = tempPath("roundtrip.coropt");
    AllOptions options;
    options.output.img_width = 1920;
    options.channels = {126, 125, 117};
    options.dr.folder = L"\\\\server\\assets";
    // Two long paths make the stream span a block edge.
    options.path(OptionPath::OmImageFile) = std::wstring(2000, L'q');
    options.path(OptionPath::ImageFile) = std::wstring(2000, L'r');
    options.camera.focal_length.setValue(85.0f, 0.0);
    CorOptFile file;
    ASSERT_TRUE(file.write(options, utf8ToWide(path)));
    const long size = fileSize(path);
    EXPECT_GT(size, 4096);
    EXPECT_EQ(size % 4096, 0);

    AllOptions back;
    ASSERT_TRUE(file.read(back, utf8ToWide(path)));
    EXPECT_EQ(optionsDocument(back), optionsDocument(options));  // every written field
    std::remove(path.c_str());
}

TEST(CorOptFile, RefusesEmptyAndMissingFiles) {
    const std::string path = tempPath("empty.coropt");
    { std::ofstream create(path, std::ios::binary); }
    AllOptions options;
    CorOptFile file;
    EXPECT_FALSE(file.read(options, utf8ToWide(path)));
    std::remove(path.c_str());
    EXPECT_FALSE(file.read(options, utf8ToWide(path)));
    EXPECT_FALSE(file.write(options, L"/nonexistent-dir/x.coropt"));
}
