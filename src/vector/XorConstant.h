// XorConstantInPlace32, the processor-dispatched kernel that XORs a constant
// into 32-bit elements in place (the video path uses it to make pixels opaque).
#pragma once

#include <cstdint>

#include "Status.h"
#include "XorConstantVariants.h"

namespace vectorkernels {

// Replaces each of `length` elements at `buffer` by itself XOR `value`.
// Returns StatusNullPointer or StatusBadLength without touching memory, and
// StatusOk otherwise (at once for a `value` of 0). The first call sets up the
// dispatch; `buffer` need not be aligned.
VectorStatus XorConstantInPlace32(std::uint32_t value, std::uint32_t* buffer, std::int32_t length);

// Detects the processor, selects and stores the dispatch level. Returns
// StatusNotGenuineIntel on other vendors, otherwise the selection's status.
VectorStatus InitDispatch();

// The stored level: -1 until the set-up has run, then 0 to 5.
std::int32_t CurrentDispatchLevel();

// The variant at `level` (0 to 5) of the dispatch table.
XorConstantFunction XorConstantVariant(std::int32_t level);

}  // namespace vectorkernels
