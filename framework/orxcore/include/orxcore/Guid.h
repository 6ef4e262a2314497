// A 128-bit GUID with the memory layout of the Windows GUID structure, usable
// without Windows headers.
#pragma once

#include <array>
#include <cstdint>

#include "orxcore/String.h"

namespace orxcore {

struct Guid {
  std::uint32_t data1 = 0;
  std::uint16_t data2 = 0;
  std::uint16_t data3 = 0;
  std::array<std::uint8_t, 8> data4{};

  // The 16 bytes in the order a Windows GUID lies in memory: data1, data2 and
  // data3 little-endian, then data4 as it stands.
  std::array<std::uint8_t, 16> GuidToBytes() const;
  static Guid FromBytes(const std::array<std::uint8_t, 16>& bytes);

  // "XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX", upper case, without braces.
  WString AsString() const;

  // A new random (version 4) GUID.
  static Guid CreateUnique();

  bool IsNull() const { return *this == Guid{}; }

  // Field by field: subtype names are found by scanning tables of hundreds.
  friend bool operator==(const Guid& a, const Guid& b) {
    return a.data1 == b.data1 && a.data2 == b.data2 && a.data3 == b.data3 && a.data4 == b.data4;
  }
  friend bool operator!=(const Guid& a, const Guid& b) { return !(a == b); }
  // Orders by the 16 bytes as unsigned values, first byte first.
  friend bool operator<(const Guid& a, const Guid& b) { return a.GuidToBytes() < b.GuidToBytes(); }
};

}  // namespace orxcore
