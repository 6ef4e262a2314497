// The de-interleaving step for 3-byte samples on CPUs that run AVX-512 VBMI,
// chosen at run time: its byte permutes pick a channel's packed samples out
// of 128 bytes of frames at once, where narrower steps move one sample a
// load and store.
#pragma once

#include <cstddef>
#include <cstdint>

namespace windowsmediafoundation {

// 3-byte samples of one to eight channels, every channel wanted, 64 frames
// a step. Returns the frames done; the rest is left to the caller.
std::size_t DeinterleaveTriplesAvx512(const std::uint8_t* interleaved, std::size_t frames, std::uint32_t channels,
                                      float* const* channelBuffers);

}  // namespace windowsmediafoundation
