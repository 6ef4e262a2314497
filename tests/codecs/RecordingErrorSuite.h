// A host error suite that records every call, for the missing-Dolby tests.
#pragma once

#include <mutex>
#include <vector>

#include "aurivox/HostRecords.h"
#include "orxcore/String.h"

namespace aurivox_test {

struct ErrorEvent {
  std::int32_t eventType;
  orxcore::WString title;
  orxcore::WString message;
};

class RecordingErrorSuite {
 public:
  RecordingErrorSuite();
  ~RecordingErrorSuite();

  const QzSDKErrorSuite3* suite() const { return &suite_; }
  std::vector<ErrorEvent> events() const;
  // Events whose message names `path` in quotes.
  std::vector<ErrorEvent> EventsFor(const orxcore::WString& path) const;

 private:
  static std::int32_t Send(std::int32_t eventType, const char16_t* title, const char16_t* message);

  QzSDKErrorSuite3 suite_{&RecordingErrorSuite::Send};
  mutable std::mutex mutex_;
  std::vector<ErrorEvent> events_;
};

}  // namespace aurivox_test
