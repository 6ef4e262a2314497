// Dispatch level 5. Built with AVX-512 F and VL enabled for the whole file; the
// vectors stay 256 bits wide.
#include "XorConstantAvx.h"
#include "XorConstantVariants.h"

namespace vectorkernels {

// Four vectors per block.
VectorStatus XorConstantInPlace32Avx512Vl(std::uint32_t value, std::uint32_t* buffer,
                                          std::int32_t length) {
  return XorAvxBody<32>(value, buffer, length);
}

}  // namespace vectorkernels
