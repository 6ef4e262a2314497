#include "FakeReaderTest.h"

namespace aurivox_test {

std::vector<std::uint8_t> Pcm16(const std::vector<std::int16_t>& samples) {
  std::vector<std::uint8_t> bytes;
  for (const std::int16_t sample : samples) {
    const auto value = static_cast<std::uint16_t>(sample);
    bytes.push_back(static_cast<std::uint8_t>(value & 0xFF));
    bytes.push_back(static_cast<std::uint8_t>(value >> 8));
  }
  return bytes;
}

}  // namespace aurivox_test
