// Every variant, called directly, against a byte-wise reference; then the
// public entry and the process-wide set-up behind it.
#include "XorConstant.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <limits>
#include <numeric>
#include <vector>

#include "DispatchLevel.h"
#include "DispatchState.h"
#include "XorConstantVariants.h"

namespace vectorkernels {
namespace {

constexpr std::size_t kGuardBytes = 64;
constexpr std::size_t kLine = 32;

class XorVariantTest : public ::testing::TestWithParam<std::int32_t> {};

// Offsets past the front guard run through every address of a vector line,
// wherever the allocation starts.
TEST_P(XorVariantTest, EveryByteOffsetAndTailLengthLeavingTheGuardsAloneAndBadArgumentsReported) {
  if (!CanRunVariant(GetParam(), DecodeCpuFeatures(ReadCpuIdSnapshot()))) GTEST_SKIP() << "not on this processor";
  const XorConstantFunction run = XorConstantVariant(GetParam());
  std::vector<std::int32_t> lengths = {255, 256, 257, 1023, 1920, 4100};
  for (std::int32_t length = 1; length <= 200; ++length) lengths.push_back(length);
  for (std::uint32_t value : {0xFF000000u, 0x9E3779B9u, 0xFFFFFFFFu, 0x00000001u}) {
    for (std::size_t offset = kGuardBytes; offset < kGuardBytes + kLine; ++offset) {
      for (std::int32_t length : lengths) {
        std::vector<unsigned char> actual(2 * kGuardBytes + kLine + 4 * static_cast<std::size_t>(length));
        std::iota(actual.begin(), actual.end(), static_cast<unsigned char>(length));
        std::vector<unsigned char> expected = actual;
        for (std::int32_t i = 0; i < 4 * length; ++i) expected[offset + i] ^= value >> (8 * (i % 4));
        // Deliberately possibly misaligned: the kernels accept any byte address.
        ASSERT_EQ(run(value, reinterpret_cast<std::uint32_t*>(actual.data() + offset), length), StatusOk);
        ASSERT_EQ(actual, expected) << std::hex << value << std::dec << " at " << offset << ", length " << length;
      }
    }
  }
  // The null buffer is reported before the length, and the length before a constant of 0.
  std::vector<unsigned char> untouched(kLine, 0xA5), actual = untouched;
  std::uint32_t* const misaligned = reinterpret_cast<std::uint32_t*>(actual.data() + 1);
  EXPECT_EQ(run(0, nullptr, 0), StatusNullPointer);
  EXPECT_EQ(run(0, misaligned, 0), StatusBadLength);
  EXPECT_EQ(run(1, misaligned, std::numeric_limits<std::int32_t>::min()), StatusBadLength);
  EXPECT_EQ(actual, untouched);
}

// Each instance's index is its dispatch level.
INSTANTIATE_TEST_SUITE_P(AllLevels, XorVariantTest, ::testing::Range(0, kHighestDispatchLevel + 1));

// Prints a failed check of the child process; the parent shows it on failure.
bool Check(bool ok, const char* what) {
  if (!ok) std::fprintf(stderr, "failed: %s\n", what);
  return ok;
}

bool FirstCallSetsUpThenAnUncheckedRequestReplacesTheDetectedFeatures() {
  bool ok = Check(CurrentDispatchLevel() == -1, "no level before the first call");
  ok &= Check(EnabledCpuFeatures() == (kFeatureMmx | kFeatureSse | kFeatureSse2), "SSE2 set before any selection");
  std::uint32_t row[37];
  for (std::uint32_t i = 0; i < 37; ++i) row[i] = i * 0x01010101u;
  ok &= Check(XorConstantInPlace32(0xFF000000, row + 1, 35) == StatusOk, "status");
  ok &= Check(row[0] == 0 && row[36] == 0x24242424u, "neighbours untouched");
  ok &= Check(row[1] == 0xFE010101u && row[35] == 0xDC232323u, "first call processed the row");
  const CpuFeatureMask processor = DecodeCpuFeatures(ReadCpuIdSnapshot());
  const DispatchChoice expected = ChooseDispatchLevel(processor, processor);
  ok &= Check(CurrentDispatchLevel() == expected.level, "level of the processor");
  ok &= Check(EnabledCpuFeatures() == expected.enabledFeatures, "enabled features");

  std::int32_t level = -1;
  ok &= Check(SelectDispatchLevel(kUncheckedRequest | 0x81DF, &level) == StatusOk && level == 4, "unchecked AVX2");
  ok &= Check(EnabledCpuFeatures() == 0x81DF, "enabled set to the request whatever the processor");
  ok &= Check(SelectDispatchLevel(kUncheckedRequest | 0x7, &level) == StatusOk && level == 0, "unchecked SSE2");
  CpuFeatureMask detected = 0;
  ok &= Check(DetectCpuFeatures(&detected) == 1 && detected == 0x81DF, "detected replaced by the enabled set");
  // Checked requests are now judged against that replaced set, which lacks the AVX state.
  ok &= Check(SelectDispatchLevel(0x1DF, &level) == StatusFeatureUnavailable && level == 2, "checked request");
  return ok;
}

// In a new process of this binary, where nothing has run the set-up yet.
TEST(XorConstantInPlace32, FirstCallSetsUpTheDispatchAndAnUncheckedRequestReplacesTheDetectedFeatures) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(std::exit(FirstCallSetsUpThenAnUncheckedRequestReplacesTheDetectedFeatures() ? 0 : 1),
              ::testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace vectorkernels
