// The Wine workarounds, both ways: inert on Windows, in force under Wine.
#include "WineSourceReaderWorkarounds.h"

#include <windows.h>

#include <atomic>
#include <thread>

#include "FakeReaderTest.h"

namespace windowsmediafoundation {
namespace {

class RestartAndRewind : public aurivox_test::FakeReaderTest, public ::testing::WithParamInterface<bool> {};

TEST_P(RestartAndRewind, OnlyWineGetsTheSettlingReadAndTheSkippedRewind) {
  const bool underWine = GetParam();
  ScopedWineDetectionForTesting detection(underWine);
  fake->reads = {aurivox_test::SampleRead({1, 2, 3, 4}), aurivox_test::SampleRead({5, 6, 7, 8})};
  ASSERT_TRUE(Open());
  EXPECT_EQ(fake->readCalls, 1) << "the priming read";
  reader = std::make_unique<MFReader>();  // the old one is released
  EXPECT_EQ(fake->readCalls, underWine ? 2 : 1) << "a read before release waits for the restart";

  fake->sourceAudio.reset();
  EXPECT_FALSE(Open());
  EXPECT_EQ(fake->positions, (underWine ? std::vector<LONGLONG>{0} : std::vector<LONGLONG>{0, 0}))
      << "a reader without streams is rewound on Windows only";
}

INSTANTIATE_TEST_SUITE_P(UnderWineOrNot, RestartAndRewind, ::testing::Bool());

// On Windows the creation runs on the caller's thread without a deadline;
// under Wine one worker thread runs creation after creation, a stuck one is
// given up, and accounted for until it returns, while the next runs on
// another thread.
TEST(ReaderCreation, OnlyWineGivesUpAStuckCreation) {
  IMFSourceReader* reader = nullptr;
  std::atomic<DWORD> creator{0};  // a creation given up on may still write it
  const auto slow = [&](IMFSourceReader**) {
    creator = GetCurrentThreadId();
    Sleep(50);
    return MF_E_UNSUPPORTED_BYTESTREAM_TYPE;
  };
  {
    ScopedWineDetectionForTesting detection(false);
    EXPECT_EQ(CreateSourceReaderWithin(slow, &reader, std::chrono::milliseconds(1)), MF_E_UNSUPPORTED_BYTESTREAM_TYPE);
    EXPECT_EQ(creator.load(), GetCurrentThreadId());
  }
  ScopedWineDetectionForTesting detection(true);
  ASSERT_EQ(CreateSourceReaderWithin(slow, &reader), MF_E_UNSUPPORTED_BYTESTREAM_TYPE);
  const DWORD worker = creator.load();
  EXPECT_NE(worker, GetCurrentThreadId());
  ASSERT_EQ(CreateSourceReaderWithin(slow, &reader), MF_E_UNSUPPORTED_BYTESTREAM_TYPE);
  EXPECT_EQ(creator.load(), worker) << "one thread serves creation after creation";

  std::atomic<bool> release{false};
  const auto stuck = [&](IMFSourceReader**) {
    while (!release) Sleep(5);
    return S_OK;
  };
  EXPECT_EQ(CreateSourceReaderWithin(stuck, &reader, std::chrono::milliseconds(50)), HRESULT_FROM_WIN32(ERROR_TIMEOUT));
  EXPECT_EQ(reader, nullptr);
  EXPECT_EQ(CreateSourceReaderWithin(slow, &reader, std::chrono::seconds(10)), MF_E_UNSUPPORTED_BYTESTREAM_TYPE);
  EXPECT_NE(creator.load(), worker) << "the next creation waits for no stuck thread";
  EXPECT_FALSE(WaitForAbandonedCreations(std::chrono::milliseconds(50)))
      << "the platform must not shut down under a running creation";
  release = true;
  EXPECT_TRUE(WaitForAbandonedCreations(std::chrono::seconds(10)));

  // Given up at once, perhaps before the worker took it: it still runs and is
  // accounted for, and the next creation runs beside it.
  EXPECT_EQ(CreateSourceReaderWithin(slow, &reader, std::chrono::milliseconds(0)), HRESULT_FROM_WIN32(ERROR_TIMEOUT));
  EXPECT_EQ(CreateSourceReaderWithin(slow, &reader, std::chrono::seconds(10)), MF_E_UNSUPPORTED_BYTESTREAM_TYPE);
  EXPECT_TRUE(WaitForAbandonedCreations(std::chrono::seconds(10)));
}

// An idle worker ends; the creation after it starts another worker and is
// not handed to the one that ended.
TEST(ReaderCreation, UnderWineACreationAfterTheWorkerWentIdleRuns) {
  ScopedWineDetectionForTesting detection(true);
  IMFSourceReader* reader = nullptr;
  const auto refused = [](IMFSourceReader**) { return E_ACCESSDENIED; };
  ASSERT_EQ(CreateSourceReaderWithin(refused, &reader), E_ACCESSDENIED);
  Sleep(static_cast<DWORD>(kWineCreationWorkerIdle.count()) + 500);
  EXPECT_EQ(CreateSourceReaderWithin(refused, &reader, std::chrono::seconds(5)), E_ACCESSDENIED);
}

// Wine's sources deadlock now and then when made at once, so under Wine
// creations take turns; on Windows they run side by side.
TEST(ReaderCreation, OnlyWineMakesCreationsTakeTurns) {
  for (const bool underWine : {false, true}) {
    ScopedWineDetectionForTesting detection(underWine);
    std::atomic<int> running{0};
    std::atomic<bool> overlapped{false};
    const auto create = [&](IMFSourceReader**) {
      if (++running == 2) overlapped = true;
      // Waits a while for the other creation to start beside this one.
      for (int i = 0; i < 60 && running < 2; ++i) Sleep(5);
      --running;
      return E_ACCESSDENIED;
    };
    IMFSourceReader* readers[2] = {};
    std::thread other([&] { CreateSourceReaderWithin(create, &readers[1], std::chrono::seconds(10)); });
    EXPECT_EQ(CreateSourceReaderWithin(create, &readers[0], std::chrono::seconds(10)), E_ACCESSDENIED);
    other.join();
    EXPECT_EQ(overlapped, !underWine) << (underWine ? "under Wine" : "on Windows");
  }
}

}  // namespace
}  // namespace windowsmediafoundation
