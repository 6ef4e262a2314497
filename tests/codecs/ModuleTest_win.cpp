#include "aurivox/Aurivox.h"

#include <gtest/gtest.h>
#include <mfapi.h>

namespace {

// Work queues can be allocated only while Media Foundation is started.
bool MediaFoundationRunning() {
  DWORD queue = 0;
  return SUCCEEDED(MFAllocateWorkQueue(&queue)) && SUCCEEDED(MFUnlockWorkQueue(queue));
}

// A host may nest Initialize and Terminate; only the last Terminate stops the
// platform, and a balanced run can start it again.
TEST(Module, FirstInitializeStartsAndLastTerminateStopsMediaFoundation) {
  Aurivox::Initialize();
  EXPECT_TRUE(MediaFoundationRunning());
  Aurivox::Initialize();
  Aurivox::Terminate();
  EXPECT_TRUE(MediaFoundationRunning()) << "an inner Terminate must not shut down";
  Aurivox::Terminate();
  EXPECT_FALSE(MediaFoundationRunning());
  Aurivox::Initialize();
  EXPECT_TRUE(MediaFoundationRunning());
  Aurivox::Terminate();
}

}  // namespace
