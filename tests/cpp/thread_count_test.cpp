#include "util/thread_count.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

using namespace OmbraUtils;

TEST(ThreadCount, PlainCountsStandAndHugeOnesAreClamped) {
    EXPECT_EQ(threadCountFrom("1"), 1);
    EXPECT_EQ(threadCountFrom("12"), 12);
    EXPECT_EQ(threadCountFrom("0007"), 7);
    EXPECT_EQ(threadCountFrom("1024"), kMaxThreadCount);
    EXPECT_EQ(threadCountFrom("1025"), kMaxThreadCount);
    EXPECT_EQ(threadCountFrom("4294967297"), kMaxThreadCount);  // past 32 bits: no wrap to 1
    EXPECT_EQ(threadCountFrom(std::string(5000, '9').c_str()), kMaxThreadCount);
}

TEST(ThreadCount, AnythingElseFallsBackToTheHardwareCount) {
    const int hardware = hardwareThreadCount();
    ASSERT_GE(hardware, 1);
    ASSERT_LE(hardware, kMaxThreadCount);
    for (const char* text : {"", "0", "-4", "+4", " 4", "4 ", "4x", "x", "0x10", "1e3", "3.5"}) {
        EXPECT_EQ(threadCountFrom(text), hardware) << '"' << text << '"';
    }
    EXPECT_EQ(threadCountFrom(nullptr), hardware);  // not set at all
}

// tests/CMakeLists.txt runs this once more with OMBRA_NUM_THREADS set and the count it expects.
TEST(ThreadCount, TheLoadTimeCountFollowsTheEnvironmentOfTheProcess) {
    if (const char* expected = std::getenv("QUILLON_EXPECT_IDLE_THREADS")) {
        EXPECT_EQ(idleThreadCount(), std::atoi(expected));
    } else {
        EXPECT_EQ(idleThreadCount(), threadCountFrom(std::getenv("OMBRA_NUM_THREADS")));
    }
}
