#include "PendingAudio.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <new>
#include <stdexcept>

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>

#include "HalfWordTranspose.h"
#define AURIVOX_DEINTERLEAVE_SSE2 1
#endif

#ifdef AURIVOX_DEINTERLEAVE_WIDE
#include "DeinterleaveAvx2.h"
#include "DeinterleaveAvx512.h"
#include "DispatchState.h"
#endif

namespace windowsmediafoundation {
namespace {

#ifdef AURIVOX_DEINTERLEAVE_WIDE
// The widest steps this CPU runs.
VectorInstructions CpuInstructions() {
  using namespace vectorkernels;
  CpuFeatureMask features = 0;
  if (DetectCpuFeatures(&features) != 1) return VectorInstructions::kSse2;
  const auto has = [features](CpuFeatureMask wanted) { return (features & wanted) == wanted; };
  constexpr CpuFeatureMask kAvx2 = kFeatureAvx2Group | kFeatureAvxState;
  constexpr CpuFeatureMask kAvx512Vbmi = kAvx2 | kFeatureAvx512F | kFeatureAvx512Bw | kFeatureAvx512Vbmi |
                                         kFeatureAvx512State;
  if (has(kAvx512Vbmi)) return VectorInstructions::kAvx512Vbmi;
  return has(kAvx2) ? VectorInstructions::kAvx2 : VectorInstructions::kSse2;
}
std::atomic<VectorInstructions> g_widest{CpuInstructions()};
#endif

bool EveryChannelWanted(float* const* channelBuffers, std::uint32_t channels) {
  return std::all_of(channelBuffers, channelBuffers + channels, [](const float* buffer) { return buffer != nullptr; });
}

// The general loop for frames `first` to `frames`: any channel count, null
// buffers skipped, one channel at a time.
template <typename Sample>
void DeinterleaveAnyLayout(const std::uint8_t* interleaved, std::size_t first, std::size_t frames,
                           std::uint32_t channels, float* const* channelBuffers) {
  const std::size_t frameBytes = std::size_t{channels} * sizeof(Sample);
  for (std::uint32_t n = 0; n < channels; ++n) {
    if (!channelBuffers[n]) continue;
    auto* destination = reinterpret_cast<std::uint8_t*>(channelBuffers[n]);
    const std::uint8_t* source = interleaved + std::size_t{n} * sizeof(Sample);
    for (std::size_t f = first; f < frames; ++f) {
      std::memcpy(destination + f * sizeof(Sample), source + f * frameBytes, sizeof(Sample));
    }
  }
}

// 3-byte samples moved as 4-byte words, one load and one store each: a
// store's fourth byte is overwritten by the next frame's sample, and the last
// frame is copied byte-exact so nothing past a buffer is touched. Where the
// CPU runs it, the AVX-512 step does the first frames.
void DeinterleaveTriples(const std::uint8_t* interleaved, std::size_t frames, std::uint32_t channels,
                         float* const* channelBuffers) {
  std::size_t done = 0;
#ifdef AURIVOX_DEINTERLEAVE_WIDE
  if (g_widest == VectorInstructions::kAvx512Vbmi && EveryChannelWanted(channelBuffers, channels)) {
    done = DeinterleaveTriplesAvx512(interleaved, frames, channels, channelBuffers);
  }
#endif
  if (done == frames) return;
  const std::size_t frameBytes = std::size_t{channels} * 3;
  for (std::uint32_t n = 0; n < channels; ++n) {
    if (!channelBuffers[n]) continue;
    auto* destination = reinterpret_cast<std::uint8_t*>(channelBuffers[n]);
    const std::uint8_t* source = interleaved + std::size_t{n} * 3;
    std::size_t f = done;
    for (; f + 1 < frames; ++f) {
      std::uint32_t word;
      std::memcpy(&word, source + f * frameBytes, sizeof word);
      std::memcpy(destination + f * 3, &word, sizeof word);
    }
    std::memcpy(destination + f * 3, source + f * frameBytes, 3);
  }
}

// The common layouts, with the channel count known to the compiler: one pass
// over the interleaved bytes, frame by frame, which it can vectorise.
template <typename Sample, std::uint32_t kChannels>
void DeinterleaveFixedLayout(const std::uint8_t* interleaved, std::size_t frames, float* const* channelBuffers) {
  std::uint8_t* destinations[kChannels];
  for (std::uint32_t n = 0; n < kChannels; ++n) destinations[n] = reinterpret_cast<std::uint8_t*>(channelBuffers[n]);
  for (std::size_t f = 0; f < frames; ++f) {
    const std::uint8_t* frame = interleaved + f * kChannels * sizeof(Sample);
    for (std::uint32_t n = 0; n < kChannels; ++n) {
      std::memcpy(destinations[n] + f * sizeof(Sample), frame + n * sizeof(Sample), sizeof(Sample));
    }
  }
}

#ifdef AURIVOX_DEINTERLEAVE_SSE2
// Two 4-byte samples into the low half of a register, bits untouched.
// The samples need not be 8-byte aligned, hence the copy (one movsd).
inline __m128 LoadPair(const float* samples) {
  double pair;
  std::memcpy(&pair, samples, sizeof pair);
  return _mm_castpd_ps(_mm_set_sd(pair));
}

// 4-byte samples, every channel wanted, four frames at a time: each run of
// four channels is a 4 x 4 transpose, a pair of channels two shuffles. Only
// moves and shuffles, so integer samples and odd float patterns keep their
// bits. Returns the frames done; the rest is left to the general loop.
std::size_t DeinterleaveWords(const std::uint8_t* interleaved, std::size_t frames, std::uint32_t channels,
                              float* const* channelBuffers) {
  const auto* samples = reinterpret_cast<const float*>(interleaved);
  const std::size_t stride = channels;
  std::size_t f = 0;
  for (; f + 4 <= frames; f += 4) {
    const float* frame = samples + f * stride;
    std::uint32_t c = 0;
    for (; c + 4 <= channels; c += 4) {
      __m128 r0 = _mm_loadu_ps(frame + c);
      __m128 r1 = _mm_loadu_ps(frame + stride + c);
      __m128 r2 = _mm_loadu_ps(frame + 2 * stride + c);
      __m128 r3 = _mm_loadu_ps(frame + 3 * stride + c);
      _MM_TRANSPOSE4_PS(r0, r1, r2, r3);
      _mm_storeu_ps(channelBuffers[c] + f, r0);
      _mm_storeu_ps(channelBuffers[c + 1] + f, r1);
      _mm_storeu_ps(channelBuffers[c + 2] + f, r2);
      _mm_storeu_ps(channelBuffers[c + 3] + f, r3);
    }
    for (; c + 2 <= channels; c += 2) {
      const __m128 first = _mm_movelh_ps(LoadPair(frame + c), LoadPair(frame + stride + c));
      const __m128 second = _mm_movelh_ps(LoadPair(frame + 2 * stride + c), LoadPair(frame + 3 * stride + c));
      _mm_storeu_ps(channelBuffers[c] + f, _mm_shuffle_ps(first, second, _MM_SHUFFLE(2, 0, 2, 0)));
      _mm_storeu_ps(channelBuffers[c + 1] + f, _mm_shuffle_ps(first, second, _MM_SHUFFLE(3, 1, 3, 1)));
    }
    for (; c < channels; ++c) {
      for (std::size_t k = 0; k < 4; ++k) {
        std::memcpy(channelBuffers[c] + f + k, frame + k * stride + c, sizeof(float));
      }
    }
  }
  return f;
}
struct Sse2Lanes {
  using Vector = __m128i;
  static Vector Low16(Vector a, Vector b) { return _mm_unpacklo_epi16(a, b); }
  static Vector High16(Vector a, Vector b) { return _mm_unpackhi_epi16(a, b); }
  static Vector Low32(Vector a, Vector b) { return _mm_unpacklo_epi32(a, b); }
  static Vector High32(Vector a, Vector b) { return _mm_unpackhi_epi32(a, b); }
  static Vector Low64(Vector a, Vector b) { return _mm_unpacklo_epi64(a, b); }
  static Vector High64(Vector a, Vector b) { return _mm_unpackhi_epi64(a, b); }
};

// 2-byte samples of three to eight channels, every channel wanted, eight
// frames at a time from frame `first` on: an 8 x 8 transpose of 16-bit lanes
// whose first rows are the channels. A load may reach past its frame, so the
// loop stops where it would pass the end. Returns the frames done, `first`
// included.
std::size_t DeinterleaveHalfWords(const std::uint8_t* interleaved, std::size_t first, std::size_t frames,
                                  std::uint32_t channels, float* const* channelBuffers) {
  const std::size_t frameBytes = std::size_t{channels} * 2;
  std::size_t f = first;
  for (; (f + 7) * frameBytes + 16 <= frames * frameBytes; f += 8) {
    const std::uint8_t* frame = interleaved + f * frameBytes;
    __m128i r[8];
    for (std::size_t k = 0; k < 8; ++k) r[k] = _mm_loadu_si128(reinterpret_cast<const __m128i*>(frame + k * frameBytes));
    __m128i rows[8];
    TransposeHalfWords<Sse2Lanes>(r, rows);
    for (std::uint32_t c = 0; c < channels; ++c) {
      auto* destination = reinterpret_cast<std::uint8_t*>(channelBuffers[c]) + f * 2;
      _mm_storeu_si128(reinterpret_cast<__m128i*>(destination), rows[c]);
    }
  }
  return f;
}

// The frames the vector steps de-interleave from the first on, every
// channel wanted; 0 where no step suits the layout.
template <typename Sample>
std::size_t DeinterleaveInSteps(const std::uint8_t* interleaved, std::size_t frames, std::uint32_t channels,
                                float* const* channelBuffers) {
  if (sizeof(Sample) == 4 && channels > 2) {
#ifdef AURIVOX_DEINTERLEAVE_WIDE
    if (g_widest >= VectorInstructions::kAvx2) {
      return DeinterleaveWordsAvx2(interleaved, frames, channels, channelBuffers);
    }
#endif
    return DeinterleaveWords(interleaved, frames, channels, channelBuffers);
  }
  if (sizeof(Sample) == 2 && channels >= 2 && channels <= 8) {
    std::size_t done = 0;
#ifdef AURIVOX_DEINTERLEAVE_WIDE
    if (g_widest == VectorInstructions::kAvx512Vbmi) {
      done = DeinterleaveHalfWordsAvx512(interleaved, frames, channels, channelBuffers);
    }
#endif
    // Stereo has no transpose step: its fixed-layout loop, which the
    // compiler vectorises, is as fast. What AVX-512 steps leave goes to the
    // general loop.
    if (channels == 2) return done;
#ifdef AURIVOX_DEINTERLEAVE_WIDE
    if (g_widest >= VectorInstructions::kAvx2) {
      return DeinterleaveHalfWordsAvx2(interleaved, done, frames, channels, channelBuffers);
    }
#endif
    return DeinterleaveHalfWords(interleaved, done, frames, channels, channelBuffers);
  }
  return 0;
}
#endif

template <typename Sample>
void DeinterleaveWidth(const std::uint8_t* interleaved, std::size_t frames, std::uint32_t channels,
                       float* const* channelBuffers) {
  const bool everyChannelWanted = EveryChannelWanted(channelBuffers, channels);
  std::size_t done = 0;
#ifdef AURIVOX_DEINTERLEAVE_SSE2
  if (everyChannelWanted) done = DeinterleaveInSteps<Sample>(interleaved, frames, channels, channelBuffers);
#endif
  if (everyChannelWanted && done == 0) {
    switch (channels) {
      case 1: return DeinterleaveFixedLayout<Sample, 1>(interleaved, frames, channelBuffers);
      case 2: return DeinterleaveFixedLayout<Sample, 2>(interleaved, frames, channelBuffers);
      case 6: return DeinterleaveFixedLayout<Sample, 6>(interleaved, frames, channelBuffers);
      case 8: return DeinterleaveFixedLayout<Sample, 8>(interleaved, frames, channelBuffers);
      default: break;
    }
  }
  DeinterleaveAnyLayout<Sample>(interleaved, done, frames, channels, channelBuffers);
}

}  // namespace

void DeinterleaveSamples(const std::uint8_t* interleaved, std::size_t frames, std::uint32_t channels,
                         std::uint32_t bytesPerSample, float* const* channelBuffers) {
  if (!interleaved || !channelBuffers || frames == 0) return;
  switch (bytesPerSample) {
    case 1: return DeinterleaveWidth<std::uint8_t>(interleaved, frames, channels, channelBuffers);
    case 2: return DeinterleaveWidth<std::uint16_t>(interleaved, frames, channels, channelBuffers);
    case 3: return DeinterleaveTriples(interleaved, frames, channels, channelBuffers);
    case 4: return DeinterleaveWidth<std::uint32_t>(interleaved, frames, channels, channelBuffers);
    default: return;  // the client type never has another width
  }
}

void LimitDeinterleaveInstructions(VectorInstructions widest) {
#ifdef AURIVOX_DEINTERLEAVE_WIDE
  g_widest = std::min(widest, CpuInstructions());
#else
  (void)widest;
#endif
}

void PendingAudio::Clear() {
  bytes_.clear();
  start_ = 0;
}

void PendingAudio::Compact() {
  if (start_ == 0) return;
  bytes_.erase(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(start_));
  start_ = 0;
}

bool PendingAudio::Reserve(std::int32_t frames, std::uint32_t channels, std::uint32_t bytesPerSample) {
  if (frames < 0) return false;
  // At most 2^31 x 2^32 x 2^32 bytes: checked against max_size before it can wrap.
  const std::uint64_t frameBytes = std::uint64_t{channels} * bytesPerSample;
  const std::uint64_t limit = bytes_.max_size() - size();
  if (frameBytes != 0 && std::uint64_t(frames) > limit / frameBytes) return false;
  const std::size_t wanted = size() + static_cast<std::size_t>(frameBytes * std::uint64_t(frames));
  // Room at the back is enough; otherwise what was handed out makes room first.
  if (bytes_.capacity() - start_ >= wanted) return true;
  Compact();
  try {
    bytes_.reserve(wanted);
  } catch (const std::bad_alloc&) {
    return false;
  } catch (const std::length_error&) {
    return false;
  }
  return true;
}

bool PendingAudio::Append(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return true;
  if (!data) return false;
  // What was handed out is dropped only when the vector would grow anyway, or
  // when it outweighs what is held, so every byte moves at most about once.
  if (start_ > 0 && (bytes_.size() + size > bytes_.capacity() || start_ >= this->size())) Compact();
  try {
    bytes_.insert(bytes_.end(), data, data + size);
  } catch (const std::bad_alloc&) {
    return false;
  } catch (const std::length_error&) {
    return false;
  }
  return true;
}

std::size_t PendingAudio::AvailableFrames(std::uint32_t channels, std::uint32_t bytesPerSample) const {
  if (channels == 0 || bytesPerSample == 0) return 0;
  return size() / bytesPerSample / channels;
}

float* const* PendingAudio::Unfilled(const AudioRequest& request) {
  if (request.filled == 0) return request.buffers;
  try {
    unfilled_.resize(request.channels);
  } catch (const std::bad_alloc&) {
    return nullptr;
  } catch (const std::length_error&) {
    return nullptr;
  }
  // The buffers are raw storage: a 2- or 3-byte sample may start anywhere.
  const std::size_t offset = request.filled * request.bytesPerSample;
  for (std::uint32_t n = 0; n < request.channels; ++n) {
    auto* buffer = reinterpret_cast<std::uint8_t*>(request.buffers[n]);
    unfilled_[n] = buffer ? reinterpret_cast<float*>(buffer + offset) : nullptr;
  }
  return unfilled_.data();
}

void PendingAudio::Deliver(AudioRequest& request) {
  const std::size_t frames = std::min(request.room(), AvailableFrames(request.channels, request.bytesPerSample));
  if (frames == 0) return;
  float* const* buffers = Unfilled(request);
  if (!buffers) return;
  DeinterleaveSamples(bytes_.data() + start_, frames, request.channels, request.bytesPerSample, buffers);
  start_ += frames * request.channels * request.bytesPerSample;
  request.filled += frames;
  if (start_ == bytes_.size()) Clear();
}

bool PendingAudio::Take(const std::uint8_t* data, std::size_t size, AudioRequest& request) {
  const std::size_t frameBytes = std::size_t{request.channels} * request.bytesPerSample;
  if (this->size() != 0 || frameBytes == 0 || !data) {
    // What is held comes first, and a partial frame must be joined.
    if (!Append(data, size)) return false;
    Deliver(request);
    return true;
  }
  const std::size_t frames = std::min(request.room(), size / frameBytes);
  float* const* buffers = Unfilled(request);
  if (!buffers) return false;
  // The rest is kept first, so that running out of memory hands nothing out.
  const std::size_t used = frames * frameBytes;
  if (!Append(data + used, size - used)) return false;
  DeinterleaveSamples(data, frames, request.channels, request.bytesPerSample, buffers);
  request.filled += frames;
  return true;
}

bool PendingAudio::CanPutBack(const AudioRequest& request) {
  return request.bytesPerSample >= 1 && request.bytesPerSample <= 4 &&
         EveryChannelWanted(request.buffers, request.channels);
}

void PendingAudio::PutBack(AudioRequest& request) {
  if (request.filled == 0) return;
  const std::size_t width = request.bytesPerSample;
  const std::size_t bytes = request.filled * request.channels * width;
  if (start_ < bytes) {
    // Within the room Reserve made for the request, so no reallocation.
    try {
      bytes_.insert(bytes_.begin(), bytes - start_, 0);
    } catch (const std::bad_alloc&) {
      return;
    } catch (const std::length_error&) {
      return;
    }
    start_ = bytes;
  }
  start_ -= bytes;
  std::uint8_t* interleaved = bytes_.data() + start_;
  for (std::size_t f = 0; f < request.filled; ++f) {
    for (std::uint32_t n = 0; n < request.channels; ++n, interleaved += width) {
      std::memcpy(interleaved, reinterpret_cast<const std::uint8_t*>(request.buffers[n]) + f * width, width);
    }
  }
  request.filled = 0;
}

}  // namespace windowsmediafoundation
