// The public entry and the process-wide set-up behind it. Each test runs in a
// new process of this binary, where nothing has run the set-up yet.
#include "XorConstant.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

#include "DispatchLevel.h"
#include "DispatchState.h"

namespace vectorkernels {
namespace {

constexpr CpuFeatureMask kSse2Set = kFeatureMmx | kFeatureSse | kFeatureSse2;

// Prints a failed check of the child process; the parent shows it on failure.
bool Check(bool ok, const char* what) {
  if (!ok) std::fprintf(stderr, "failed: %s\n", what);
  return ok;
}

void ExpectInFreshProcess(bool (*check)()) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(std::exit(check() ? 0 : 1), ::testing::ExitedWithCode(0), "");
}

bool FirstCallSetsUpAndProcesses() {
  bool ok = Check(CurrentDispatchLevel() == -1, "no level before the first call");
  ok &= Check(EnabledCpuFeatures() == kSse2Set, "MMX, SSE and SSE2 enabled before any selection");
  std::uint32_t row[37];
  for (std::uint32_t i = 0; i < 37; ++i) row[i] = i * 0x01010101u;
  ok &= Check(XorConstantInPlace32(0xFF000000, row + 1, 35) == StatusOk, "status");
  ok &= Check(row[0] == 0 && row[36] == 36 * 0x01010101u, "neighbours untouched");
  ok &= Check(row[1] == 0xFE010101u && row[35] == 0xDC232323u, "first call processed the row");
  const CpuFeatureMask detected = DecodeCpuFeatures(ReadCpuIdSnapshot());
  const DispatchChoice expected = ChooseDispatchLevel(detected, detected);
  ok &= Check(CurrentDispatchLevel() == expected.level, "level of the processor");
  return ok & Check(EnabledCpuFeatures() == expected.enabledFeatures, "enabled features");
}

TEST(XorConstantInPlace32, FirstCallSetsUpTheDispatchAndProcessesItsBuffer) {
  ExpectInFreshProcess(FirstCallSetsUpAndProcesses);
}

bool UncheckedSelectionTakesEnabledAsDetected() {
  std::int32_t level = -1;
  bool ok = Check(SelectDispatchLevel(kUncheckedRequest | 0x81DF, &level) == StatusOk, "status");
  ok &= Check(level == 4, "AVX2 level whatever the processor");
  ok &= Check(EnabledCpuFeatures() == 0x81DF, "enabled set to the request");
  CpuFeatureMask detected = 0;
  ok &= Check(DetectCpuFeatures(&detected) == 1, "detection succeeds");
  ok &= Check(detected == kSse2Set, "detected replaced by the previously enabled set");
  // Checked requests are now judged against that replaced set.
  ok &= Check(SelectDispatchLevel(0x1DF, &level) == StatusFeatureUnavailable, "checked status");
  return ok & Check(level == 2, "AVX dropped for want of the AVX state");
}

TEST(SelectDispatchLevel, UncheckedRequestReplacesTheDetectedFeatures) {
  ExpectInFreshProcess(UncheckedSelectionTakesEnabledAsDetected);
}

}  // namespace
}  // namespace vectorkernels
