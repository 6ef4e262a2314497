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

// 64 frames: a channel's samples of a step fill one 64-byte register per
// byte of a sample.
constexpr std::size_t kStepFrames = 64;
constexpr std::size_t kMaxParts = 3;
constexpr std::uint32_t kMaxChannels = 8;
// 128-byte windows a part's bytes span at eight channels.
constexpr std::size_t kMaxWindows = 4;
// Channels picked from one load of a part's windows. Three keep the
// windows, index tables and result within the 32 registers.
constexpr std::uint32_t kMaxGroup = 3;
// Frames gone over part by part before moving on: half of a 32 KiB level 1
// data cache, so that each part's pass reads them from there.
constexpr std::size_t kBlockBytes = 16 * 1024;

// How each 64-byte part of a channel's output is picked from the step's
// frames. A part's windows start at its first byte, which keeps its 64 bytes
// within 32 frames (2-byte samples) or 21 frames and 1 byte (3-byte): one
// window for stereo, three for 5.1. The channels after it, a sample further
// on each, are picked from the same windows while their bytes still fit, so
// one load serves the group.
struct Plan {
  std::size_t start[kMaxParts];  // channel 0's first byte of the part in the step
  std::size_t windows;           // 128-byte windows a part reads
  std::uint32_t group;           // channels sharing a part's windows
  std::size_t reach;             // bytes a step reads, from its start
  // For the group's k-th channel: each window's byte picks, and the output
  // bytes that window supplies.
  alignas(64) std::uint8_t index[kMaxParts][kMaxGroup][kMaxWindows][64];
  std::uint64_t mask[kMaxParts][kMaxGroup][kMaxWindows];
};

template <std::size_t kWidth>
Plan MakePlan(std::uint32_t channels) {
  Plan plan{};
  const std::size_t frameBytes = std::size_t{channels} * kWidth;
  const auto offset = [frameBytes](std::size_t byte) { return byte / kWidth * frameBytes + byte % kWidth; };
  std::size_t span = 0;
  for (std::size_t part = 0; part < kWidth; ++part) {
    plan.start[part] = offset(part * 64);
    span = std::max(span, offset(part * 64 + 63) - plan.start[part] + 1);
  }
  plan.windows = span / 128 + 1;
  plan.group = static_cast<std::uint32_t>(
      std::min<std::size_t>({channels, kMaxGroup, (128 * plan.windows - span) / kWidth + 1}));
  for (std::size_t part = 0; part < kWidth; ++part) {
    for (std::size_t k = 0; k < plan.group; ++k) {
      for (std::size_t t = 0; t < 64; ++t) {
        const std::size_t from = offset(part * 64 + t) - plan.start[part] + kWidth * k;
        plan.index[part][k][from / 128][t] = static_cast<std::uint8_t>(from % 128);
        plan.mask[part][k][from / 128] |= std::uint64_t{1} << t;
      }
    }
  }
  const std::size_t lastGroup = (channels - 1) / plan.group * plan.group;
  plan.reach = std::max(kStepFrames * frameBytes, plan.start[kWidth - 1] + kWidth * lastGroup + 128 * plan.windows);
  return plan;
}

template <std::size_t kWidth>
const Plan& PlanFor(std::uint32_t channels) {
  static const auto plans = [] {
    std::array<Plan, kMaxChannels + 1> all{};
    for (std::uint32_t c = 1; c <= kMaxChannels; ++c) all[c] = MakePlan<kWidth>(c);
    return all;
  }();
  return plans[channels];
}

