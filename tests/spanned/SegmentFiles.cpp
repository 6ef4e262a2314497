#include "SegmentFiles.h"

#include <algorithm>
#include <random>
#include <string>

namespace aurivox_test {

SegmentFiles::SegmentFiles(const TempDir& dir, const std::vector<std::size_t>& sizes) {
  std::mt19937 random(static_cast<std::uint32_t>(sizes.size()));
  for (std::size_t i = 0; i < sizes.size(); ++i) {
    std::vector<std::uint8_t> bytes(sizes[i]);
    for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random());
    files.push_back(dir.WriteFile("seg" + std::to_string(i) + ".mts", bytes));
    paths.push_back(ToWString(files.back()));
    joined.insert(joined.end(), bytes.begin(), bytes.end());
  }
}

std::vector<std::uint8_t> Slice(const std::vector<std::uint8_t>& joined, std::uint64_t offset, std::size_t count) {
  if (offset >= joined.size()) return {};
  const auto begin = joined.begin() + static_cast<std::ptrdiff_t>(offset);
  return std::vector<std::uint8_t>(begin, begin + static_cast<std::ptrdiff_t>(
                                                      std::min<std::uint64_t>(count, joined.size() - offset)));
}

}  // namespace aurivox_test
