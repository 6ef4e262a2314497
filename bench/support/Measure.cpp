#include "Measure.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace bench {
namespace {

using Clock = std::chrono::steady_clock;

double NanosecondsPerCall(const std::function<void()>& call, std::int64_t repetitions) {
  const Clock::time_point start = Clock::now();
  for (std::int64_t i = 0; i < repetitions; ++i) call();
  const std::chrono::duration<double, std::nano> elapsed = Clock::now() - start;
  return elapsed.count() / static_cast<double>(repetitions);
}

// Doubles the repetitions until one batch lasts the minimum; also warms the
// caches and the branch predictors up.
std::int64_t CalibrateRepetitions(const std::function<void()>& call,
                                  std::chrono::microseconds minimum) {
  const double target = std::chrono::duration<double, std::nano>(minimum).count();
  std::int64_t repetitions = 1;
  while (NanosecondsPerCall(call, repetitions) * static_cast<double>(repetitions) < target) {
    repetitions *= 2;
  }
  return repetitions;
}

}  // namespace

double Median(std::vector<double> values) {
  const std::size_t middle = values.size() / 2;
  std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(middle),
                   values.end());
  return values[middle];
}

MedianRange MedianConfidenceRange(std::vector<double> values) {
  if (values.empty()) return {};
  std::sort(values.begin(), values.end());
  // Each value lies below the true median with chance 1/2, so the count of
  // those below is binomial. The range from the value of rank `lower` up to
  // its mirror misses the median only when at most `lower` fall on one side:
  // take the largest `lower` for which that chance is at most 2.5 % a side.
  // Each chance is worked out from logarithms: 0.5^n alone would round to
  // 0 beyond a thousand values, and a product built on it would stay 0.
  const std::size_t n = values.size();
  const auto chanceOfCount = [n](std::size_t k) {
    return std::exp(std::lgamma(n + 1.0) - std::lgamma(k + 1.0) - std::lgamma(n - k + 1.0) - n * std::log(2.0));
  };
  double atMost = chanceOfCount(0);  // of a count up to k
  std::size_t lower = 0;
  for (std::size_t k = 1; 2 * k < n; ++k) {
    atMost += chanceOfCount(k);
    if (atMost > 0.025) break;
    lower = k;
  }
  return {values[lower], values[n - 1 - lower]};
}

std::vector<double> MedianSecondsPerRun(const std::vector<std::function<void()>>& runs, int rounds) {
  std::vector<std::vector<double>> samples(runs.size());
  for (int round = 0; round < rounds; ++round) {
    for (std::size_t k = 0; k < runs.size(); ++k) {
      const std::size_t i = (k + static_cast<std::size_t>(round)) % runs.size();
      samples[i].push_back(NanosecondsPerCall(runs[i], 1) / 1e9);
    }
  }
  std::vector<double> medians;
  for (auto& s : samples) medians.push_back(Median(std::move(s)));
  return medians;
}

std::vector<double> MedianNanosecondsPerCall(const std::vector<std::function<void()>>& calls,
                                             const MeasureOptions& options) {
  std::vector<std::int64_t> repetitions;
  for (const auto& call : calls) {
    repetitions.push_back(CalibrateRepetitions(call, options.minimumBatch));
  }
  std::vector<std::vector<double>> samples(calls.size());
  for (int round = 0; round < options.rounds; ++round) {
    // Rotating the starting candidate keeps any one of them from always
    // following the same neighbour.
    for (std::size_t k = 0; k < calls.size(); ++k) {
      const std::size_t i = (k + static_cast<std::size_t>(round)) % calls.size();
      samples[i].push_back(NanosecondsPerCall(calls[i], repetitions[i]));
    }
  }
  std::vector<double> medians;
  for (auto& s : samples) medians.push_back(Median(std::move(s)));
  return medians;
}

}  // namespace bench
