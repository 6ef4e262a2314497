// Every variant, called directly, against a byte-wise reference; then the
// public entry and the process-wide set-up behind it.
#include "XorConstant.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <tuple>
#include <vector>

#include "DispatchLevel.h"
#include "DispatchState.h"
#include "XorConstantVariants.h"

namespace vectorkernels {
namespace {

constexpr std::size_t kGuardBytes = 64;
constexpr std::size_t kLine = 32;

// Bytes from a 64-byte boundary on, filled with a pattern that differs per seed.
struct Area {
  Area(std::size_t bytes, std::uint32_t seed) : storage(bytes + 64), size(bytes) {
    begin = storage.data() + (64 - reinterpret_cast<std::uintptr_t>(storage.data()) % 64) % 64;
    std::uint32_t x = seed * 2654435761u + 1;
    for (std::size_t i = 0; i < size; ++i) {
      x ^= x << 13;
      x ^= x >> 17;
      x ^= x << 5;
      begin[i] = static_cast<unsigned char>(x);
    }
  }

  // Deliberately possibly misaligned: the kernels accept any byte address.
  std::uint32_t* At(std::size_t offset) { return reinterpret_cast<std::uint32_t*>(begin + offset); }
  bool operator==(const Area& other) const { return std::memcmp(begin, other.begin, size) == 0; }

  std::vector<unsigned char> storage;
  std::size_t size;
  unsigned char* begin;
};

class XorVariantTest : public ::testing::TestWithParam<std::int32_t> {
 protected:
  void SetUp() override {
    const CpuFeatureMask detected = DecodeCpuFeatures(ReadCpuIdSnapshot());
    if (!CanRunVariant(GetParam(), detected)) GTEST_SKIP() << "this processor cannot run it";
  }
  VectorStatus Run(std::uint32_t value, std::uint32_t* buffer, std::int32_t length) {
    return XorConstantVariant(GetParam())(value, buffer, length);
  }
};

TEST_P(XorVariantTest, EveryByteOffsetInALineAndEveryTailLengthLeavingTheGuardsAlone) {
  std::vector<std::int32_t> lengths = {255, 256, 257, 1023, 1920, 4100};
  for (std::int32_t length = 1; length <= 200; ++length) lengths.push_back(length);
  for (std::uint32_t value : {0xFF000000u, 0x9E3779B9u, 0xFFFFFFFFu, 0x00000001u}) {
    for (std::size_t offset = kGuardBytes; offset < kGuardBytes + kLine; ++offset) {
      for (std::int32_t length : lengths) {
        const std::size_t size = 2 * kGuardBytes + kLine + 4 * static_cast<std::size_t>(length);
        const std::uint32_t seed = value ^ static_cast<std::uint32_t>(offset * 7919 + length);
        Area actual(size, seed), expected(size, seed);
        for (std::int32_t i = 0; i < 4 * length; ++i) expected.begin[offset + i] ^= value >> (8 * (i % 4));
        ASSERT_EQ(Run(value, actual.At(offset), length), StatusOk);
        ASSERT_TRUE(actual == expected) << std::hex << value << std::dec << " at " << offset << ", length " << length;
      }
    }
  }
}

TEST_P(XorVariantTest, BadArgumentsAreReportedNullFirstAndNothingIsTouched) {
  Area actual(kLine, 1);
  const Area untouched(kLine, 1);
  const std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
  const std::tuple<std::uint32_t, bool, std::int32_t, VectorStatus> kCases[] = {  // value, null, length, status
      {0xFF000000, true, 16, StatusNullPointer}, {0, true, 16, StatusNullPointer}, {1, true, -1, StatusNullPointer},
      {0xFF000000, false, 0, StatusBadLength},   {0, false, 0, StatusBadLength},   {1, false, kMin, StatusBadLength}};
  for (const auto& [value, null, length, status] : kCases) {
    EXPECT_EQ(Run(value, null ? nullptr : actual.At(1), length), status) << length;
  }
  EXPECT_TRUE(actual == untouched);
}

INSTANTIATE_TEST_SUITE_P(AllLevels, XorVariantTest, ::testing::Range(0, kHighestDispatchLevel + 1),
                         [](const auto& info) { return "Level" + std::to_string(info.param); });

constexpr CpuFeatureMask kSse2Set = kFeatureMmx | kFeatureSse | kFeatureSse2;

// Prints a failed check of a child process; the parent shows it on failure.
bool Check(bool ok, const char* what) {
  if (!ok) std::fprintf(stderr, "failed: %s\n", what);
  return ok;
}

// Runs `check` in a new process of this binary, where nothing has run the set-up.
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
  ok &= Check(row[0] == 0 && row[36] == 0x24242424u, "neighbours untouched");
  ok &= Check(row[1] == 0xFE010101u && row[35] == 0xDC232323u, "first call processed the row");
  const CpuFeatureMask detected = DecodeCpuFeatures(ReadCpuIdSnapshot());
  const DispatchChoice expected = ChooseDispatchLevel(detected, detected);
  ok &= Check(CurrentDispatchLevel() == expected.level, "level of the processor");
  return ok & Check(EnabledCpuFeatures() == expected.enabledFeatures, "enabled features");
}

bool UncheckedSelectionTakesEnabledAsDetected() {
  std::int32_t level = -1;
  bool ok = Check(SelectDispatchLevel(kUncheckedRequest | 0x81DF, &level) == StatusOk, "status");
  ok &= Check(level == 4 && EnabledCpuFeatures() == 0x81DF, "AVX2 level and features whatever the processor");
  CpuFeatureMask detected = 0;
  ok &= Check(DetectCpuFeatures(&detected) == 1 && detected == kSse2Set, "detected replaced by the enabled set");
  // Checked requests are now judged against that replaced set.
  ok &= Check(SelectDispatchLevel(0x1DF, &level) == StatusFeatureUnavailable, "checked status");
  return ok & Check(level == 2, "AVX dropped for want of the AVX state");
}

TEST(XorConstantInPlace32, FirstCallSetsUpTheDispatchAndAnUncheckedRequestReplacesTheDetectedFeatures) {
  ExpectInFreshProcess(FirstCallSetsUpAndProcesses);
  ExpectInFreshProcess(UncheckedSelectionTakesEnabledAsDetected);
}

}  // namespace
}  // namespace vectorkernels
