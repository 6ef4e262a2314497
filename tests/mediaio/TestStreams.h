// StreamInterface implementations for tests: one over bytes in memory with
// failures on demand, one over a file.
#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <vector>

#include "StreamInterface.h"

namespace aurivox_test {

// Bytes in memory. Counts its Close calls; Read can be made to fail.
class MemoryStream : public windowsmediafoundation::StreamInterface {
 public:
  explicit MemoryStream(std::vector<std::uint8_t> bytes) : bytes_(std::move(bytes)) {}

  std::uint64_t GetLength() override;
  void SetPosition(std::uint64_t position) override;
  std::uint64_t GetPosition() override;
  bool IsEndOfStream() override;
  std::int64_t Read(void* buffer, std::uint32_t count) override;
  void Close() override { ++closeCount_; }

  int closeCount() const { return closeCount_; }
  // From now on Read returns `result` without reading.
  void FailReadsWith(std::int64_t result);

 private:
  std::mutex mutex_;
  std::vector<std::uint8_t> bytes_;
  std::uint64_t position_ = 0;
  bool failReads_ = false;
  std::int64_t failure_ = 0;
  std::atomic<int> closeCount_{0};
};

// A file read through std::ifstream, safe to call from several threads.
// Read after Close fails with -1.
class FileStream : public windowsmediafoundation::StreamInterface {
 public:
  explicit FileStream(const std::filesystem::path& path);

  bool is_open();
  std::uint64_t GetLength() override;
  void SetPosition(std::uint64_t position) override;
  std::uint64_t GetPosition() override;
  bool IsEndOfStream() override;
  std::int64_t Read(void* buffer, std::uint32_t count) override;
  void Close() override;

  int closeCount() const { return closeCount_; }

 private:
  std::mutex mutex_;
  std::ifstream file_;
  std::uint64_t length_ = 0;
  std::uint64_t position_ = 0;
  std::atomic<int> closeCount_{0};
};

}  // namespace aurivox_test
