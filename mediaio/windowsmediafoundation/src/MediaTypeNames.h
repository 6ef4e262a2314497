// Descriptions of audio and video subtypes by the media-type name table, and
// the localised texts for formats without a description.
#pragma once

#include <cstdint>

#include "orxcore/Guid.h"
#include "orxcore/String.h"

namespace windowsmediafoundation {

// "Unknown Audio Format: @0" and "Unknown Video Format: @0", localised, with
// the placeholder still in them.
orxcore::WString UnknownAudioFormatText();
orxcore::WString UnknownVideoFormatText();

// The name of the last table row with `subtype`: a later section's name
// replaces an earlier one's. Without a row, the unknown audio text with
// "{GUID}" in place of "@0".
orxcore::WString DescribeAudioSubtype(const orxcore::Guid& subtype);

// The name of the first table row with `subtype`; without a row, the unknown
// video text with the subtype's four characters (for subtypes on the
// attribute base) or "{GUID}". Then ", W x H" when both sides are non-zero
// and ", (rate)" when the rate's numerator and denominator differ.
orxcore::WString DescribeVideoSubtype(const orxcore::Guid& subtype, std::uint32_t width,
                                      std::uint32_t height, std::uint32_t rateNumerator,
                                      std::uint32_t rateDenominator);

}  // namespace windowsmediafoundation
