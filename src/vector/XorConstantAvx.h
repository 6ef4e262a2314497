// The 256-bit body shared by the AVX2 and AVX-512 VL variants; they differ in
// the size of the main block and in the instruction set their file is built
// for (with VL the compiler may use EVEX encodings for the same operations).
#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>
#include <utility>

#include "XorConstantSteps.h"

namespace vectorkernels {
namespace {

inline void XorAligned(unsigned char* p, __m256i v) {
  __m256i* q = reinterpret_cast<__m256i*>(p);
  _mm256_store_si256(q, _mm256_xor_si256(_mm256_load_si256(q), v));
}

inline void XorUnaligned(unsigned char* p, __m256i v) {
  __m256i* q = reinterpret_cast<__m256i*>(p);
  _mm256_storeu_si256(q, _mm256_xor_si256(_mm256_loadu_si256(q), v));
}

// One main block, unrolled in the source so that no compiler keeps it a loop.
template <std::size_t... kVector>
inline void XorAlignedBlock(unsigned char* p, __m256i v, std::index_sequence<kVector...>) {
  (XorAligned(p + 32 * kVector, v), ...);
}

// The main block of kBlock elements runs only at a 4-byte aligned address,
// from the 32-byte boundary on; eight elements at a time and single ones
// finish the rest unaligned.
template <std::int32_t kBlock>
VectorStatus XorAvxBody(std::uint32_t value, std::uint32_t* buffer, std::int32_t length) {
  VectorStatus status;
  if (FinishedEarly(value, buffer, length, &status)) return status;
  unsigned char* p = reinterpret_cast<unsigned char*>(buffer);
  std::int32_t n = length;
  const __m256i v = _mm256_set1_epi32(static_cast<int>(value));

  if (n >= kBlock && IsElementAligned(p)) {
    const std::int32_t peel = ElementsToBoundary(p, 32);
    p = XorElements(p, peel, value);
    n -= peel;
    for (; n >= kBlock; n -= kBlock, p += 4 * kBlock) {
      XorAlignedBlock(p, v, std::make_index_sequence<kBlock / 8>());
    }
  }
  for (; n >= 8; n -= 8, p += 32) XorUnaligned(p, v);
  XorElements(p, n, value);
  return StatusOk;
}

}  // namespace
}  // namespace vectorkernels
