#include "TestStreams.h"

#include <algorithm>
#include <cstring>

namespace aurivox_test {

std::uint64_t MemoryStream::GetLength() {
  std::lock_guard<std::mutex> lock(mutex_);
  return bytes_.size();
}

void MemoryStream::SetPosition(std::uint64_t position) {
  std::lock_guard<std::mutex> lock(mutex_);
  position_ = position;
}

std::uint64_t MemoryStream::GetPosition() {
  std::lock_guard<std::mutex> lock(mutex_);
  return position_;
}

bool MemoryStream::IsEndOfStream() {
  std::lock_guard<std::mutex> lock(mutex_);
  return position_ >= bytes_.size();
}

std::int64_t MemoryStream::Read(void* buffer, std::uint32_t count) {
  std::lock_guard<std::mutex> lock(mutex_);
  if (failReads_) return failure_;
  if (position_ >= bytes_.size()) return 0;
  const std::uint64_t delivered = std::min<std::uint64_t>(count, bytes_.size() - position_);
  std::memcpy(buffer, bytes_.data() + position_, static_cast<std::size_t>(delivered));
  position_ += delivered;
  return static_cast<std::int64_t>(delivered);
}

void MemoryStream::FailReadsWith(std::int64_t result) {
  std::lock_guard<std::mutex> lock(mutex_);
  failReads_ = true;
  failure_ = result;
}

FileStream::FileStream(const std::filesystem::path& path) : file_(path, std::ios::binary) {
  std::error_code error;
  length_ = std::filesystem::file_size(path, error);
  if (error) length_ = 0;
}

bool FileStream::is_open() {
  std::lock_guard<std::mutex> lock(mutex_);
  return file_.is_open();
}

std::uint64_t FileStream::GetLength() {
  std::lock_guard<std::mutex> lock(mutex_);
  return length_;
}

void FileStream::SetPosition(std::uint64_t position) {
  std::lock_guard<std::mutex> lock(mutex_);
  position_ = position;
}

std::uint64_t FileStream::GetPosition() {
  std::lock_guard<std::mutex> lock(mutex_);
  return position_;
}

bool FileStream::IsEndOfStream() {
  std::lock_guard<std::mutex> lock(mutex_);
  return position_ >= length_;
}

std::int64_t FileStream::Read(void* buffer, std::uint32_t count) {
  std::lock_guard<std::mutex> lock(mutex_);
  if (!file_.is_open()) return -1;
  if (position_ >= length_) return 0;
  const std::uint64_t wanted = std::min<std::uint64_t>(count, length_ - position_);
  file_.clear();
  file_.seekg(static_cast<std::streamoff>(position_));
  file_.read(static_cast<char*>(buffer), static_cast<std::streamsize>(wanted));
  const std::streamsize got = file_.gcount();
  if (got <= 0) return -1;
  position_ += static_cast<std::uint64_t>(got);
  return got;
}

void FileStream::Close() {
  std::lock_guard<std::mutex> lock(mutex_);
  ++closeCount_;
  file_.close();
}

}  // namespace aurivox_test
