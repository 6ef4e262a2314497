#include "aurivox/Aurivox.h"

#include <gtest/gtest.h>
#include <mfapi.h>

// Work queues can be allocated only while Media Foundation is started.
static bool MediaFoundationRunning() {
  DWORD queue = 0;
  if (FAILED(MFAllocateWorkQueue(&queue))) return false;
  MFUnlockWorkQueue(queue);
  return true;
}

TEST(Module, FirstInitializeStartsAndLastTerminateStopsMediaFoundationAgainAndAgain) {
  for (int run = 0; run < 2; ++run) {
    ASSERT_FALSE(MediaFoundationRunning());
    Aurivox::Initialize();
    EXPECT_TRUE(MediaFoundationRunning());
    Aurivox::Initialize();
    Aurivox::Terminate();
    EXPECT_TRUE(MediaFoundationRunning()) << "an inner Terminate must not shut down";
    Aurivox::Terminate();
  }
  EXPECT_FALSE(MediaFoundationRunning());
}
