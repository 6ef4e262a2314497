// Choice of a kernel dispatch level (0 to 5) from a requested feature mask and
// the features the processor has, as a pure function.
#pragma once

#include <cstdint>

#include "CpuFeatures.h"
#include "Status.h"

namespace vectorkernels {

// A request with this bit skips every check against the processor.
constexpr CpuFeatureMask kUncheckedRequest = CpuFeatureMask{1} << 63;
// Bits above the highest known feature.
constexpr CpuFeatureMask kUnknownFeatures = 0x7FFFFFF000000000;

constexpr std::int32_t kHighestDispatchLevel = 5;

struct DispatchChoice {
  std::int32_t level = 0;
  CpuFeatureMask enabledFeatures = 0;
  VectorStatus status = StatusOk;
};

// `detected` is not consulted for a request carrying kUncheckedRequest.
DispatchChoice ChooseDispatchLevel(CpuFeatureMask requested, CpuFeatureMask detected);

}  // namespace vectorkernels
