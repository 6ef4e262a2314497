#include "orxaccelerate/Utility.h"

#include <cstring>

namespace orxaccelerate {
namespace utility {

void Copy(std::size_t count, const float* source, float* destination) {
  if (count) std::memmove(destination, source, count * sizeof(float));
}

void Copy(std::size_t count, const std::uint8_t* source, std::uint8_t* destination) {
  if (count) std::memmove(destination, source, count);
}

void Zero(std::size_t count, float* destination) {
  if (count) std::memset(destination, 0, count * sizeof(float));
}

void SwapBytes(std::size_t count, std::uint32_t* values) {
  for (std::size_t i = 0; i < count; ++i) {
    const std::uint32_t v = values[i];
    values[i] = (v >> 24) | ((v >> 8) & 0xFF00u) | ((v << 8) & 0xFF0000u) | (v << 24);
  }
}

void SwapBytes(std::size_t count, std::uint16_t* values) {
  for (std::size_t i = 0; i < count; ++i) {
    values[i] = static_cast<std::uint16_t>((values[i] >> 8) | (values[i] << 8));
  }
}

}  // namespace utility
}  // namespace orxaccelerate
