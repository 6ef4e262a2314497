#include "orxcore/Guid.h"

#include <cstdio>
#include <random>

namespace orxcore {

std::array<std::uint8_t, 16> Guid::GuidToBytes() const {
  std::array<std::uint8_t, 16> bytes{};
  for (int i = 0; i < 4; ++i) bytes[i] = static_cast<std::uint8_t>(data1 >> (8 * i));
  for (int i = 0; i < 2; ++i) bytes[4 + i] = static_cast<std::uint8_t>(data2 >> (8 * i));
  for (int i = 0; i < 2; ++i) bytes[6 + i] = static_cast<std::uint8_t>(data3 >> (8 * i));
  for (int i = 0; i < 8; ++i) bytes[8 + i] = data4[i];
  return bytes;
}

Guid Guid::FromBytes(const std::array<std::uint8_t, 16>& bytes) {
  Guid g;
  for (int i = 3; i >= 0; --i) g.data1 = (g.data1 << 8) | bytes[i];
  g.data2 = static_cast<std::uint16_t>(bytes[4] | (bytes[5] << 8));
  g.data3 = static_cast<std::uint16_t>(bytes[6] | (bytes[7] << 8));
  for (int i = 0; i < 8; ++i) g.data4[i] = bytes[8 + i];
  return g;
}

WString Guid::AsString() const {
  char text[40];
  std::snprintf(text, sizeof text, "%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X",
                static_cast<unsigned>(data1), data2, data3, data4[0], data4[1], data4[2],
                data4[3], data4[4], data4[5], data4[6], data4[7]);
  return AsciiToUTF16(text, 36);
}

Guid Guid::CreateUnique() {
  static thread_local std::mt19937_64 engine{[] {
    std::random_device device;
    std::seed_seq seed{device(), device(), device(), device()};
    return std::mt19937_64(seed);
  }()};
  std::array<std::uint8_t, 16> bytes{};
  for (std::size_t i = 0; i < bytes.size(); i += 8) {
    const std::uint64_t r = engine();
    for (int b = 0; b < 8; ++b) bytes[i + b] = static_cast<std::uint8_t>(r >> (8 * b));
  }
  Guid g = FromBytes(bytes);
  g.data3 = static_cast<std::uint16_t>((g.data3 & 0x0FFF) | 0x4000);
  g.data4[0] = static_cast<std::uint8_t>((g.data4[0] & 0x3F) | 0x80);
  return g;
}

}  // namespace orxcore
