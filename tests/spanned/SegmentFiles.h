// Test helper: segment files holding consecutive pieces of one byte sequence.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <vector>

#include "orxcore/String.h"
#include "support/TempDir.h"

namespace aurivox_test {

struct SegmentFiles {
  // Writes seg0.mts, seg1.mts, ... of the given sizes into `dir`.
  SegmentFiles(const TempDir& dir, const std::vector<std::size_t>& sizes);

  std::vector<std::filesystem::path> files;
  std::vector<orxcore::WString> paths;
  std::vector<std::uint8_t> joined;  // every segment's bytes, in order
};

// `count` bytes of `joined` from `offset`, fewer where it ends.
std::vector<std::uint8_t> Slice(const std::vector<std::uint8_t>& joined, std::uint64_t offset, std::size_t count);

}  // namespace aurivox_test
