// The de-interleaving steps for 2- and 3-byte samples on CPUs that run
// AVX-512 VBMI, chosen at run time: their byte permutes pick a channel's
// samples out of 128 bytes of frames at once, where narrower steps move one
// 3-byte sample a load and store, or need a dozen shuffles for a transpose
// of 2-byte ones.
#pragma once

#include <cstddef>
#include <cstdint>

namespace windowsmediafoundation {

// 2-byte samples of one to eight channels, every channel wanted, 64 frames
// a step. Returns the frames done; the rest is left to the caller.
std::size_t DeinterleaveHalfWordsAvx512(const std::uint8_t* interleaved, std::size_t frames, std::uint32_t channels,
                                        float* const* channelBuffers);

// 3-byte samples of one to eight channels, every channel wanted, 64 frames
// a step. Returns the frames done; the rest is left to the caller.
std::size_t DeinterleaveTriplesAvx512(const std::uint8_t* interleaved, std::size_t frames, std::uint32_t channels,
                                      float* const* channelBuffers);

}  // namespace windowsmediafoundation
