// Built with AVX-512 VBMI enabled; called only when the CPU runs it.
// Everything here but the entry point has internal linkage, so that the
// linker cannot take an inline function built for AVX-512 in place of
// another file's copy.
#include "DeinterleaveAvx512.h"

#include <immintrin.h>

#include <algorithm>
#include <array>

namespace windowsmediafoundation {
namespace {

// 64 frames: a channel's samples of a step fill three 64-byte registers.
constexpr std::size_t kStepFrames = 64;
constexpr std::size_t kParts = 3;
constexpr std::uint32_t kMaxChannels = 8;
// 128-byte windows a part's bytes span at eight channels.
constexpr std::size_t kMaxWindows = 4;

// How each 64-byte part of channel 0's output is picked from the step's
// frames; channel n reads the same windows 3n bytes further on. A part's
// windows start at its first byte, which keeps its 64 bytes within
// 21 frames and 1 byte: one window for stereo, three for 5.1.
struct Plan {
  std::size_t start[kParts];  // the part's first byte in the step
  std::size_t windows;        // 128-byte windows a part reads
  std::size_t reach;          // bytes a step reads, from its start
  alignas(64) std::uint8_t index[kParts][kMaxWindows][64];
  std::uint64_t mask[kParts][kMaxWindows];  // the output bytes a window supplies
};

Plan MakePlan(std::uint32_t channels) {
  Plan plan{};
  const std::size_t frameBytes = std::size_t{channels} * 3;
  const auto offset = [frameBytes](std::size_t byte) { return byte / 3 * frameBytes + byte % 3; };
  plan.windows = 21 * frameBytes / 128 + 1;
  for (std::size_t part = 0; part < kParts; ++part) {
    plan.start[part] = offset(part * 64);
    for (std::size_t t = 0; t < 64; ++t) {
      const std::size_t from = offset(part * 64 + t) - plan.start[part];
      plan.index[part][from / 128][t] = static_cast<std::uint8_t>(from % 128);
      plan.mask[part][from / 128] |= std::uint64_t{1} << t;
    }
  }
  const std::size_t lastChannel = frameBytes - 3;
  plan.reach = std::max(kStepFrames * frameBytes, plan.start[kParts - 1] + lastChannel + 128 * plan.windows);
  return plan;
}

const Plan& PlanFor(std::uint32_t channels) {
  static const auto plans = [] {
    std::array<Plan, kMaxChannels + 1> all{};
    for (std::uint32_t c = 1; c <= kMaxChannels; ++c) all[c] = MakePlan(c);
    return all;
  }();
  return plans[channels];
}

// One channel's part of a step, from the windows starting at `window`.
template <std::size_t kWindows>
__m512i PickPart(const std::uint8_t* window, const __m512i* index, const __mmask64* mask) {
  __m512i samples = _mm512_setzero_si512();
#pragma GCC unroll 4
  for (std::size_t w = 0; w < kWindows; ++w) {
    const __m512i low = _mm512_loadu_si512(window + 128 * w);
    const __m512i high = _mm512_loadu_si512(window + 128 * w + 64);
    samples = _mm512_or_si512(samples, _mm512_maskz_permutex2var_epi8(mask[w], low, index[w], high));
  }
  return samples;
}

// Part by part, channel by channel, down all steps, so that a part's index
// tables and masks stay in registers; reloading them for every step made
// stereo a quarter slower.
template <std::size_t kWindows>
void DeinterleaveSteps(const Plan& plan, const std::uint8_t* interleaved, std::size_t steps, std::uint32_t channels,
                       float* const* channelBuffers) {
  const std::size_t stepBytes = kStepFrames * 3 * channels;
  for (std::size_t part = 0; part < kParts; ++part) {
    __m512i index[kWindows];
    __mmask64 mask[kWindows];
    for (std::size_t w = 0; w < kWindows; ++w) {
      index[w] = _mm512_load_si512(plan.index[part][w]);
      mask[w] = plan.mask[part][w];
    }
    for (std::uint32_t n = 0; n < channels; ++n) {
      const std::uint8_t* window = interleaved + plan.start[part] + 3 * n;
      auto* destination = reinterpret_cast<std::uint8_t*>(channelBuffers[n]) + part * 64;
      for (std::size_t s = 0; s < steps; ++s, window += stepBytes, destination += 3 * kStepFrames) {
        _mm512_storeu_si512(destination, PickPart<kWindows>(window, index, mask));
      }
    }
  }
}

}  // namespace

std::size_t DeinterleaveTriplesAvx512(const std::uint8_t* interleaved, std::size_t frames, std::uint32_t channels,
                                      float* const* channelBuffers) {
  if (channels == 0 || channels > kMaxChannels) return 0;
  const Plan& plan = PlanFor(channels);
  const std::size_t stepBytes = kStepFrames * 3 * channels;
  const std::size_t total = frames * 3 * channels;
  // The last window of a step may read past its frames, so the steps stop
  // where one would pass the end.
  if (total < plan.reach) return 0;
  const std::size_t steps = (total - plan.reach) / stepBytes + 1;
  switch (plan.windows) {
    case 1: DeinterleaveSteps<1>(plan, interleaved, steps, channels, channelBuffers); break;
    case 2: DeinterleaveSteps<2>(plan, interleaved, steps, channels, channelBuffers); break;
    case 3: DeinterleaveSteps<3>(plan, interleaved, steps, channels, channelBuffers); break;
    default: DeinterleaveSteps<kMaxWindows>(plan, interleaved, steps, channels, channelBuffers); break;
  }
  return steps * kStepFrames;
}

}  // namespace windowsmediafoundation
