#include "Watchdog.h"

#include <utility>

namespace aurivox_tool {

Watchdog::Watchdog(std::chrono::milliseconds bound, std::function<void()> onExpiry, int exitStatus)
    : bound_(bound), onExpiry_(std::move(onExpiry)), exitStatus_(exitStatus), thread_([this] { Watch(); }) {}

Watchdog::~Watchdog() {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    stopping_ = true;
  }
  changed_.notify_one();
  thread_.join();
}

void Watchdog::Arm() {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    armed_ = true;
    deadline_ = Clock::now() + bound_;
  }
  changed_.notify_one();
}

void Watchdog::Disarm() {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    armed_ = false;
  }
  changed_.notify_one();
}

void Watchdog::Watch() {
  std::unique_lock<std::mutex> lock(mutex_);
  while (!stopping_) {
    if (!armed_) {
      changed_.wait(lock);
    } else if (Clock::now() < deadline_) {
      changed_.wait_until(lock, deadline_);
    } else {
      // The lock stays held: Disarm cannot slip in between the report and
      // the end of the process.
      onExpiry_();
      EndProcess();
    }
  }
}

}  // namespace aurivox_tool
