// Test helpers: "MPLS" playlist bytes built field by field, and BDMV folder
// trees to put them in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "orxcore/String.h"
#include "support/TempDir.h"

namespace aurivox_test {

// Connection conditions of a play item: 1 starts a shot, 6 continues one.
constexpr std::uint8_t kNewShot = 1;
constexpr std::uint8_t kSameShot = 6;

// Lays a playlist out as a camera writes it: header, application info,
// playlist section with its play items, then the mark section. Each header
// and length field can be overridden to make a malformed file.
class PlaylistBuilder {
 public:
  // `connection` is written as the whole byte that holds the condition.
  PlaylistBuilder& Item(const std::string& clip, std::uint8_t connection);
  PlaylistBuilder& Type(const std::string& fourChars);
  PlaylistBuilder& Version(const std::string& fourChars);
  PlaylistBuilder& StartAddress(std::uint32_t address);
  PlaylistBuilder& SectionLength(std::uint32_t length);
  PlaylistBuilder& ItemCount(std::uint16_t count);
  // Declares a length for the item added last other than its real one.
  PlaylistBuilder& LastItemLength(std::uint16_t length);
  // Bytes after the play items; a camera writes a six-byte mark section.
  PlaylistBuilder& TrailingBytes(std::size_t count);

  std::vector<std::uint8_t> Build() const;

  // Offset of the first play item in what Build gives.
  static constexpr std::size_t kFirstItemOffset = 68;
  // Bytes of one play item, its length field included.
  static constexpr std::size_t kItemSize = 50;

 private:
  struct PlayItem {
    std::string clip;
    std::uint8_t connection;
    std::optional<std::uint16_t> declaredLength;
  };
  std::vector<PlayItem> items_;
  std::string type_ = "MPLS";
  std::string version_ = "0100";
  std::optional<std::uint32_t> startAddress_;
  std::optional<std::uint32_t> sectionLength_;
  std::optional<std::uint16_t> itemCount_;
  std::size_t trailingBytes_ = 6;
};

// A recording folder tree: BDMV with STREAM, CLIPINF and PLAYLIST.
class RecordingTree {
 public:
  RecordingTree();

  const TempDir& dir() const { return dir_; }
  // Full path of `relative` below BDMV, e.g. "STREAM/00001.MTS".
  orxcore::WString Path(const std::string& relative) const;
  orxcore::WString WritePlaylist(const std::string& name, const PlaylistBuilder& playlist) const;
  // A stream file whose bytes name it, so that a mix-up shows.
  orxcore::WString WriteStream(const std::string& name) const;
  void Remove(const std::string& relative) const;

 private:
  TempDir dir_;
};

}  // namespace aurivox_test
