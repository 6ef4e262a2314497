// The host starts the module before it makes decoders and stops it after the
// last one is gone; every test process does the same.
#include <gtest/gtest.h>
#include <chrono>
#include <thread>

#include "aurivox/Aurivox.h"

namespace {

struct ModuleEnvironment : ::testing::Environment {
  void SetUp() override { Aurivox::Initialize(); }
  void TearDown() override {
    // Wine's media sources finish closing on GStreamer threads after their
    // last release; shutting down and exiting at once crashes the process now
    // and then under load.
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    Aurivox::Terminate();
  }
};

const auto* const kEnvironment = ::testing::AddGlobalTestEnvironment(new ModuleEnvironment);

}  // namespace
