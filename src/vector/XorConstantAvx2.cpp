// Dispatch level 4. Built with AVX2 enabled for the whole file.
#include "XorConstantAvx.h"
#include "XorConstantVariants.h"

namespace vectorkernels {

// Sixteen vectors per block.
VectorStatus XorConstantInPlace32Avx2(std::uint32_t value, std::uint32_t* buffer,
                                      std::int32_t length) {
  return XorAvxBody<128>(value, buffer, length);
}

}  // namespace vectorkernels
