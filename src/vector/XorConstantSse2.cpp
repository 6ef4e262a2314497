// 128-bit variants (dispatch levels 0 to 3).
#include "Processor.h"
#include "XorConstantSteps.h"
#include "XorConstantVariants.h"

namespace vectorkernels {
namespace {

inline void XorVector(unsigned char* p, __m128i v) {
  __m128i* q = reinterpret_cast<__m128i*>(p);
  _mm_store_si128(q, _mm_xor_si128(_mm_load_si128(q), v));
}

inline VectorStatus XorSse2Body(std::uint32_t value, std::uint32_t* buffer, std::int32_t length) {
  VectorStatus status;
  if (FinishedEarly(value, buffer, length, &status)) return status;
  unsigned char* p = reinterpret_cast<unsigned char*>(buffer);
  std::int32_t n = length;
  const std::uint64_t pair = PairOf(value);

  // Vectors would straddle elements: pairs, then the odd one.
  if (!IsElementAligned(p)) {
    for (; n >= 2; n -= 2, p += 8) XorPair(p, pair);
    if (n == 1) XorElement(p, value);
    return StatusOk;
  }
  // Peel up to the 16-byte boundary. A count too short to reach it is at most
  // two elements, which the pair and single steps below cover unaligned.
  const std::int32_t peel = ElementsToBoundary(p, 16);
  if (n >= peel) {
    p = XorElements(p, peel, value);
    n -= peel;
  }
  const __m128i v = _mm_set1_epi32(static_cast<int>(value));
  for (; n >= 16; n -= 16, p += 64) {
    XorVector(p, v);
    XorVector(p + 16, v);
    XorVector(p + 32, v);
    XorVector(p + 48, v);
  }
  if (n >= 8) {
    XorVector(p, v);
    XorVector(p + 16, v);
    n -= 8;
    p += 32;
  }
  if (n >= 4) {
    XorVector(p, v);
    n -= 4;
    p += 16;
  }
  if (n >= 2) {
    XorPair(p, pair);
    n -= 2;
    p += 8;
  }
  if (n == 1) XorElement(p, value);
  return StatusOk;
}

// Leaves no dirty upper halves behind, so the caller's later SSE code pays no
// AVX transition penalty.
AURIVOX_TARGET_AVX void ClearUpperVectorState() { _mm256_zeroupper(); }

}  // namespace

VectorStatus XorConstantInPlace32Sse2(std::uint32_t value, std::uint32_t* buffer,
                                      std::int32_t length) {
  return XorSse2Body(value, buffer, length);
}

VectorStatus XorConstantInPlace32Sse2ClearUpper(std::uint32_t value, std::uint32_t* buffer,
                                                std::int32_t length) {
  const VectorStatus status = XorSse2Body(value, buffer, length);
  ClearUpperVectorState();
  return status;
}

}  // namespace vectorkernels
