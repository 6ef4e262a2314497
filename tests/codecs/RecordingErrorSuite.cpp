#include "RecordingErrorSuite.h"

#include <atomic>

namespace aurivox_test {
namespace {

// The suite's entry is a plain function pointer, so calls reach the one
// recorder alive at the time.
std::atomic<RecordingErrorSuite*> gActive{nullptr};

}  // namespace

RecordingErrorSuite::RecordingErrorSuite() { gActive = this; }

RecordingErrorSuite::~RecordingErrorSuite() { gActive = nullptr; }

std::int32_t RecordingErrorSuite::Send(std::int32_t eventType, const char16_t* title, const char16_t* message) {
  RecordingErrorSuite* self = gActive;
  std::lock_guard<std::mutex> lock(self->mutex_);
  self->events_.push_back({eventType, title, message});
  return 0;
}

std::vector<ErrorEvent> RecordingErrorSuite::events() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return events_;
}

std::vector<ErrorEvent> RecordingErrorSuite::EventsFor(const orxcore::WString& path) const {
  std::vector<ErrorEvent> found;
  for (const ErrorEvent& event : events()) {
    if (event.message.find(u"\"" + path + u"\"") != orxcore::WString::npos) found.push_back(event);
  }
  return found;
}

}  // namespace aurivox_test
