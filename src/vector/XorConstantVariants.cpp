#include "XorConstantVariants.h"

namespace vectorkernels {

CpuFeatureMask VariantRequiredFeatures(std::int32_t level) {
  switch (level) {
    case 3:
      return kFeatureSse2 | kFeatureAvx | kFeatureAvxState;
    case 4:
      return kFeatureAvx2Group | kFeatureAvxState;
    case 5:
      return kFeatureAvx512F | kFeatureAvx512Vl | kFeatureAvxState | kFeatureAvx512State;
    default:
      return kFeatureSse2;
  }
}

const char* VariantName(std::int32_t level) {
  switch (level) {
    case 3:
      return "SSE2+vzeroupper";
    case 4:
      return "AVX2";
    case 5:
      return "AVX-512VL";
    default:
      return "SSE2";
  }
}

}  // namespace vectorkernels
