// A host error suite that records every call, for the missing-Dolby tests.
#pragma once

#include <atomic>
#include <mutex>
#include <vector>

#include "aurivox/HostRecords.h"
#include "orxcore/Guid.h"
#include "orxcore/String.h"

namespace aurivox_test {

// A path no earlier warning has seen: the set of warned files lives as long
// as the process.
inline orxcore::WString UniquePath(const char16_t* extension) {
  return u"C:\\clips\\" + orxcore::Guid::CreateUnique().AsString() + extension;
}

struct ErrorEvent {
  std::int32_t eventType;
  orxcore::WString title;
  orxcore::WString message;
};

class RecordingErrorSuite {
 public:
  RecordingErrorSuite() { active_ = this; }
  ~RecordingErrorSuite() { active_ = nullptr; }

  const QzSDKErrorSuite3* suite() const { return &suite_; }
  std::vector<ErrorEvent> events() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return events_;
  }

 private:
  static std::int32_t Send(std::int32_t eventType, const char16_t* title, const char16_t* message);

  // The suite's entry is a plain function pointer, so calls reach the one
  // recorder alive at the time.
  static inline std::atomic<RecordingErrorSuite*> active_{nullptr};
  QzSDKErrorSuite3 suite_{&RecordingErrorSuite::Send};
  mutable std::mutex mutex_;
  std::vector<ErrorEvent> events_;
};

}  // namespace aurivox_test
