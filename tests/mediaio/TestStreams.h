// A StreamInterface over bytes in memory for tests, safe to call from Media
// Foundation's threads. Counts its Close calls; Read can be made to fail.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <vector>

#include "StreamInterface.h"

namespace aurivox_test {

class MemoryStream : public windowsmediafoundation::StreamInterface {
 public:
  explicit MemoryStream(std::vector<std::uint8_t> bytes) : bytes_(std::move(bytes)) {}

  std::uint64_t GetLength() override { return bytes_.size(); }
  // Under the read's lock: a seek never lands between a read's look at the
  // position and its move past what it delivered.
  void SetPosition(std::uint64_t position) override {
    std::lock_guard<std::mutex> lock(mutex_);
    position_ = position;
  }
  std::uint64_t GetPosition() override {
    std::lock_guard<std::mutex> lock(mutex_);
    return position_;
  }
  bool IsEndOfStream() override { return GetPosition() >= bytes_.size(); }
  std::int64_t Read(void* buffer, std::uint32_t count) override {
    std::lock_guard<std::mutex> lock(mutex_);
    if (readFailure) return readFailure;
    if (position_ >= bytes_.size()) return 0;
    const auto delivered = std::min<std::uint64_t>(count, bytes_.size() - position_);
    std::memcpy(buffer, bytes_.data() + position_, static_cast<std::size_t>(delivered));
    position_ += delivered;
    return static_cast<std::int64_t>(delivered);
  }
  void Close() override { ++closeCount; }

  std::atomic<int> closeCount{0};
  // Not 0: every Read returns this without reading.
  std::atomic<std::int64_t> readFailure{0};

 private:
  const std::vector<std::uint8_t> bytes_;
  std::mutex mutex_;
  std::uint64_t position_ = 0;
};

}  // namespace aurivox_test
