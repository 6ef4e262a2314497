#include "RecordingErrorSuite.h"

std::int32_t aurivox_test::RecordingErrorSuite::Send(std::int32_t eventType, const char16_t* title,
                                                     const char16_t* message) {
  RecordingErrorSuite* self = active_;
  std::lock_guard<std::mutex> lock(self->mutex_);
  self->events_.push_back({eventType, title, message});
  return 0;
}
