// Readable descriptions of the formats in Media Foundation media types, for
// MFReader's GetAudioFormatDescription, GetSubAudioFormatType and
// GetVideoFormatDescription. Failed reads are traced under
// "windowsmediafoundation.MFReader.<operation>" at level 5.
#pragma once

#include <guiddef.h>
#include <mfobjects.h>

#include <cstdint>

#include "orxcore/String.h"

namespace windowsmediafoundation {

// The codec description of an audio type. Without a type, or when its
// subtype cannot be read, the unknown text with its "@0" still in it.
orxcore::WString DescribeAudioFormat(IMFMediaType* audioType);

// The MF_MT_SUBTYPE of an audio type; GUID_NULL when absent or unreadable.
GUID AudioSubtype(IMFMediaType* audioType);

// The description of a video type with its frame size and rate suffixes;
// without a type, or when its subtype cannot be read, the bare unknown text.
orxcore::WString DescribeVideoFormat(IMFMediaType* videoType, std::uint32_t width,
                                     std::uint32_t height, std::uint32_t rateNumerator,
                                     std::uint32_t rateDenominator);

}  // namespace windowsmediafoundation
