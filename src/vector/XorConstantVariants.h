// The variants of XorConstantInPlace32, one per dispatch level, and what each
// needs from the processor. Only the dispatch, tests and benchmarks call them
// directly; everyone else goes through XorConstantInPlace32.
#pragma once

#include <cstdint>

#include "CpuFeatures.h"
#include "Status.h"

namespace vectorkernels {

using XorConstantFunction = VectorStatus (*)(std::uint32_t value, std::uint32_t* buffer,
                                             std::int32_t length);

// Levels 0 to 2: 128-bit SSE2 body.
VectorStatus XorConstantInPlace32Sse2(std::uint32_t value, std::uint32_t* buffer,
                                      std::int32_t length);
// Level 3: the SSE2 body, then the upper vector state cleared for AVX code.
VectorStatus XorConstantInPlace32Sse2ClearUpper(std::uint32_t value, std::uint32_t* buffer,
                                                std::int32_t length);
// Level 4: 256-bit AVX2.
VectorStatus XorConstantInPlace32Avx2(std::uint32_t value, std::uint32_t* buffer,
                                      std::int32_t length);
// Level 5: 256-bit vectors of AVX-512 VL.
VectorStatus XorConstantInPlace32Avx512Vl(std::uint32_t value, std::uint32_t* buffer,
                                          std::int32_t length);

// The features the instructions of the variant at `level` (0 to 5) need.
CpuFeatureMask VariantRequiredFeatures(std::int32_t level);

// A short name of the instruction set of the variant at `level`.
const char* VariantName(std::int32_t level);

// Whether a processor with `detected` features can run the variant at `level`.
inline bool CanRunVariant(std::int32_t level, CpuFeatureMask detected) {
  const CpuFeatureMask required = VariantRequiredFeatures(level);
  return (detected & required) == required;
}

}  // namespace vectorkernels
