// Status codes of the vector kernels and of their dispatch set-up. Negative
// values are errors of a kernel call; positive ones are set-up warnings.
#pragma once

#include <cstdint>

namespace vectorkernels {

using VectorStatus = std::int32_t;

constexpr VectorStatus StatusOk = 0;
constexpr VectorStatus StatusNullPointer = -8;
constexpr VectorStatus StatusBadLength = -6;
constexpr VectorStatus StatusNotGenuineIntel = 20;
constexpr VectorStatus StatusNoSse2 = 36;
constexpr VectorStatus StatusFeatureUnavailable = 49;
constexpr VectorStatus StatusUnknownFeature = 50;
constexpr VectorStatus StatusIncompleteFeatureSet = 51;

}  // namespace vectorkernels
