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
// 128-byte windows of frames a part's 22 samples reach at eight channels.
constexpr std::size_t kMaxWindows = 4;

// How each 64-byte part of channel 0's output is picked from the step's
// frames; channel n reads the same windows 3n bytes further on.
struct Plan {
  std::size_t start[kParts];  // the part's first frame byte, from the step's start
  std::size_t windows;        // 128-byte windows a part reads
  std::size_t reach;          // bytes a step reads, from its start
  std::uint8_t index[kParts][kMaxWindows][64];
  std::uint64_t mask[kParts][kMaxWindows];  // the output bytes a window supplies
};

Plan MakePlan(std::uint32_t channels) {
  Plan plan{};
  const std::size_t frameBytes = std::size_t{channels} * 3;
  // Each part spans 21 frames after its first, and reads 2 bytes into the last.
  plan.windows = (21 * frameBytes + 2) / 128 + 1;
  for (std::size_t part = 0; part < kParts; ++part) {
    const std::size_t firstSample = part * 64 / 3;
    plan.start[part] = firstSample * frameBytes;
    for (std::size_t t = 0; t < 64; ++t) {
      const std::size_t byte = part * 64 + t;  // of the channel's packed output
      const std::size_t offset = (byte / 3 - firstSample) * frameBytes + byte % 3;
      plan.index[part][offset / 128][t] = static_cast<std::uint8_t>(offset % 128);
      plan.mask[part][offset / 128] |= std::uint64_t{1} << t;
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

}  // namespace

std::size_t DeinterleaveTriplesAvx512(const std::uint8_t* interleaved, std::size_t frames, std::uint32_t channels,
                                      float* const* channelBuffers) {
  if (channels == 0 || channels > kMaxChannels) return 0;
  const Plan& plan = PlanFor(channels);
  const std::size_t frameBytes = std::size_t{channels} * 3;
  const std::size_t total = frames * frameBytes;
  std::size_t f = 0;
  // The last window of a step may read past its frames, so the loop stops
  // where it would pass the end.
  for (; f * frameBytes + plan.reach <= total; f += kStepFrames) {
    const std::uint8_t* step = interleaved + f * frameBytes;
    for (std::size_t part = 0; part < kParts; ++part) {
      __m512i index[kMaxWindows];
      for (std::size_t w = 0; w < plan.windows; ++w) index[w] = _mm512_loadu_si512(plan.index[part][w]);
      for (std::uint32_t n = 0; n < channels; ++n) {
        const std::uint8_t* window = step + plan.start[part] + 3 * n;
        __m512i samples = _mm512_setzero_si512();
        for (std::size_t w = 0; w < plan.windows; ++w, window += 128) {
          const __m512i low = _mm512_loadu_si512(window);
          const __m512i high = _mm512_loadu_si512(window + 64);
          samples = _mm512_or_si512(samples, _mm512_maskz_permutex2var_epi8(plan.mask[part][w], low, index[w], high));
        }
        auto* destination = reinterpret_cast<std::uint8_t*>(channelBuffers[n]) + f * 3 + part * 64;
        _mm512_storeu_si512(destination, samples);
      }
    }
  }
  return f;
}

}  // namespace windowsmediafoundation
