// A time bound on one piece of work that may never return. A thread stuck
// inside the platform's media reader cannot be taken back, so when the
// bound runs out the watchdog reports what was going on and ends the
// process at once.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace aurivox_tool {

class Watchdog {
 public:
  // `onExpiry` runs on the watchdog's own thread when an armed bound runs
  // out; the process then ends with `exitStatus`, without running any
  // clean-up that a stuck thread could block.
  Watchdog(std::chrono::milliseconds bound, std::function<void()> onExpiry, int exitStatus);
  ~Watchdog();
  Watchdog(const Watchdog&) = delete;
  Watchdog& operator=(const Watchdog&) = delete;

  // Starts the bound afresh.
  void Arm();
  // The work finished in time.
  void Disarm();

 private:
  using Clock = std::chrono::steady_clock;
  void Watch();
  [[noreturn]] void EndProcess();

  const std::chrono::milliseconds bound_;
  const std::function<void()> onExpiry_;
  const int exitStatus_;
  std::mutex mutex_;
  std::condition_variable changed_;
  bool armed_ = false;
  bool stopping_ = false;
  Clock::time_point deadline_;
  std::thread thread_;  // last: starts once the rest is set up
};

}  // namespace aurivox_tool
