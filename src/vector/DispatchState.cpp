#include "DispatchState.h"

#include <atomic>

#include "DispatchLevel.h"

namespace vectorkernels {
namespace {

// Racing first callers compute and store the same values, so plain atomic
// stores suffice; the valid flag is published after the mask it guards.
std::atomic<CpuFeatureMask> detectedFeatures{0};
std::atomic<std::int32_t> detectedFeaturesValid{0};
std::atomic<CpuFeatureMask> enabledFeatures{kFeatureMmx | kFeatureSse | kFeatureSse2};

void StoreDetectedFeatures(CpuFeatureMask mask) {
  detectedFeatures.store(mask, std::memory_order_relaxed);
  detectedFeaturesValid.store(1, std::memory_order_release);
}

}  // namespace

int DetectCpuFeatures(CpuFeatureMask* mask) {
  if (detectedFeaturesValid.load(std::memory_order_acquire) == 0) {
    StoreDetectedFeatures(DecodeCpuFeatures(ReadCpuIdSnapshot()));
  }
  *mask = detectedFeatures.load(std::memory_order_relaxed);
  return 1;
}

VectorStatus SelectDispatchLevel(CpuFeatureMask requested, std::int32_t* level) {
  CpuFeatureMask detected = 0;
  if ((requested & kUncheckedRequest) != 0) {
    detected = enabledFeatures.load(std::memory_order_relaxed);
    StoreDetectedFeatures(detected);
  } else {
    DetectCpuFeatures(&detected);
  }
  const DispatchChoice choice = ChooseDispatchLevel(requested, detected);
  enabledFeatures.store(choice.enabledFeatures, std::memory_order_relaxed);
  *level = choice.level;
  return choice.status;
}

CpuFeatureMask EnabledCpuFeatures() { return enabledFeatures.load(std::memory_order_relaxed); }

}  // namespace vectorkernels
