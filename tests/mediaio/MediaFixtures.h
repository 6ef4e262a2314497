// The media files made by tests/fixtures/make-media-fixtures, their FFmpeg
// reference decodes, and the comparisons of decoded audio with them.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "orxcore/String.h"

namespace aurivox_test {

// A fixture's path; under Wine a Windows path ("Z:\...").
orxcore::WString MediaFixtureWPath(const std::string& name);

// A whole fixture file; empty when it cannot be read.
std::vector<std::uint8_t> ReadMediaFixture(const std::string& name);

// Interleaved samples as floats: integer PCM of 1 to 4 bytes (8-bit
// unsigned, wider signed little-endian) scaled to [-1, 1), or 32-bit float.
std::vector<float> SamplesAsFloat(const std::vector<std::uint8_t>& bytes, std::uint32_t bytesPerSample,
                                  bool isFloat);

// How well a decode matches a reference of the same channel count after
// aligning them: decoders may add or drop priming and padding samples.
struct AlignedComparison {
  std::int64_t lag = 0;             // frames the decode is late against the reference
  std::size_t overlapFrames = 0;    // frames compared
  double rmsDifference = 0;         // over every channel of the overlap
  double maxDifference = 0;
};

// Finds the lag within +-maxLag frames that best lines up the decode with
// the reference (cross-correlation of the first channel over a stretch of
// about a second), then compares the overlap, leaving out the first
// `skipFrames` frames of the reference, where decoders settle.
AlignedComparison CompareAligned(const std::vector<float>& decoded, const std::vector<float>& reference,
                                 std::uint32_t channels, std::int64_t maxLag, std::size_t skipFrames);

}  // namespace aurivox_test
