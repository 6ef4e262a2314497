#include "TimeArithmetic.h"

#include <gtest/gtest.h>

namespace windowsmediafoundation {
namespace {

TEST(TimeToFrames, TruncatesInsteadOfRounding) {
  EXPECT_EQ(TimeToFrames(15'000'000, 44'100, 1), 66'150);
  EXPECT_EQ(TimeToFrames(9'999'999, 1, 1), 0);
  EXPECT_EQ(TimeToFrames(10'000'000, 1, 1), 1);
  // 0.999... of a frame at 48 kHz.
  EXPECT_EQ(TimeToFrames(208, 48'000, 1), 0);
  EXPECT_EQ(TimeToFrames(209, 48'000, 1), 1);
}

TEST(TimeToFrames, NegativeTimesTruncateTowardZero) {
  EXPECT_EQ(TimeToFrames(-15'000'000, 44'100, 1), -66'150);
  EXPECT_EQ(TimeToFrames(-9'999'999, 1, 1), 0);
}

TEST(TimeToFrames, DivisorZeroGivesTheInvalidTime) {
  EXPECT_EQ(TimeToFrames(15'000'000, 44'100, 0), INT64_MIN);
  EXPECT_EQ(kInvalidTime, INT64_MIN);
}

TEST(TimeToFrames, HoursOfAudioAtHighRatesStayExact) {
  // Ten hours at 192 kHz.
  EXPECT_EQ(TimeToFrames(36'000LL * kTimeUnitsPerSecond, 192'000, 1), 36'000LL * 192'000);
}

TEST(FramesPerRatio, OneFrameAtCommonRates) {
  EXPECT_EQ(FramesPerRatio(1, 25, 1), 400'000);
  EXPECT_EQ(FramesPerRatio(1, 30'000, 1'001), 333'666);  // 333,666.67 truncated
  EXPECT_EQ(FramesPerRatio(3, 30'000, 1'001), 1'001'000);
  EXPECT_EQ(FramesPerRatio(-1, 3, 1), -3'333'333);
}

TEST(FramesPerRatio, ZeroInTheRatioGivesTheInvalidTime) {
  EXPECT_EQ(FramesPerRatio(1, 25, 0), INT64_MIN);
  EXPECT_EQ(FramesPerRatio(1, 0, 1), INT64_MIN);
}

}  // namespace
}  // namespace windowsmediafoundation
