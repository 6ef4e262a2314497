// Bulk copy, clear and byte-swap helpers of the host's acceleration library.
#pragma once

#include <cstddef>
#include <cstdint>

namespace orxaccelerate {
namespace utility {

// Copies `count` floats (or bytes) from `source` to `destination`.
void Copy(std::size_t count, const float* source, float* destination);
void Copy(std::size_t count, const std::uint8_t* source, std::uint8_t* destination);

// Sets `count` float-sized (4-byte) elements starting at `destination` to 0.
void Zero(std::size_t count, float* destination);

// Reverses the byte order of `count` 32-bit (or 16-bit) values in place.
void SwapBytes(std::size_t count, std::uint32_t* values);
void SwapBytes(std::size_t count, std::uint16_t* values);

}  // namespace utility
}  // namespace orxaccelerate
