#include "CodecIdentifier.h"

#include <boost/crc.hpp>

namespace Aurivox {
namespace {

// Subtypes built on the wave-format-tag base {tag-0000-0010-8000-00AA00389B71}.
constexpr orxcore::Guid WaveFormatSubtype(std::uint32_t tag) {
  return {tag, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71}};
}

struct KnownCodec {
  orxcore::Guid subtype;
  std::uint32_t identifier;
};

// Matched first to last. The float row reads "in32" backwards in a dump of
// the value; hosts know it by this value, so it stays.
const KnownCodec kKnownCodecs[] = {
    {WaveFormatSubtype(0x0001), 0x70636D20},  // "pcm "
    // WMFORMAT_WaveFormatEx: a format-block GUID that some sources report as a subtype.
    {{0x05589F81, 0xC356, 0x11CE, {0xBF, 0x01, 0x00, 0xAA, 0x00, 0x55, 0x59, 0x5A}}, 0x70636D20},
    {WaveFormatSubtype(0x0003), 0x32336E69},  // IEEE float
    {WaveFormatSubtype(0x0002), 0x6170636D},  // "apcm"
    {WaveFormatSubtype(0x0006), 0x616C6177},  // "alaw"
    {WaveFormatSubtype(0x0007), 0x756C6177},  // "ulaw"
    {WaveFormatSubtype(0x0050), 0x6D703120},  // "mp1 "
    {WaveFormatSubtype(0x0055), 0x2E6D7033},  // ".mp3"
    {WaveFormatSubtype(0x1610), 0x61616320},  // "aac "
    {WaveFormatSubtype(0x0161), 0x776D6120},  // "wma "
    {WaveFormatSubtype(0x0162), 0x776D6120},
    {WaveFormatSubtype(0x0163), 0x776D6120},
    {WaveFormatSubtype(0x6C61), 0x616C6163},  // "alac"
    {{0xE06D802C, 0xDB46, 0x11CF, {0xB4, 0xD1, 0x00, 0x80, 0x5F, 0x6C, 0xBB, 0xEA}}, 0x61632D33},  // "ac-3"
    {{0xA7FB87AF, 0x2D02, 0x42FB, {0xA4, 0xD4, 0x05, 0xCD, 0x93, 0x84, 0x3B, 0xDD}}, 0x65632D33},  // "ec-3"
};

}  // namespace

const orxcore::Guid kSubtypePcm = WaveFormatSubtype(0x0001);
const orxcore::Guid kSubtypeFloat = WaveFormatSubtype(0x0003);

std::uint32_t SubtypeChecksum(const orxcore::Guid& subtype) {
  const auto bytes = subtype.GuidToBytes();
  boost::crc_32_type crc;  // its table is built once, on first use
  crc.process_bytes(bytes.data(), bytes.size());
  return crc.checksum();
}

std::uint32_t CodecIdentifierForSubtype(const orxcore::Guid& subtype) {
  for (const KnownCodec& codec : kKnownCodecs) {
    if (codec.subtype == subtype) return codec.identifier;
  }
  return SubtypeChecksum(subtype);
}

std::int32_t SampleTypeForSubtype(const orxcore::Guid& subtype, std::uint32_t bitsPerSample) {
  if (subtype != kSubtypePcm) return 0;
  switch (bitsPerSample) {
    case 8: return 10;
    case 16: return 20;
    case 24: return 30;
    case 32: return 40;
    default: return 0;
  }
}

bool HostSampleTypeCode(std::int32_t sampleType, std::int32_t& code) {
  switch (sampleType) {
    case 0: code = 12; return true;
    case 10: code = 2; return true;
    case 20: code = 3; return true;
    case 30: code = 4; return true;
    case 40: code = 6; return true;
    case 50: code = 7; return true;
    default: return false;
  }
}

}  // namespace Aurivox
