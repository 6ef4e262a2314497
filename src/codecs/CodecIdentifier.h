// The 32-bit codec identifier and host sample type of a decoded audio stream,
// derived from its Media Foundation subtype.
#pragma once

#include <cstdint>

#include "orxcore/Guid.h"

namespace Aurivox {

// The identifier of a known subtype ("pcm ", ".mp3", "aac ", ...), else the
// CRC-32 of the subtype's 16 bytes.
std::uint32_t CodecIdentifierForSubtype(const orxcore::Guid& subtype);

// The standard CRC-32 (reflected, polynomial 0x04C11DB7) of a subtype's bytes.
std::uint32_t SubtypeChecksum(const orxcore::Guid& subtype);

// The framework sample type: 10, 20, 30, 40 for 8- to 32-bit integer PCM,
// 0 for anything else (floating point included).
std::int32_t SampleTypeForSubtype(const orxcore::Guid& subtype, std::uint32_t bitsPerSample);

// The host SDK's sample-type code for a framework sample type; false for a
// type the host has no code for (the host's field is then left alone).
bool HostSampleTypeCode(std::int32_t sampleType, std::int32_t& code);

// Subtypes the identifier and sample type depend on.
extern const orxcore::Guid kSubtypePcm;
extern const orxcore::Guid kSubtypeFloat;

}  // namespace Aurivox
