// Tells the host, once per file and process, that a file's audio seems to
// need the platform's Dolby decoder and the platform lacks it.
#pragma once

#include <cstdint>

#include "aurivox/HostRecords.h"
#include "orxcore/Guid.h"
#include "orxcore/String.h"

namespace Aurivox {

enum class DolbySuspect {
  kNone,
  kMaybe,    // the open failed in a way a missing Dolby decoder causes
  kCertain,  // a Dolby subtype gave no usable audio
};

// Flag bits of Decoder::EnableDolbyWarning.
constexpr std::uint32_t kDolbyWarnMaybeAsCertain = 1;
constexpr std::uint32_t kDolbyWarningOff = 2;
constexpr std::uint32_t kDolbyWarnEventType2 = 4;

// True for the five subtypes of Dolby audio (AC-3 and E-AC-3 in their
// MPEG-4, wave-format and DirectShow forms).
bool IsDolbySubtype(const orxcore::Guid& subtype);

// The open failure codes that point at a missing Dolby decoder.
bool IsDolbySuspectResult(std::int32_t hr);

// Records `path` and, unless it was recorded before, the check is off, no
// suite is set or the media features are installed, sends the localised
// warning through the suite's first entry. Never affects the open's result.
void WarnAboutMissingDolby(const orxcore::WString& path, DolbySuspect suspect,
                           const QzSDKErrorSuite3* suite, std::uint32_t flags);

// Whether the platform's media features (and with them the Dolby decoder)
// are installed.
bool MediaFeaturesPresent();

}  // namespace Aurivox
