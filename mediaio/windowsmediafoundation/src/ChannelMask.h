// Conversion of a WAVEFORMATEXTENSIBLE speaker mask into the host's channel
// layout, one label a channel.
#pragma once

#include <cstdint>

#include "orxmediatypes/AudioFormat.h"

namespace windowsmediafoundation {

// Empties `layout`, then appends the label of every set speaker bit from bit 0
// to bit 17 until it holds `channelCount` entries, and pads it with unlabelled
// channels (label 0) up to `channelCount`. Bits 18 to 31 carry no speaker the
// host knows and are ignored. A negative count gives an empty layout.
void ChannelMaskToLayout(std::uint32_t mask, orxmediatypes::AudioChannelLayout& layout,
                         std::int32_t channelCount);

// The same conversion returning a fresh layout.
orxmediatypes::AudioChannelLayout ChannelLayoutFromMask(std::uint32_t mask, std::int32_t channelCount);

}  // namespace windowsmediafoundation
