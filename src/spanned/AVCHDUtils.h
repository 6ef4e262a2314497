// Recognition of AVCHD camera recordings, reading of their playlists, and
// discovery of the stream files that together hold one shot.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "orxcore/String.h"

namespace AVCHDUtils {

// Bytes at the start of every visited play item that are guaranteed to lie
// inside the playlist: the length field through the connection condition.
constexpr std::size_t kPlayItemBytesRead = 13;

// Receives the play items of a playlist, in playlist order.
class PlayItemVisitor {
 public:
  // `item` points at the item's first byte (its length field); returning
  // false stops the visiting.
  virtual bool Visit(const std::uint8_t* item) = 0;
  virtual ~PlayItemVisitor() = default;
};

// True for a stream file (".mts", ".m2ts") in BDMV/STREAM or a
// clip-information file (".cpi", ".clpi") in BDMV/CLIPINF whose title is a
// five-digit clip number, when BDMV also holds PLAYLIST and the sibling folder.
bool IsSpannedClipFile(const orxcore::WString& path);

// Reads the "MPLS" playlist at `playlistPath` and hands its play items to
// `visitor`. A missing, short or malformed playlist yields no visits; the
// last item is visited only when at least two more bytes follow it.
void VisitPlayItems(const orxcore::WString& playlistPath, PlayItemVisitor& visitor);

// Appends the full paths of the stream files of the shot that holds `path`,
// in playing order. The first playlist numbered at or below the clip that
// names the clip decides; nothing is appended when none does.
void FindSpannedSegments(const orxcore::WString& path, std::vector<orxcore::WString>& segments);

// Appends the full paths of the first stream file of every shot in the
// playlist at `playlistPath`.
void FindShotHeads(const orxcore::WString& playlistPath, std::vector<orxcore::WString>& streams);

}  // namespace AVCHDUtils
