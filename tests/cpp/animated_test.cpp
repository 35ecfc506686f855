#include "params/animated.h"

#include <gtest/gtest.h>

#include <cmath>

#include "record_builder.h"

using namespace CorvaneCore;
using Bytes = RecordBuilder;

namespace {

// Stored curve header: version word, key count, key size.
Bytes curveHeader(uint32_t count, uint32_t keySize = 8) {
    Bytes b;
    b.u32(0x10000).u32(count).u32(keySize);
    return b;
}

}  // namespace

TEST(AnimatedTransform, StartsWithIdentityAtZeroHoldsLastKeyAndHasNoTimeOutside) {
    AnimatedTransform curve;
    ASSERT_EQ(curve.keyCount(), 1);
    EXPECT_EQ(curve.keyTime(0), 0.0);
    EXPECT_EQ(curve.getValue(0.0), Transform::identity());
    curve.setValue(countingTransform(1), 0.0);
    EXPECT_EQ(curve.keyCount(), 1);
    EXPECT_EQ(curve.getValue(7.5), countingTransform(1));
    curve.setValue(Transform(), 2.0);
    EXPECT_EQ(curve.keyTime(1), 2.0);
    EXPECT_TRUE(std::isnan(curve.keyTime(-1)));  // outside the range
    EXPECT_TRUE(std::isnan(curve.keyTime(2)));
}

TEST(AnimatedTransform, BlendsElementByElementBetweenKeys) {
    AnimatedTransform curve;
    curve.setValue(countingTransform(0), 0.0);
    curve.setValue(countingTransform(10), 1.0);
    // Every number lies 10 above its partner, so the blends are exact in float.
    EXPECT_EQ(curve.getValue(0.25), countingTransform(2.5f));
    EXPECT_EQ(curve.getValue(3.0), countingTransform(10));
}

TEST(AnimatedTransform, TimesWithinToleranceAreOneKey) {
    AnimatedTransform curve;
    curve.setValue(countingTransform(1), 0.5);
    curve.setValue(countingTransform(2), 0.5 + 1e-13);
    ASSERT_EQ(curve.keyCount(), 2);
    EXPECT_EQ(curve.keyTime(1), 0.5);
    EXPECT_EQ(curve.getValue(0.5), countingTransform(2));
    curve.setValue(countingTransform(3), 0.5 - 1e-13);
    EXPECT_EQ(curve.keyCount(), 2);
    EXPECT_EQ(curve.getValue(0.5), countingTransform(3));
    curve.setValue(countingTransform(4), 0.5 + 1e-9);
    EXPECT_EQ(curve.keyCount(), 3);
}

TEST(AnimatedTransform, ReadDropsTheDefaultKeyAndMergesStoredDuplicates) {
    Bytes b = curveHeader(3);
    b.f64(1.0).transform(countingTransform(1));
    b.f64(2.0).transform(countingTransform(2));
    b.f64(2.0 + 1e-13).transform(countingTransform(3));
    AnimatedTransform curve;
    ASSERT_TRUE(readAll(curve, b));
    ASSERT_EQ(curve.keyCount(), 2);
    EXPECT_EQ(curve.keyTime(0), 1.0);
    EXPECT_EQ(curve.getValue(2.0), countingTransform(3));
}

TEST(AnimatedTransform, RefusesOtherKeySizesAndVersions) {
    Bytes b = curveHeader(1, 4);
    b.f64(1.0).transform(countingTransform(1));
    AnimatedTransform curve;
    curve.setValue(countingTransform(5), 3.0);
    EXPECT_FALSE(deserializeFrom(curve, b));
    EXPECT_EQ(curve.keyCount(), 0);

    Bytes minor;
    minor.u32(0x10001).u32(0).u32(8);
    EXPECT_FALSE(deserializeFrom(curve, minor));
    EXPECT_EQ(curve.keyCount(), 1);  // reset ran before the test of the word
}

TEST(AnimatedTransform, ADeclaredCountBeyondTheDataStopsWhereTheDataEnds) {
    Bytes b = curveHeader(0xFFFFFFFFu);
    b.f64(1.0).transform(countingTransform(1));
    b.f64(2.0).transform(countingTransform(2));
    QuickArchive archive = b.archive();
    AnimatedTransform curve;
    ASSERT_TRUE(curve.deserialize(archive));
    EXPECT_GE(curve.keyCount(), 2);
    EXPECT_EQ(curve.getValue(1.0), countingTransform(1));
    // Whatever the unwritten tail of the block holds, no more keys than the block can carry,
    // and the last key, cut by the end, was read too.
    EXPECT_LE(curve.keyCount(), int(QuickArchive::kBlockSize / 56) + 1);
    EXPECT_EQ(archive.remaining(), 0u);
}

TEST(AnimatedCurves, AKeyCutByTheEndReadsItsMissingBytesAsZero) {
    Bytes key = curveHeader(1);
    key.f64(2.0).floats({1, 2, 3, 4, 5, 6});  // half a transform: the block ends here
    const size_t lead = QuickArchive::kBlockSize - key.size();
    Bytes record;
    record.raw(std::string(lead, '\0')).append(key);
    QuickArchive archive = record.archive();
    archive.setReadPos(lead);
    AnimatedTransform curve;
    ASSERT_TRUE(curve.deserialize(archive));
    ASSERT_EQ(curve.keyCount(), 1);
    Transform expected;
    expected.m.v[0] = Vector(1, 2, 3), expected.m.v[1] = Vector(4, 5, 6);
    expected.m.v[2] = Vector(0, 0, 0), expected.offset = Vector(0, 0, 0);
    EXPECT_EQ(curve.getValue(2.0), expected);
}

