// Steps shared by every XorConstantInPlace32 variant: the argument checks and
// the scalar element and pair updates. Elements are reached through memcpy, so
// buffers at any byte address are handled without undefined behaviour.
//
// The helpers have internal linkage on purpose: each variant's file is built
// for its own instruction set, and one shared inline definition could be
// merged into a copy built for a wider set than the caller may run.
#pragma once

#include <cstdint>
#include <cstring>

#include "Status.h"

namespace vectorkernels {
namespace {

// True when the call is finished before touching memory; `status` holds the
// result. A constant of 0 changes nothing, whatever the length.
inline bool FinishedEarly(std::uint32_t value, const std::uint32_t* buffer, std::int32_t length,
                          VectorStatus* status) {
  if (buffer == nullptr) {
    *status = StatusNullPointer;
  } else if (length < 1) {
    *status = StatusBadLength;
  } else {
    *status = StatusOk;
    return value == 0;
  }
  return true;
}

inline void XorElement(unsigned char* p, std::uint32_t value) {
  std::uint32_t element;
  std::memcpy(&element, p, sizeof element);
  element ^= value;
  std::memcpy(p, &element, sizeof element);
}

inline std::uint64_t PairOf(std::uint32_t value) {
  return (static_cast<std::uint64_t>(value) << 32) | value;
}

// Two elements by one 64-bit XOR; `pair` is PairOf(value).
inline void XorPair(unsigned char* p, std::uint64_t pair) {
  std::uint64_t elements;
  std::memcpy(&elements, p, sizeof elements);
  elements ^= pair;
  std::memcpy(p, &elements, sizeof elements);
}

inline unsigned char* XorElements(unsigned char* p, std::int32_t count, std::uint32_t value) {
  for (std::int32_t i = 0; i < count; ++i, p += 4) XorElement(p, value);
  return p;
}

// Elements before the next `alignment`-byte boundary of a 4-byte aligned address.
inline std::int32_t ElementsToBoundary(const unsigned char* p, std::uintptr_t alignment) {
  const std::uintptr_t misalignment = reinterpret_cast<std::uintptr_t>(p) & (alignment - 1);
  return misalignment == 0 ? 0 : static_cast<std::int32_t>((alignment - misalignment) / 4);
}

inline bool IsElementAligned(const unsigned char* p) {
  return (reinterpret_cast<std::uintptr_t>(p) & 3) == 0;
}

}  // namespace
}  // namespace vectorkernels
