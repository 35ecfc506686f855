#include <gtest/gtest.h>
#include "archive/quick_archive.h"
TEST(Smoke, Builds) { CorvaneCore::QuickArchive a(1); EXPECT_EQ(a.blockCount(), 1u); }
