#include "TimeArithmetic.h"

#include <gtest/gtest.h>

namespace windowsmediafoundation {
namespace {

TEST(TimeArithmetic, TruncatesTowardZeroAndRefusesAZeroDivisor) {
  const struct {
    std::int64_t time;
    std::uint32_t rate;
    std::uint32_t divisor;
    std::int64_t frames;
  } kTimeToFrames[] = {
      {15'000'000, 44'100, 1, 66'150}, {-15'000'000, 44'100, 1, -66'150}, {15'000'000, 44'100, 3, 22'050},
      // Just under and at one frame at 48 kHz; toward zero for negative times.
      {208, 48'000, 1, 0}, {209, 48'000, 1, 1}, {-9'999'999, 1, 1, 0}, {15'000'000, 44'100, 0, INT64_MIN},
      // Ten hours at 192 kHz.
      {36'000LL * kTimeUnitsPerSecond, 192'000, 1, 36'000LL * 192'000},
  };
  for (const auto& c : kTimeToFrames) EXPECT_EQ(TimeToFrames(c.time, c.rate, c.divisor), c.frames) << c.time;

  const struct {
    std::int64_t count;
    std::uint32_t numerator;
    std::uint32_t denominator;
    std::int64_t time;
  } kFramesPerRatio[] = {
      // 333,666.67 truncated
      {1, 25, 1, 400'000}, {1, 30'000, 1'001, 333'666}, {3, 30'000, 1'001, 1'001'000}, {-1, 3, 1, -3'333'333},
      {1, 25, 0, INT64_MIN}, {1, 0, 1, INT64_MIN},
  };
  for (const auto& c : kFramesPerRatio) {
    EXPECT_EQ(FramesPerRatio(c.count, c.numerator, c.denominator), c.time) << c.count << "/" << c.numerator;
  }
}

}  // namespace
}  // namespace windowsmediafoundation
