// Test helper: a GUID from its "XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX" text.
#pragma once

#include <cstdio>
#include <stdexcept>
#include <string>

#include "orxcore/Guid.h"

namespace names_test {

inline orxcore::Guid GuidFromText(const std::string& text) {
  unsigned long data1 = 0;
  unsigned data2 = 0, data3 = 0;
  unsigned bytes[8] = {};
  const int fields = std::sscanf(text.c_str(), "%8lx-%4x-%4x-%2x%2x-%2x%2x%2x%2x%2x%2x", &data1,
                                 &data2, &data3, &bytes[0], &bytes[1], &bytes[2], &bytes[3],
                                 &bytes[4], &bytes[5], &bytes[6], &bytes[7]);
  if (fields != 11 || text.size() != 36) throw std::invalid_argument("not a GUID: " + text);
  orxcore::Guid guid;
  guid.data1 = static_cast<std::uint32_t>(data1);
  guid.data2 = static_cast<std::uint16_t>(data2);
  guid.data3 = static_cast<std::uint16_t>(data3);
  for (int i = 0; i < 8; ++i) guid.data4[i] = static_cast<std::uint8_t>(bytes[i]);
  return guid;
}

}  // namespace names_test
