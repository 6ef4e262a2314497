// The public entry and the process-wide set-up behind it. Tests of a first
// call run in a new process of this binary, where nothing has run the set-up.
#include "XorConstant.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>
#include <vector>

#include "DispatchLevel.h"
#include "DispatchState.h"

namespace vectorkernels {
namespace {

constexpr std::uint32_t kOpaque = 0xFF000000;
constexpr std::int32_t kRowPixels = 1920;

DispatchChoice ExpectedChoice() {
  const CpuFeatureMask detected = DecodeCpuFeatures(ReadCpuIdSnapshot());
  return ChooseDispatchLevel(detected, detected);
}

// Prints a failed check of a child process; its output shows in the parent's
// failure message.
bool Check(bool ok, const char* what) {
  if (!ok) std::fprintf(stderr, "failed: %s\n", what);
  return ok;
}

std::vector<std::uint32_t> XrgbRow(std::uint32_t seed) {
  std::vector<std::uint32_t> row(kRowPixels);
  for (std::size_t i = 0; i < row.size(); ++i) {
    row[i] = (seed * 2654435761u + static_cast<std::uint32_t>(i) * 40503u) & 0x00FFFFFF;
  }
  return row;
}

bool IsOpaqueVersionOf(const std::vector<std::uint32_t>& row, std::uint32_t seed) {
  std::vector<std::uint32_t> expected = XrgbRow(seed);
  for (std::uint32_t& pixel : expected) pixel |= kOpaque;
  return row == expected;
}

// Runs `check` in a new process of this test binary and expects it to pass.
void ExpectInFreshProcess(bool (*check)()) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(std::exit(check() ? 0 : 1), ::testing::ExitedWithCode(0), "");
}

bool FirstCallSetsUpAndProcesses() {
  bool ok = Check(CurrentDispatchLevel() == -1, "no level before the first call");
  ok &= Check(EnabledCpuFeatures() == (kFeatureMmx | kFeatureSse | kFeatureSse2),
              "MMX, SSE and SSE2 enabled before any selection");
  std::vector<std::uint32_t> row = XrgbRow(1);
  ok &= Check(XorConstantInPlace32(kOpaque, row.data(), kRowPixels) == StatusOk, "status");
  ok &= Check(IsOpaqueVersionOf(row, 1), "first call processed the row");
  const DispatchChoice expected = ExpectedChoice();
  ok &= Check(CurrentDispatchLevel() == expected.level, "level of the processor");
  ok &= Check(EnabledCpuFeatures() == expected.enabledFeatures, "enabled features");
  return ok;
}

TEST(XorConstantInPlace32, FirstCallSetsUpTheDispatchAndProcessesItsBuffer) {
  ExpectInFreshProcess(FirstCallSetsUpAndProcesses);
}

bool ConcurrentFirstCallsAllProcess() {
  constexpr int kThreads = 8;
  std::vector<std::vector<std::uint32_t>> rows;
  for (int t = 0; t < kThreads; ++t) rows.push_back(XrgbRow(static_cast<std::uint32_t>(t)));
  std::vector<VectorStatus> statuses(kThreads, -1);
  std::atomic<bool> go{false};
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      while (!go.load(std::memory_order_acquire)) std::this_thread::yield();
      statuses[t] = XorConstantInPlace32(kOpaque, rows[t].data(), kRowPixels);
    });
  }
  go.store(true, std::memory_order_release);
  for (std::thread& thread : threads) thread.join();

  bool ok = true;
  for (int t = 0; t < kThreads; ++t) {
    ok &= Check(statuses[t] == StatusOk, "status of a thread");
    ok &= Check(IsOpaqueVersionOf(rows[t], static_cast<std::uint32_t>(t)), "row of a thread");
  }
  return ok & Check(CurrentDispatchLevel() == ExpectedChoice().level, "level after the race");
}

TEST(XorConstantInPlace32, ConcurrentFirstCallsAllProcessAndAgreeOnTheLevel) {
  ExpectInFreshProcess(ConcurrentFirstCallsAllProcess);
}

bool UncheckedSelectionTakesEnabledAsDetected() {
  std::int32_t level = -1;
  bool ok = Check(SelectDispatchLevel(kUncheckedRequest | 0x81DF, &level) == StatusOk, "status");
  ok &= Check(level == 4, "AVX2 level whatever the processor");
  ok &= Check(EnabledCpuFeatures() == 0x81DF, "enabled set to the request");
  CpuFeatureMask detected = 0;
  ok &= Check(DetectCpuFeatures(&detected) == 1, "detection succeeds");
  ok &= Check(detected == (kFeatureMmx | kFeatureSse | kFeatureSse2),
              "detected replaced by the previously enabled set");
  // Checked requests are now judged against that replaced set.
  ok &= Check(SelectDispatchLevel(0x1DF, &level) == StatusFeatureUnavailable, "checked status");
  return ok & Check(level == 2, "AVX dropped for want of the AVX state");
}

TEST(SelectDispatchLevel, UncheckedRequestReplacesTheDetectedFeatures) {
  ExpectInFreshProcess(UncheckedSelectionTakesEnabledAsDetected);
}

TEST(XorConstantInPlace32, ReportsBadArgumentsThroughTheDispatch) {
  std::uint32_t pixel = 0x00123456;
  EXPECT_EQ(XorConstantInPlace32(kOpaque, nullptr, 1), StatusNullPointer);
  EXPECT_EQ(XorConstantInPlace32(kOpaque, &pixel, 0), StatusBadLength);
  EXPECT_EQ(XorConstantInPlace32(kOpaque, &pixel, -1), StatusBadLength);
  EXPECT_EQ(XorConstantInPlace32(0, &pixel, 1), StatusOk);
  EXPECT_EQ(pixel, 0x00123456u);
}

TEST(XorConstantInPlace32, MarksARowOpaqueAndBackAtAnUnalignedAddress) {
  std::vector<std::uint32_t> storage(kRowPixels + 1);
  unsigned char* bytes = reinterpret_cast<unsigned char*>(storage.data()) + 2;
  std::vector<std::uint32_t> row = XrgbRow(5);
  std::memcpy(bytes, row.data(), 4 * row.size());
  auto* unaligned = reinterpret_cast<std::uint32_t*>(bytes);

  ASSERT_EQ(XorConstantInPlace32(kOpaque, unaligned, kRowPixels), StatusOk);
  std::vector<std::uint32_t> opaque(kRowPixels);
  std::memcpy(opaque.data(), bytes, 4 * opaque.size());
  EXPECT_TRUE(IsOpaqueVersionOf(opaque, 5));

  ASSERT_EQ(XorConstantInPlace32(kOpaque, unaligned, kRowPixels), StatusOk);
  std::vector<std::uint32_t> back(kRowPixels);
  std::memcpy(back.data(), bytes, 4 * back.size());
  EXPECT_EQ(back, row);
}

}  // namespace
}  // namespace vectorkernels
