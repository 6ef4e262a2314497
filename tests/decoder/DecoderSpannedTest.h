// Split camera recordings for the decoder's tests.
#pragma once

#include <cstdint>
#include <vector>

#include "PlaylistBuilder.h"

namespace aurivox_test {

// Writes `source` split at `cuts` into segments 00011.. (one shot) after an
// unrelated shot 00010, and a playlist 00011 naming them all (playlists with
// numbers above a clip's are never searched).
void WriteSplitRecording(const RecordingTree& tree, const std::vector<std::uint8_t>& source,
                         const std::vector<std::size_t>& cuts);

}  // namespace aurivox_test
