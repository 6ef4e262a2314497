// Built with AVX2 enabled; called only when the CPU runs it. Everything here
// but the two entry points has internal linkage, so that the linker cannot
// take an inline function built for AVX2 in place of another file's copy.
#include "DeinterleaveAvx2.h"

#include <immintrin.h>

#include <algorithm>

#include "HalfWordTranspose.h"

namespace windowsmediafoundation {
namespace {

// Four samples of frame `low` in the low half, of frame `high` in the high
// half: the second load joins the register without a shuffle.
inline __m256 LoadTwo(const float* low, const float* high) {
  return _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_loadu_ps(low)), _mm_loadu_ps(high), 1);
}

inline __m256i LoadTwo(const std::uint8_t* low, const std::uint8_t* high) {
  return _mm256_inserti128_si256(_mm256_castsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(low))),
                                 _mm_loadu_si128(reinterpret_cast<const __m128i*>(high)), 1);
}

struct Avx2Lanes {
  using Vector = __m256i;
  static Vector Low16(Vector a, Vector b) { return _mm256_unpacklo_epi16(a, b); }
  static Vector High16(Vector a, Vector b) { return _mm256_unpackhi_epi16(a, b); }
  static Vector Low32(Vector a, Vector b) { return _mm256_unpacklo_epi32(a, b); }
  static Vector High32(Vector a, Vector b) { return _mm256_unpackhi_epi32(a, b); }
  static Vector Low64(Vector a, Vector b) { return _mm256_unpacklo_epi64(a, b); }
  static Vector High64(Vector a, Vector b) { return _mm256_unpackhi_epi64(a, b); }
};

// Input bytes gone over channel group by channel group before moving on.
// A step writes to every channel of its group; writing to all channels at
// once would keep eight or more lines in flight in one level 1 set when the
// host's buffers lie a multiple of 4 KiB apart, as equal-sized allocations
// tend to, and the set would evict them half written. The block's input
// stays in level 1 for the next group.
constexpr std::size_t kBlockBytes = 8 * 1024;
constexpr std::size_t kStepFrames = 8;

// Frames f..f+3 sit in the low halves, f+4..f+7 in the high ones, so one 4 x 4
// transpose a half gives eight samples of a channel in a register.
void FourChannels(const float* samples, std::size_t stride, std::size_t begin, std::size_t end, std::uint32_t c,
                  float* const* channelBuffers) {
  float* const out0 = channelBuffers[c];
  float* const out1 = channelBuffers[c + 1];
  float* const out2 = channelBuffers[c + 2];
  float* const out3 = channelBuffers[c + 3];
  for (std::size_t f = begin; f < end; f += kStepFrames) {
    const float* frame = samples + f * stride + c;
    const __m256 r0 = LoadTwo(frame, frame + 4 * stride);
    const __m256 r1 = LoadTwo(frame + stride, frame + 5 * stride);
    const __m256 r2 = LoadTwo(frame + 2 * stride, frame + 6 * stride);
    const __m256 r3 = LoadTwo(frame + 3 * stride, frame + 7 * stride);
    const __m256 t0 = _mm256_unpacklo_ps(r0, r1);
    const __m256 t1 = _mm256_unpackhi_ps(r0, r1);
    const __m256 t2 = _mm256_unpacklo_ps(r2, r3);
    const __m256 t3 = _mm256_unpackhi_ps(r2, r3);
    _mm256_storeu_ps(out0 + f, _mm256_shuffle_ps(t0, t2, _MM_SHUFFLE(1, 0, 1, 0)));
    _mm256_storeu_ps(out1 + f, _mm256_shuffle_ps(t0, t2, _MM_SHUFFLE(3, 2, 3, 2)));
    _mm256_storeu_ps(out2 + f, _mm256_shuffle_ps(t1, t3, _MM_SHUFFLE(1, 0, 1, 0)));
    _mm256_storeu_ps(out3 + f, _mm256_shuffle_ps(t1, t3, _MM_SHUFFLE(3, 2, 3, 2)));
  }
}

// Channels c and c + 1, from loads of four samples that reach two past them.
// `first` is null when only channel c + 1 is wanted: a last odd channel
// goes through the pair before it, which beats moving its samples one by one.
void TwoChannels(const float* samples, std::size_t stride, std::size_t begin, std::size_t end, std::uint32_t c,
                 float* first, float* second) {
  for (std::size_t f = begin; f < end; f += kStepFrames) {
    const float* frame = samples + f * stride + c;
    const __m256 a =
        _mm256_unpacklo_ps(LoadTwo(frame, frame + 4 * stride), LoadTwo(frame + stride, frame + 5 * stride));
    const __m256 b = _mm256_unpacklo_ps(LoadTwo(frame + 2 * stride, frame + 6 * stride),
                                        LoadTwo(frame + 3 * stride, frame + 7 * stride));
    if (first) _mm256_storeu_ps(first + f, _mm256_shuffle_ps(a, b, _MM_SHUFFLE(1, 0, 1, 0)));
    _mm256_storeu_ps(second + f, _mm256_shuffle_ps(a, b, _MM_SHUFFLE(3, 2, 3, 2)));
  }
}

}  // namespace

// The last channels' loads reach past their frame, so the steps stop one
// frame short of the end; every step is eight frames.
std::size_t DeinterleaveWordsAvx2(const std::uint8_t* interleaved, std::size_t frames, std::uint32_t channels,
                                  float* const* channelBuffers) {
  const auto* samples = reinterpret_cast<const float*>(interleaved);
  const std::size_t stride = channels;
  const std::size_t done = frames == 0 ? 0 : (frames - 1) / kStepFrames * kStepFrames;
  const std::size_t blockFrames =
      std::max(kStepFrames, kBlockBytes / (stride * sizeof(float)) / kStepFrames * kStepFrames);
  for (std::size_t begin = 0; begin < done; begin += blockFrames) {
    const std::size_t end = std::min(done, begin + blockFrames);
    std::uint32_t c = 0;
    for (; c + 4 <= channels; c += 4) FourChannels(samples, stride, begin, end, c, channelBuffers);
    for (; c + 2 <= channels; c += 2) {
      TwoChannels(samples, stride, begin, end, c, channelBuffers[c], channelBuffers[c + 1]);
    }
    if (c < channels) TwoChannels(samples, stride, begin, end, c - 1, nullptr, channelBuffers[c]);
  }
  return done;
}

// The SSE2 step's transpose, with frames f..f+7 in the low halves and
// f+8..f+15 in the high ones.
std::size_t DeinterleaveHalfWordsAvx2(const std::uint8_t* interleaved, std::size_t first, std::size_t frames,
                                      std::uint32_t channels, float* const* channelBuffers) {
  const std::size_t frameBytes = std::size_t{channels} * 2;
  std::size_t f = first;
  for (; f + 16 <= frames && (f + 15) * frameBytes + 16 <= frames * frameBytes; f += 16) {
    const std::uint8_t* frame = interleaved + f * frameBytes;
    __m256i r[8];
    for (std::size_t k = 0; k < 8; ++k) r[k] = LoadTwo(frame + k * frameBytes, frame + (k + 8) * frameBytes);
    __m256i rows[8];
    TransposeHalfWords<Avx2Lanes>(r, rows);
    for (std::uint32_t c = 0; c < channels; ++c) {
      auto* destination = reinterpret_cast<std::uint8_t*>(channelBuffers[c]) + f * 2;
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(destination), rows[c]);
    }
  }
  return f;
}

}  // namespace windowsmediafoundation
