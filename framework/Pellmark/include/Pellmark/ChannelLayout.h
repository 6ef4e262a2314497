// Conversion of the framework's channel layout into the host SDK's labels.
#pragma once

#include <cstdint>

#include "aurivox/HostRecords.h"
#include "orxmediatypes/AudioFormat.h"

namespace Pellmark {

// Writes one SDK label per channel of `layout`, at most `count`; the SDK
// label equals the layout's label code. Entries past the layout's channels
// are left as they were.
void BEToSDKAudioChannelLayout(const orxmediatypes::AudioChannelLayout& layout, std::uint32_t count,
                               QzAudioChannelLabel* labels);

}  // namespace Pellmark
