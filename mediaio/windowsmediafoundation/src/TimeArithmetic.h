// Conversions between Media Foundation time (100-nanosecond units) and counts
// of sample frames or video frames.
#pragma once

#include <cstdint>

namespace windowsmediafoundation {

// Media Foundation presentation times count 100-nanosecond units.
constexpr std::int64_t kTimeUnitsPerSecond = 10'000'000;

// Returned when a conversion would divide by zero.
constexpr std::int64_t kInvalidTime = INT64_MIN;

// (time x rate / divisor) / kTimeUnitsPerSecond, both divisions truncating
// toward zero: 15,000,000 at 44,100 Hz is 66,150 frames. A divisor of 0 gives
// kInvalidTime.
std::int64_t TimeToFrames(std::int64_t time, std::uint32_t rate, std::uint32_t divisor);

// count x denominator x kTimeUnitsPerSecond / numerator, truncating: with a
// count of 1 and a frame rate, the duration of one frame. A zero denominator
// or numerator gives kInvalidTime.
std::int64_t FramesPerRatio(std::int64_t count, std::uint32_t numerator, std::uint32_t denominator);

}  // namespace windowsmediafoundation
