#include "XorConstant.h"

#include <atomic>

#include "DispatchState.h"

namespace vectorkernels {
namespace {

// Racing first calls store the same level, so no lock is needed.
std::atomic<std::int32_t> dispatchLevel{-1};

// Entry -1 of the table: sets up the dispatch, then calls again with the
// caller's arguments, which now reach the chosen variant.
VectorStatus InitThenXorConstant(std::uint32_t value, std::uint32_t* buffer, std::int32_t length) {
  InitDispatch();
  return XorConstantInPlace32(value, buffer, length);
}

// Indexed by dispatchLevel + 1. The four SSE2 slots run the same body; only
// level 3 ends by clearing the upper vector state.
constexpr XorConstantFunction kVariants[] = {
    InitThenXorConstant,
    XorConstantInPlace32Sse2,
    XorConstantInPlace32Sse2,
    XorConstantInPlace32Sse2,
    XorConstantInPlace32Sse2ClearUpper,
    XorConstantInPlace32Avx2,
    XorConstantInPlace32Avx512Vl,
};

}  // namespace

VectorStatus XorConstantInPlace32(std::uint32_t value, std::uint32_t* buffer, std::int32_t length) {
  return kVariants[dispatchLevel.load(std::memory_order_acquire) + 1](value, buffer, length);
}

VectorStatus InitDispatch() {
  // CPUID always exists on x86-64, so detection cannot fail.
  CpuFeatureMask detected = 0;
  DetectCpuFeatures(&detected);
  std::int32_t level = 0;
  const VectorStatus status = SelectDispatchLevel(detected, &level);
  dispatchLevel.store(level, std::memory_order_release);
  // The vendor is reported only; it never changes the level.
  return IsGenuineIntel(CpuId(0)) ? status : StatusNotGenuineIntel;
}

std::int32_t CurrentDispatchLevel() { return dispatchLevel.load(std::memory_order_acquire); }

XorConstantFunction XorConstantVariant(std::int32_t level) { return kVariants[level + 1]; }

}  // namespace vectorkernels