// `steps` steps from `interleaved`, into the channels' buffers from byte
// `outputStart` on: part by part, group by group, so that a part's index
// tables and masks stay in registers; reloading them for every step made
// stereo a quarter slower.
template <std::size_t kWidth, std::size_t kWindows, std::uint32_t kGroup>
void DeinterleaveBlock(const Plan& plan, const std::uint8_t* interleaved, std::size_t steps, std::uint32_t channels,
                       float* const* channelBuffers, std::size_t outputStart) {
  const std::size_t stepBytes = kStepFrames * kWidth * channels;
  for (std::size_t part = 0; part < kWidth; ++part) {
    __m512i index[kGroup][kWindows];
    __mmask64 mask[kGroup][kWindows];
    for (std::size_t k = 0; k < kGroup; ++k) {
      for (std::size_t w = 0; w < kWindows; ++w) {
        index[k][w] = _mm512_load_si512(plan.index[part][k][w]);
        mask[k][w] = plan.mask[part][k][w];
      }
    }
    for (std::uint32_t leader = 0; leader < channels; leader += kGroup) {
      const std::uint32_t members = std::min(kGroup, channels - leader);
      const std::uint8_t* window = interleaved + plan.start[part] + kWidth * leader;
      std::uint8_t* destination[kGroup] = {};
      for (std::uint32_t k = 0; k < members; ++k) {
        destination[k] = reinterpret_cast<std::uint8_t*>(channelBuffers[leader + k]) + outputStart + part * 64;
      }
      for (std::size_t s = 0; s < steps; ++s, window += stepBytes) {
        __m512i frames[2 * kWindows];
#pragma GCC unroll 8
        for (std::size_t i = 0; i < 2 * kWindows; ++i) frames[i] = _mm512_loadu_si512(window + 64 * i);
#pragma GCC unroll 3
        for (std::uint32_t k = 0; k < kGroup && k < members; ++k) {
          __m512i samples = _mm512_setzero_si512();
#pragma GCC unroll 4
          for (std::size_t w = 0; w < kWindows; ++w) {
            samples = _mm512_or_si512(
                samples, _mm512_maskz_permutex2var_epi8(mask[k][w], frames[2 * w], index[k][w], frames[2 * w + 1]));
          }
          _mm512_storeu_si512(destination[k] + s * kWidth * kStepFrames, samples);
        }
      }
    }
  }
}

// Block by block, each pass over a block's steps reading them from the
// level 1 cache.
template <std::size_t kWidth, std::size_t kWindows, std::uint32_t kGroup>
void DeinterleaveSteps(const Plan& plan, const std::uint8_t* interleaved, std::size_t steps, std::uint32_t channels,
                       float* const* channelBuffers) {
  const std::size_t stepBytes = kStepFrames * kWidth * channels;
  const std::size_t blockSteps = std::max<std::size_t>(1, kBlockBytes / stepBytes);
  for (std::size_t first = 0; first < steps; first += blockSteps) {
    DeinterleaveBlock<kWidth, kWindows, kGroup>(plan, interleaved + first * stepBytes,
                                                std::min(blockSteps, steps - first), channels, channelBuffers,
                                                first * kWidth * kStepFrames);
  }
}

template <std::size_t kWidth>
std::size_t DeinterleaveWidthAvx512(const std::uint8_t* interleaved, std::size_t frames, std::uint32_t channels,
                                    float* const* channelBuffers) {
  if (channels == 0 || channels > kMaxChannels) return 0;
  const Plan& plan = PlanFor<kWidth>(channels);
  const std::size_t stepBytes = kStepFrames * kWidth * channels;
  const std::size_t total = frames * kWidth * channels;
  // The last window of a step may read past its frames, so the steps stop
  // where one would pass the end.
  if (total < plan.reach) return 0;
  const std::size_t steps = (total - plan.reach) / stepBytes + 1;
  const auto run = [&](auto stepsOfShape) { stepsOfShape(plan, interleaved, steps, channels, channelBuffers); };
  // The shapes one to eight channels give, stereo, 5.1 and 7.1 being
  // (1, 2), (3, 3), (4, 3) for 2-byte samples and (1, 1), (3, 2), (4, 3)
  // for 3-byte ones.
  switch (plan.windows * 10 + plan.group) {
    case 11: run(DeinterleaveSteps<kWidth, 1, 1>); break;
    case 12: run(DeinterleaveSteps<kWidth, 1, 2>); break;
    case 22: run(DeinterleaveSteps<kWidth, 2, 2>); break;
    case 23: run(DeinterleaveSteps<kWidth, 2, 3>); break;
    case 32: run(DeinterleaveSteps<kWidth, 3, 2>); break;
    case 33: run(DeinterleaveSteps<kWidth, 3, 3>); break;
    case 43: run(DeinterleaveSteps<kWidth, 4, 3>); break;
    default: return 0;
  }
  return steps * kStepFrames;
}

}  // namespace

std::size_t DeinterleaveHalfWordsAvx512(const std::uint8_t* interleaved, std::size_t frames, std::uint32_t channels,
                                        float* const* channelBuffers) {
  return DeinterleaveWidthAvx512<2>(interleaved, frames, channels, channelBuffers);
}

std::size_t DeinterleaveTriplesAvx512(const std::uint8_t* interleaved, std::size_t frames, std::uint32_t channels,
                                      float* const* channelBuffers) {
  return DeinterleaveWidthAvx512<3>(interleaved, frames, channels, channelBuffers);
}

}  // namespace windowsmediafoundation
