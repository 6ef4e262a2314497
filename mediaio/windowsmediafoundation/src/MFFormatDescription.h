// Readable descriptions of the formats in Media Foundation media types, for
// MFReader's GetAudioFormatDescription, GetSubAudioFormatType and
// GetVideoFormatDescription.
#pragma once

#include <guiddef.h>
#include <mfobjects.h>

#include <cstdint>

#include "orxcore/String.h"

namespace windowsmediafoundation {

// The codec description of an audio type (null: no audio type).
orxcore::WString DescribeAudioFormat(IMFMediaType* audioType);

// The MF_MT_SUBTYPE of an audio type; GUID_NULL when absent or unreadable.
GUID AudioSubtype(IMFMediaType* audioType);

// The description of a video type with its frame size and rate suffixes.
orxcore::WString DescribeVideoFormat(IMFMediaType* videoType, std::uint32_t width,
                                     std::uint32_t height, std::uint32_t rateNumerator,
                                     std::uint32_t rateDenominator);

}  // namespace windowsmediafoundation
