#include "SideBySide.h"

#include <chrono>
#include <vector>

#include "Measure.h"

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
    Timed(a, [&] { first.start(); return 0; });
    Timed(b, [&] { second.start(); return 0; });
    // Who goes first changes every turn: reading the same file, the one that
    // goes first would otherwise pay for every page the cache did not hold.
    bool firstBusy = true, secondBusy = true;
    for (bool firstLeads = true; firstBusy || secondBusy; firstLeads = !firstLeads) {
      if (firstLeads && firstBusy) firstBusy = Timed(a, first.slice);
      if (secondBusy) secondBusy = Timed(b, second.slice);
      if (!firstLeads && firstBusy) firstBusy = Timed(a, first.slice);
    }
    Timed(a, [&] { first.finish(); return 0; });
    Timed(b, [&] { second.finish(); return 0; });
    if (round == 0) continue;
    firstSeconds.push_back(a);
    secondSeconds.push_back(b);
    ratios.push_back(a / b);
  }
  return {Median(firstSeconds), Median(secondSeconds), Median(ratios)};
}

}  // namespace bench
