// Shared pieces of the fuzz targets: a failing check that libFuzzer reports
// as a crash, big-endian fields, a reader of decoded inputs, and a scratch
// folder removed at exit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>

#include "orxcore/String.h"

#define FUZZ_CHECK(condition) \
  ((condition) ? (void)0 : ::aurivox_fuzz::CheckFailed(#condition, __FILE__, __LINE__))

namespace aurivox_fuzz {

// Records a target reads from one input. libFuzzer lets inputs grow to 4 KiB,
// and hundreds of records in one run buy no coverage that a few do not, while
// they cut the runs a second by as much.
constexpr int kMaxRecordsPerInput = 8;

[[noreturn]] void CheckFailed(const char* condition, const char* file, int line);

std::uint32_t ReadBigEndian32(const std::uint8_t* p);
std::uint16_t ReadBigEndian16(const std::uint8_t* p);

// A fresh folder for this process, removed when it exits.
const std::filesystem::path& ScratchFolder();

void WriteFile(const std::filesystem::path& path, const std::uint8_t* data, std::size_t size);

orxcore::WString ToWString(const std::filesystem::path& path);

// Takes fields from the front of an input, so that fuzz/make-seeds can write
// inputs that mean something. Fields past the end read as zero bytes.
class ByteReader {
 public:
  ByteReader(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

  bool empty() const { return offset_ >= size_; }

  std::uint8_t Byte() { return empty() ? 0 : data_[offset_++]; }
  // Little-endian.
  std::uint16_t U16();
  std::uint32_t U32();
  std::uint64_t U64();
  // A byte modulo `count` (1 to 256).
  unsigned Below(unsigned count) { return Byte() % count; }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
  std::size_t offset_ = 0;
};

}  // namespace aurivox_fuzz
