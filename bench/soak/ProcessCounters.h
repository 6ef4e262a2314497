// The process's own resource counters, for telling a leak from a plateau.
#pragma once

#include <cstdint>

namespace aurivox_test {

struct ProcessCounters {
  std::uint32_t handles = 0;
  std::uint64_t privateBytes = 0;  // committed memory no other process shares
};

// Zeros when the system does not say.
ProcessCounters SampleProcessCounters();
// The private memory alone, which is quick to ask for; counting handles
// can take a good part of a second.
std::uint64_t SamplePrivateBytes();

}  // namespace aurivox_test
