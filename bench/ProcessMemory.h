// The process's memory counters, and running this program again in a fresh
// process, so that peaks of different runs do not mix.
#pragma once

#include <cstdint>
#include <string>

namespace bench {

struct MemoryCounters {
  std::uint64_t workingSet = 0;
  std::uint64_t peakWorkingSet = 0;
  std::uint64_t pagefileUsage = 0;
  std::uint64_t peakPagefileUsage = 0;
};

MemoryCounters SampleMemoryCounters();

// Runs this program with `arguments` and waits for it; `output` receives
// its standard output. False when it could not be started or failed.
bool RunSelf(const std::wstring& arguments, std::string& output);

}  // namespace bench
