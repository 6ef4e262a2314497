// De-interleaving steps for CPUs that run AVX2, chosen at run time: twice
// the frames of the SSE2 steps at once, for half the shuffles a byte.
#pragma once

#include <cstddef>
#include <cstdint>

namespace windowsmediafoundation {

// 4-byte samples of three or more channels, every channel wanted, eight
// frames a step. Returns the frames done; the rest is left to the caller.
std::size_t DeinterleaveWordsAvx2(const std::uint8_t* interleaved, std::size_t frames, std::uint32_t channels,
                                  float* const* channelBuffers);

// 2-byte samples of three to eight channels, every channel wanted, sixteen
// frames a step, from frame `first` on. Returns the frames done, `first`
// included.
std::size_t DeinterleaveHalfWordsAvx2(const std::uint8_t* interleaved, std::size_t first, std::size_t frames,
                                      std::uint32_t channels, float* const* channelBuffers);

}  // namespace windowsmediafoundation
