#include "SideBySide.h"

#include <chrono>
#include <utility>
#include <vector>

#include "Measure.h"
#include "Table.h"

namespace bench {
namespace {

using Clock = std::chrono::steady_clock;

template <typename Work>
auto Timed(double& total, const Work& work) {
  const Clock::time_point start = Clock::now();
  const auto result = work();
  total += std::chrono::duration<double>(Clock::now() - start).count();
  return result;
}

}  // namespace

SideBySideResult MeasureSideBySide(const SlicedCandidate& first, const SlicedCandidate& second, int rounds) {
  std::vector<double> firstSeconds, secondSeconds, ratios;
  for (int round = 0; round <= rounds; ++round) {
    double a = 0, b = 0;
    struct Turns {
      const SlicedCandidate& candidate;
      double& seconds;
      bool busy = true;
    };
    // Which one starts, leads and finishes first changes every round: the
    // one started second finds the other's source already reading ahead.
    Turns one{first, a}, other{second, b};
    Turns* order[2] = {&one, &other};
    if (round % 2 != 0) std::swap(order[0], order[1]);
    for (Turns* turns : order) Timed(turns->seconds, [&] { turns->candidate.start(); return 0; });
    // Who goes first also changes every turn: reading the same file, the one
    // that goes first would otherwise pay for every page the cache did not
    // hold.
    for (bool leads = true; one.busy || other.busy; leads = !leads) {
      for (Turns* turns : {order[leads ? 0 : 1], order[leads ? 1 : 0]}) {
        if (turns->busy) turns->busy = Timed(turns->seconds, turns->candidate.slice);
      }
    }
    for (Turns* turns : order) Timed(turns->seconds, [&] { turns->candidate.finish(); return 0; });
    if (round == 0) continue;
    firstSeconds.push_back(a);
    secondSeconds.push_back(b);
    ratios.push_back(a / b);
  }
  return {Median(firstSeconds), Median(secondSeconds), Median(ratios), MedianConfidenceRange(ratios)};
}

std::string RatioRangeText(const SideBySideResult& result) {
  return Fixed(result.ratioRange.low, 3) + "-" + Fixed(result.ratioRange.high, 3);
}

}  // namespace bench
