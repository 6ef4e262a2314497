#include "CodecIdentifier.h"

#include <gtest/gtest.h>

#include <tuple>

namespace Aurivox {
namespace {

orxcore::Guid WaveTag(std::uint32_t tag) { return {tag, 0, 0x10, {0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71}}; }

TEST(CodecIdentifier, KnownSubtypesHaveTheirCodeAndOthersTheCrc32OfTheirBytes) {
  orxcore::Guid nearPcm = WaveTag(0x0001);  // one byte off a known row
  nearPcm.data4[7] ^= 1;
  const std::pair<orxcore::Guid, std::uint32_t> kCases[] = {
      {WaveTag(0x0001), 0x70636D20},  // "pcm "
      {{0x05589F81, 0xC356, 0x11CE, {0xBF, 0x01, 0x00, 0xAA, 0x00, 0x55, 0x59, 0x5A}}, 0x70636D20},
      {WaveTag(0x0003), 0x32336E69},  // kept backwards
      {WaveTag(0x0163), 0x776D6120},  // one code for three rows
      {{0xA7FB87AF, 0x2D02, 0x42FB, {0xA4, 0xD4, 0x05, 0xCD, 0x93, 0x84, 0x3B, 0xDD}}, 0x65632D33},
      // CRC-32 values from Python's zlib.crc32.
      {WaveTag(0x704F), 0x9BBE256F},
      {orxcore::Guid{}, 0xECBB4B55},
      {nearPcm, 0xE419CF04}};
  for (const auto& [subtype, code] : kCases) {
    EXPECT_EQ(CodecIdentifierForSubtype(subtype), code) << orxcore::UTF16toStdString(subtype.AsString());
  }
}

TEST(SampleType, IntegerPcmByWidthAndEverythingElseZeroThenTheHostsCodes) {
  const std::tuple<orxcore::Guid, std::uint32_t, std::int32_t> kTypes[] = {
      {WaveTag(1), 8, 10},    {WaveTag(1), 16, 20},  {WaveTag(1), 24, 30},       {WaveTag(1), 32, 40},
      {WaveTag(1), 20, 0},    {WaveTag(3), 32, 0}, {WaveTag(0x1610), 16, 0}};
  for (const auto& [subtype, bits, type] : kTypes) EXPECT_EQ(SampleTypeForSubtype(subtype, bits), type) << bits;

  const std::pair<std::int32_t, std::int32_t> kCodes[] = {{0, 12}, {10, 2}, {20, 3}, {30, 4}, {40, 6}, {50, 7}};
  for (const auto& [type, expected] : kCodes) {
    std::int32_t code = -1;
    EXPECT_TRUE(HostSampleTypeCode(type, code));
    EXPECT_EQ(code, expected) << type;
  }
  std::int32_t untouched = 123;
  EXPECT_FALSE(HostSampleTypeCode(60, untouched));
  EXPECT_EQ(untouched, 123);
}

}  // namespace
}  // namespace Aurivox
