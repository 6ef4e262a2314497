#include "CodecIdentifier.h"

#include <gtest/gtest.h>

namespace Aurivox {
namespace {

// The decoder tests meet the common codes, the CRC-32 fallback and the PCM
// widths on real files; these are the rows and edges no fixture reaches.
TEST(CodecIdentifier, KnownSubtypesHaveTheirCodeAndOthersTheCrc32OfTheirBytes) {
  const std::pair<orxcore::Guid, std::uint32_t> kCases[] = {
      {{0x05589F81, 0xC356, 0x11CE, {0xBF, 0x01, 0x00, 0xAA, 0x00, 0x55, 0x59, 0x5A}}, 0x70636D20},  // "pcm "
      {{0xA7FB87AF, 0x2D02, 0x42FB, {0xA4, 0xD4, 0x05, 0xCD, 0x93, 0x84, 0x3B, 0xDD}}, 0x65632D33},
      // PCM's subtype but for its last byte; the code is Python's zlib.crc32 of its bytes.
      {{0x0001, 0, 0x10, {0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x70}}, 0xE419CF04}};
  for (const auto& [subtype, code] : kCases) EXPECT_EQ(CodecIdentifierForSubtype(subtype), code) << std::hex << code;
}

TEST(SampleType, OddPcmWidthsHaveNoneAndUnknownTypesNoHostCode) {
  EXPECT_EQ(SampleTypeForSubtype(kSubtypePcm, 20), 0);
  std::int32_t code = -1;
  EXPECT_TRUE(HostSampleTypeCode(50, code));
  EXPECT_FALSE(HostSampleTypeCode(60, code));
  EXPECT_EQ(code, 7);  // set by the known type and left alone by the unknown one
}

}  // namespace
}  // namespace Aurivox
