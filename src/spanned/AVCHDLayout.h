// Names of the AVCHD folder tree, shared by recognition and discovery.
#pragma once

#include <cstddef>

namespace AVCHDUtils {

constexpr char16_t kRecordingRootFolder[] = u"BDMV";
constexpr char16_t kStreamFolder[] = u"STREAM";
constexpr char16_t kClipInfoFolder[] = u"CLIPINF";
constexpr char16_t kPlaylistFolder[] = u"PLAYLIST";

// Stream, clip-information and playlist files are named by five digits.
constexpr std::size_t kClipNumberLength = 5;

}  // namespace AVCHDUtils
