// Process-wide processor features: detected once, and the feature set the
// kernel dispatch was configured for. Lock-free and safe to call from any thread.
#pragma once

#include <cstdint>

#include "CpuFeatures.h"
#include "Status.h"

namespace vectorkernels {

// Fills `mask` from the running processor on the first call and from the
// cached result afterwards. Returns 1 on success.
int DetectCpuFeatures(CpuFeatureMask* mask);

// Derives a dispatch level from `requested` checked against the detected
// features, and records the feature set it needs as the enabled one.
// A request with kUncheckedRequest instead takes the enabled set as detected.
VectorStatus SelectDispatchLevel(CpuFeatureMask requested, std::int32_t* level);

// The feature set of the last selection (MMX, SSE and SSE2 before any).
CpuFeatureMask EnabledCpuFeatures();

}  // namespace vectorkernels
