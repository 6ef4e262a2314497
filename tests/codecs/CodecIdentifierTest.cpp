#include "CodecIdentifier.h"

#include <gtest/gtest.h>

namespace Aurivox {
namespace {

orxcore::Guid WaveTag(std::uint32_t tag) {
  return {tag, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71}};
}

TEST(CodecIdentifier, SpotChecksOfTheKnownSubtypes) {
  EXPECT_EQ(CodecIdentifierForSubtype(WaveTag(0x0001)), 0x70636D20u);  // "pcm "
  EXPECT_EQ(CodecIdentifierForSubtype(
                {0x05589F81, 0xC356, 0x11CE, {0xBF, 0x01, 0x00, 0xAA, 0x00, 0x55, 0x59, 0x5A}}),
            0x70636D20u);
  EXPECT_EQ(CodecIdentifierForSubtype(WaveTag(0x0003)), 0x32336E69u);  // kept backwards
  for (std::uint32_t wma : {0x161u, 0x162u, 0x163u}) {
    EXPECT_EQ(CodecIdentifierForSubtype(WaveTag(wma)), 0x776D6120u);  // one code for three rows
  }
  EXPECT_EQ(CodecIdentifierForSubtype(
                {0xE06D802C, 0xDB46, 0x11CF, {0xB4, 0xD1, 0x00, 0x80, 0x5F, 0x6C, 0xBB, 0xEA}}),
            0x61632D33u);
}

// Bitwise reference CRC-32, independent of the library the module uses.
std::uint32_t ReferenceCrc32(const std::uint8_t* data, std::size_t size) {
  std::uint32_t crc = 0xFFFFFFFF;
  for (std::size_t i = 0; i < size; ++i) {
    crc ^= data[i];
    for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1)));
  }
  return ~crc;
}

TEST(CodecIdentifier, OtherSubtypesGiveTheCrc32OfTheirBytes) {
  const std::uint8_t check[] = {'1', '2', '3', '4', '5', '6', '7', '8', '9'};
  ASSERT_EQ(ReferenceCrc32(check, 9), 0xCBF43926u);

  const orxcore::Guid opus = WaveTag(0x704F);
  const auto bytes = opus.GuidToBytes();
  EXPECT_EQ(CodecIdentifierForSubtype(opus), ReferenceCrc32(bytes.data(), bytes.size()));

  const std::uint8_t zeros[16] = {};
  EXPECT_EQ(CodecIdentifierForSubtype(orxcore::Guid{}), ReferenceCrc32(zeros, 16));
  // A near miss of a table row (one byte off) is not that row.
  orxcore::Guid nearPcm = WaveTag(0x0001);
  nearPcm.data4[7] ^= 1;
  EXPECT_NE(CodecIdentifierForSubtype(nearPcm), 0x70636D20u);
}

TEST(SampleType, IntegerPcmByWidthAndEverythingElseZero) {
  EXPECT_EQ(SampleTypeForSubtype(kSubtypePcm, 8), 10);
  EXPECT_EQ(SampleTypeForSubtype(kSubtypePcm, 16), 20);
  EXPECT_EQ(SampleTypeForSubtype(kSubtypePcm, 24), 30);
  EXPECT_EQ(SampleTypeForSubtype(kSubtypePcm, 32), 40);
  EXPECT_EQ(SampleTypeForSubtype(kSubtypePcm, 20), 0);
  EXPECT_EQ(SampleTypeForSubtype(kSubtypeFloat, 32), 0);
  EXPECT_EQ(SampleTypeForSubtype(WaveTag(0x1610), 16), 0);
}

TEST(SampleType, HostCodes) {
  const std::pair<std::int32_t, std::int32_t> expected[] = {{0, 12}, {10, 2}, {20, 3}, {30, 4}, {40, 6}, {50, 7}};
  for (const auto& [type, code] : expected) {
    std::int32_t actual = -1;
    EXPECT_TRUE(HostSampleTypeCode(type, actual));
    EXPECT_EQ(actual, code) << type;
  }
  std::int32_t untouched = 123;
  EXPECT_FALSE(HostSampleTypeCode(60, untouched));
  EXPECT_EQ(untouched, 123);
}

}  // namespace
}  // namespace Aurivox
