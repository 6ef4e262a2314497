#include "TimeArithmetic.h"

#include <gtest/gtest.h>

#include <tuple>

namespace windowsmediafoundation {
namespace {

TEST(TimeArithmetic, TruncatesTowardZeroAndRefusesAZeroDivisor) {
  using Row = std::tuple<std::int64_t, std::uint32_t, std::uint32_t, std::int64_t>;
  // Time, rate and divisor: frames.
  const Row kTimeToFrames[] = {
      {15'000'000, 44'100, 1, 66'150}, {-15'000'000, 44'100, 1, -66'150}, {15'000'000, 44'100, 3, 22'050},
      // Just under and at one frame at 48 kHz; toward zero for negative times.
      {208, 48'000, 1, 0}, {209, 48'000, 1, 1}, {-9'999'999, 1, 1, 0}, {15'000'000, 44'100, 0, INT64_MIN},
      // Ten hours at 192 kHz.
      {36'000LL * kTimeUnitsPerSecond, 192'000, 1, 36'000LL * 192'000},
  };
  for (const auto& [time, rate, divisor, frames] : kTimeToFrames) EXPECT_EQ(TimeToFrames(time, rate, divisor), frames);

  // Count, numerator and denominator: time.
  const Row kFramesPerRatio[] = {
      // 333,666.67 truncated
      {1, 25, 1, 400'000}, {1, 30'000, 1'001, 333'666}, {3, 30'000, 1'001, 1'001'000}, {-1, 3, 1, -3'333'333},
      {1, 25, 0, INT64_MIN}, {1, 0, 1, INT64_MIN},
  };
  for (const auto& [count, num, den, time] : kFramesPerRatio) EXPECT_EQ(FramesPerRatio(count, num, den), time);
}

}  // namespace
}  // namespace windowsmediafoundation