TEST(AnimatedCurves, RoundTripThroughTheArchive) {
    AnimatedTransform curve;
    curve.setValue(countingTransform(1), 0.0);
    curve.setValue(countingTransform(2), 0.75);
    curve.setValue(countingTransform(3), 4.0);
    QuickArchive archive(1);
    ASSERT_TRUE(curve.serialize(archive));
    EXPECT_EQ(archive.writePos(), 12u + 3 * 56u);
    AnimatedTransform back;
    ASSERT_TRUE(back.deserialize(archive));
    EXPECT_TRUE(back.sameKeys(curve));
    back.setValue(countingTransform(9), 0.75);
    EXPECT_FALSE(back.sameKeys(curve));

    AnimatedReal real(true);
    real.setValue(1.5f, 0.0);
    real.setValue(-2.0f, 3.0);
    QuickArchive realArchive(1);
    ASSERT_TRUE(real.serialize(realArchive));
    EXPECT_EQ(realArchive.writePos(), 13u + 2 * 12u);
    AnimatedReal realBack(false);
    ASSERT_TRUE(realBack.deserialize(realArchive));
    EXPECT_TRUE(realBack.sameKeys(real));
}

TEST(AnimatedReal, InterpolatesOnlyWhenAsked) {
    AnimatedReal smooth(true), stepped(false);
    for (AnimatedReal* curve : {&smooth, &stepped}) {
        curve->setValue(2.0f, 0.0);
        curve->setValue(6.0f, 1.0);
    }
    EXPECT_EQ(smooth.getValue(0.25), 3.0f);
    EXPECT_EQ(stepped.getValue(0.5), 2.0f);
    EXPECT_EQ(stepped.getValue(9.0), 6.0f);
}

TEST(AnimatedReal, ReadKeepsTheDefaultKeyAtZeroAndRefusesKeySizeFour) {
    Bytes b = curveHeader(2);
    b.boolean(true).f64(1.0).f32(10.0f).f64(2.0).f32(20.0f);
    AnimatedReal curve(false);
    ASSERT_TRUE(readAll(curve, b));
    EXPECT_TRUE(curve.interpolate());
    ASSERT_EQ(curve.keyCount(), 3);
    EXPECT_EQ(curve.keyTime(0), 0.0);
    EXPECT_EQ(curve.getValue(0.0), 0.0f);
    EXPECT_EQ(curve.getValue(1.5), 15.0f);

    // Key size 4 is refused, keeping the default key.
    b = curveHeader(1, 4);
    b.boolean(false).f64(1.0).f32(10.0f);
    curve.setValue(3.0f, 5.0);
    EXPECT_FALSE(deserializeFrom(curve, b));
    ASSERT_EQ(curve.keyCount(), 1);
    EXPECT_EQ(curve.getValue(5.0), 0.0f);  // the default key at zero
}

// The flag is stored as the other curves, a bool per key, and holds the earlier key's value.
TEST(AnimatedFlag, StepsBetweenKeysMergesCloseTimesAndRoundTrips) {
    AnimatedFlag flag;
    ASSERT_EQ(flag.keyCount(), 1);
    EXPECT_FALSE(flag.getValue(3.0));
    flag.setValue(true, 1.0);
    flag.setValue(false, 1.0 + 1e-13);  // the same key
    flag.setValue(true, 2.0);
    ASSERT_EQ(flag.keyCount(), 3);
    EXPECT_FALSE(flag.getValue(1.5));
    EXPECT_TRUE(flag.getValue(2.5));
    EXPECT_FALSE(flag.getValue(-1.0));  // ahead of the first key, its value

    Bytes stored = curveHeader(3);
    stored.f64(0.0).boolean(false).f64(1.0).boolean(false).f64(2.0).boolean(true);
    expectWritesBack(flag, stored);
}

TEST(AnimatedFlag, ReadKeepsTheDefaultKeyAndRefusesOtherVersionsAndKeySizes) {
    Bytes b = curveHeader(1);
    b.f64(4.0).boolean(true);
    AnimatedFlag flag;
    ASSERT_TRUE(readAll(flag, b));
    ASSERT_EQ(flag.keyCount(), 2);
    EXPECT_FALSE(flag.getValue(0.0));
    EXPECT_TRUE(flag.getValue(4.0));

    Bytes wrongSize = curveHeader(1, 4);
    wrongSize.f64(4.0).boolean(true);
    EXPECT_FALSE(deserializeFrom(flag, wrongSize));
    EXPECT_EQ(flag.keyCount(), 1);

    flag.setValue(true, 4.0);
    Bytes wrongWord;
    wrongWord.u32(0x20000).u32(0).u32(8);
    EXPECT_FALSE(deserializeFrom(flag, wrongWord));
    EXPECT_EQ(flag.keyCount(), 1);  // back to the default before the word is judged
}

TEST(AnimatedReal, ResetToLeavesOneKeyAtZeroWithTheGivenValue) {
    AnimatedReal curve(true);
    curve.setValue(5.0f, 2.0);
    curve.resetTo(40.0f);
    ASSERT_EQ(curve.keyCount(), 1);
    EXPECT_EQ(curve.keyTime(0), 0.0);
    EXPECT_EQ(curve.getValue(3.0), 40.0f);
    EXPECT_TRUE(curve.interpolate());
}
