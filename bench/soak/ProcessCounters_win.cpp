#include "ProcessCounters.h"

#include <windows.h>
#include <psapi.h>

#include <cstdint>

namespace aurivox_test {
namespace {

// Handle values are multiples of 4; a process of ours holds a few thousand
// at most, and leaked ones come after the rest.
constexpr std::uintptr_t kHighestHandleProbed = 4 << 14;

// Counts the handle values that name an open handle. Wine 8's
// GetProcessHandleCount answers 0, so the values are tried one by one.
std::uint32_t CountHandlesByProbing() {
  std::uint32_t count = 0;
  for (std::uintptr_t value = 4; value <= kHighestHandleProbed; value += 4) {
    DWORD flags = 0;
    if (GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags)) ++count;
  }
  return count;
}

std::uint32_t CountHandles() {
  DWORD handles = 0;
  if (GetProcessHandleCount(GetCurrentProcess(), &handles) && handles != 0) return handles;
  return CountHandlesByProbing();
}

}  // namespace

std::uint64_t SamplePrivateBytes() {
  PROCESS_MEMORY_COUNTERS_EX memory{};
  memory.cb = sizeof memory;
  if (!GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory),
                            sizeof memory)) {
    return 0;
  }
  // The commit charge is the private memory; Wine 8 leaves PrivateUsage at
  // 0 and fills only PagefileUsage, which Windows keeps equal to it.
  return memory.PrivateUsage != 0 ? memory.PrivateUsage : memory.PagefileUsage;
}

ProcessCounters SampleProcessCounters() {
  ProcessCounters counters;
  counters.handles = CountHandles();
  counters.privateBytes = SamplePrivateBytes();
  return counters;
}

}  // namespace aurivox_test
