#include "orxcore/RecursiveMutex.h"

#include <chrono>

namespace orxcore {

bool RecursiveMutex::Lock(const char* /*name*/, std::int32_t timeoutMs) {
  if (timeoutMs < 0) {
    mutex_.lock();
    return true;
  }
  return mutex_.try_lock_for(std::chrono::milliseconds(timeoutMs));
}

void RecursiveMutex::Unlock() { mutex_.unlock(); }

}  // namespace orxcore
