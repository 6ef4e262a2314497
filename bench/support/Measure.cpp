#include "Measure.h"

#include <algorithm>
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
