// Test helpers: "MPLS" playlist bytes laid out as a camera writes them, and
// BDMV folder trees to put them in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "orxcore/String.h"
#include "support/TempDir.h"

namespace aurivox_test {

// Connection conditions of a play item: 1 starts a shot, 6 continues one.
constexpr std::uint8_t kNewShot = 1;
constexpr std::uint8_t kSameShot = 6;

// Each item's clip number and the whole byte that holds its condition.
using PlayItems = std::vector<std::pair<std::string, std::uint8_t>>;

// Where the playlist section and its items lie in what MakePlaylist gives.
constexpr std::size_t kSectionStart = 58;
constexpr std::size_t kFirstItemOffset = kSectionStart + 10;
constexpr std::size_t kItemSize = 50;  // its length field included

// Header, application info, the playlist section, then a six-byte mark
// section.
std::vector<std::uint8_t> MakePlaylist(const PlayItems& items);

// Writes `value` big-endian into `size` bytes at `offset`.
void PutBigEndian(std::vector<std::uint8_t>& bytes, std::size_t offset, std::uint32_t value, std::size_t size);

// A recording folder tree: BDMV with STREAM, CLIPINF and PLAYLIST.
class RecordingTree {
 public:
  RecordingTree();

  const TempDir& dir() const { return dir_; }
  // Full path of `relative` below BDMV, e.g. "STREAM/00001.MTS".
  orxcore::WString Path(const std::string& relative) const;
  void WritePlaylist(const std::string& name, const PlayItems& items) const;
  // A stream file whose bytes name it, so that a mix-up shows.
  void WriteStream(const std::string& name) const;
  void Remove(const std::string& relative) const;
  // Writes `source` split at `cuts` into segments 00011.. (one shot) after
  // an unrelated shot 00010, and a playlist 00011 naming them all
  // (playlists numbered above a clip are never searched).
  void WriteSplitRecording(const std::vector<std::uint8_t>& source, const std::vector<std::size_t>& cuts) const;

 private:
  TempDir dir_;
};

}  // namespace aurivox_test
