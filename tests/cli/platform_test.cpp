// The platform layer's file replacement, on this system.
#include "platform/platform.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace quillon_platform {
namespace {

namespace fs = std::filesystem;

class ReplaceFile : public ::testing::Test {
protected:
    void SetUp() override {
        dir_ = fs::temp_directory_path() /
               ("quillon-platform-" +
                std::to_string(::testing::UnitTest::GetInstance()->random_seed()) + "-" +
                ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(dir_);
        fs::create_directories(dir_);
    }
    void TearDown() override { fs::remove_all(dir_); }

    std::string path(const char* name) const { return (dir_ / name).string(); }
    std::string read(const std::string& p) const {
        std::ifstream in(p, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }
    size_t entries() const {
        return static_cast<size_t>(std::distance(fs::directory_iterator(dir_), {}));
    }

    fs::path dir_;
};

TEST_F(ReplaceFile, WritesNewAndReplacesOldLeavingNoTemporary) {
    std::string error;
    ASSERT_TRUE(replaceFile(path("a.xml"), "first", error)) << error;
    ASSERT_TRUE(replaceFile(path("a.xml"), "second", error)) << error;
    EXPECT_EQ(read(path("a.xml")), "second");
    EXPECT_EQ(entries(), 1u);
    EXPECT_EQ(inspectPath(path("a.xml")).size, 6u);
    EXPECT_EQ(inspectPath(path("a.xml")).kind, PathKind::Regular);
}

TEST_F(ReplaceFile, RefusesAFolderAndAMissingFolder) {
    std::string error;
    EXPECT_FALSE(replaceFile(dir_.string(), "x", error));
    EXPECT_EQ(error, "not a regular file; refusing to replace it");
    EXPECT_FALSE(replaceFile(path("missing/a.xml"), "x", error));
    EXPECT_NE(error, "");
    EXPECT_EQ(entries(), 0u);
}

#ifndef _WIN32
TEST_F(ReplaceFile, KeepsTheTargetsPermissionBits) {
    std::string error;
    ASSERT_TRUE(replaceFile(path("p.xml"), "old", error));
    ASSERT_EQ(chmod(path("p.xml").c_str(), 0640), 0);
    ASSERT_TRUE(replaceFile(path("p.xml"), "new", error)) << error;
    struct stat st {};
    ASSERT_EQ(stat(path("p.xml").c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 07777, 0640u);
}
#endif

TEST_F(ReplaceFile, UniqueFilesNeverCollide) {
    std::string error;
    const auto a = createUniqueFile(dir_.string(), ".part-", error);
    const auto b = createUniqueFile(dir_.string(), ".part-", error);
    ASSERT_TRUE(a && b) << error;
    EXPECT_NE(*a, *b);
    EXPECT_EQ(entries(), 2u);
}

}  // namespace
}  // namespace quillon_platform
