// A recursive mutex whose Lock gives up after a time-out.
#pragma once

#include <cstdint>
#include <mutex>

namespace orxcore {

class RecursiveMutex {
 public:
  // Waits at most `timeoutMs` milliseconds (negative: forever). `name` only
  // identifies the lock in diagnostics and may be null. Returns false on
  // time-out, in which case the caller does not hold the lock.
  bool Lock(const char* name, std::int32_t timeoutMs);
  void Unlock();

 private:
  std::recursive_timed_mutex mutex_;
};

// Holds a RecursiveMutex for a scope; `locked()` tells whether it was got.
class ScopedRecursiveLock {
 public:
  ScopedRecursiveLock(RecursiveMutex& mutex, std::int32_t timeoutMs = 60000)
      : mutex_(mutex), locked_(mutex.Lock(nullptr, timeoutMs)) {}
  ~ScopedRecursiveLock() {
    if (locked_) mutex_.Unlock();
  }
  ScopedRecursiveLock(const ScopedRecursiveLock&) = delete;
  ScopedRecursiveLock& operator=(const ScopedRecursiveLock&) = delete;

  bool locked() const { return locked_; }

 private:
  RecursiveMutex& mutex_;
  bool locked_;
};

}  // namespace orxcore
