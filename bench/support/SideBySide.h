// Two candidates that work in slices, timed side by side: in a round both
// start, take turns one slice at a time until both have finished, and finish;
// each one's time is summed over the round. The one to go first alternates
// from turn to turn and from round to round.
// Turns of a few milliseconds let both see the same machine, where a guest's
// clock speed and neighbours change from one second to the next.
#pragma once

#include <functional>
#include <string>

#include "Measure.h"

namespace bench {

struct SlicedCandidate {
  std::function<void()> start;
  std::function<bool()> slice;  // one slice of work; false once finished or failed
  std::function<void()> finish;
};

struct SideBySideResult {
  double firstSeconds = 0;   // median over the rounds
  double secondSeconds = 0;
  double ratio = 0;          // median of the rounds' first / second
  MedianRange ratioRange;    // where that median lies, with 95 % confidence
};

// A first round warms the files and the code and is not counted.
SideBySideResult MeasureSideBySide(const SlicedCandidate& first, const SlicedCandidate& second, int rounds);

// The ratio's 95 % range as "low-high", three decimals each.
std::string RatioRangeText(const SideBySideResult& result);

}  // namespace bench
