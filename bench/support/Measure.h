// Side-by-side timing: every candidate is timed in every round, the rounds
// interleave the candidates, and each candidate's median round is reported,
// so that a candidate and its reference see the same machine state.
#pragma once

#include <chrono>
#include <functional>
#include <vector>

namespace bench {

struct MeasureOptions {
  int rounds = 31;
  // A timed batch repeats a call until it lasts at least this long.
  std::chrono::microseconds minimumBatch{5000};
};

// The middle value (the upper of the two middle ones for an even count).
double Median(std::vector<double> values);

// A range that holds the true median with at least 95 % confidence, from the
// order statistics alone: no assumption about how the values spread. With
// fewer than six values no range is that sure, and the whole range is given.
struct MedianRange {
  double low = 0;
  double high = 0;
};
MedianRange MedianConfidenceRange(std::vector<double> values);

// Median nanoseconds per call of each of `calls`, in the same order.
std::vector<double> MedianNanosecondsPerCall(const std::vector<std::function<void()>>& calls,
                                             const MeasureOptions& options = {});

// For work that takes a good part of a second or more, once a round: the
// median seconds of each of `runs`, in the same order. Each round runs every
// candidate once, starting with a different one each time.
std::vector<double> MedianSecondsPerRun(const std::vector<std::function<void()>>& runs, int rounds);

}  // namespace bench
