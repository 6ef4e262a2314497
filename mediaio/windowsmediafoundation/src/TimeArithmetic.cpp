#include "TimeArithmetic.h"

namespace windowsmediafoundation {
namespace {

// Products that leave the 64-bit range wrap as two's complement instead of
// being undefined; real durations and rates stay far below that range.
std::int64_t WrappingMultiply(std::int64_t a, std::int64_t b) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) * static_cast<std::uint64_t>(b));
}

}  // namespace

std::int64_t TimeToFrames(std::int64_t time, std::uint32_t rate, std::uint32_t divisor) {
  if (divisor == 0) return kInvalidTime;
  return WrappingMultiply(time, rate) / static_cast<std::int64_t>(divisor) / kTimeUnitsPerSecond;
}

std::int64_t FramesPerRatio(std::int64_t count, std::uint32_t numerator, std::uint32_t denominator) {
  if (denominator == 0 || numerator == 0) return kInvalidTime;
  const std::int64_t scaled = WrappingMultiply(WrappingMultiply(count, denominator), kTimeUnitsPerSecond);
  return scaled / static_cast<std::int64_t>(numerator);
}

}  // namespace windowsmediafoundation
