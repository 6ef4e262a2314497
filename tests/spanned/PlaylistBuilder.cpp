#include "PlaylistBuilder.h"

#include <filesystem>

namespace aurivox_test {
namespace {

constexpr std::size_t kHeaderSize = 40;
constexpr std::size_t kAppInfoSize = 18;  // length field and 14 bytes
constexpr std::size_t kSectionHeaderSize = 10;
constexpr std::uint16_t kItemBodySize = PlaylistBuilder::kItemSize - 2;

void Put16(std::vector<std::uint8_t>& out, std::uint16_t value) {
  out.push_back(static_cast<std::uint8_t>(value >> 8));
  out.push_back(static_cast<std::uint8_t>(value));
}

void Put32(std::vector<std::uint8_t>& out, std::uint32_t value) {
  Put16(out, static_cast<std::uint16_t>(value >> 16));
  Put16(out, static_cast<std::uint16_t>(value));
}

void PutText(std::vector<std::uint8_t>& out, const std::string& text) { out.insert(out.end(), text.begin(), text.end()); }

void PutZeros(std::vector<std::uint8_t>& out, std::size_t count) { out.insert(out.end(), count, 0); }

}  // namespace

PlaylistBuilder& PlaylistBuilder::Item(const std::string& clip, std::uint8_t connection) {
  items_.push_back({clip, connection, std::nullopt});
  return *this;
}

PlaylistBuilder& PlaylistBuilder::Type(const std::string& fourChars) {
  type_ = fourChars;
  return *this;
}

PlaylistBuilder& PlaylistBuilder::Version(const std::string& fourChars) {
  version_ = fourChars;
  return *this;
}

PlaylistBuilder& PlaylistBuilder::StartAddress(std::uint32_t address) {
  startAddress_ = address;
  return *this;
}

PlaylistBuilder& PlaylistBuilder::SectionLength(std::uint32_t length) {
  sectionLength_ = length;
  return *this;
}

PlaylistBuilder& PlaylistBuilder::ItemCount(std::uint16_t count) {
  itemCount_ = count;
  return *this;
}

PlaylistBuilder& PlaylistBuilder::LastItemLength(std::uint16_t length) {
  items_.back().declaredLength = length;
  return *this;
}

PlaylistBuilder& PlaylistBuilder::TrailingBytes(std::size_t count) {
  trailingBytes_ = count;
  return *this;
}

std::vector<std::uint8_t> PlaylistBuilder::Build() const {
  const std::size_t sectionStart = kHeaderSize + kAppInfoSize;
  const std::size_t sectionLength = kSectionHeaderSize - 4 + items_.size() * kItemSize;
  const std::size_t markStart = sectionStart + 4 + sectionLength;

  std::vector<std::uint8_t> out;
  PutText(out, type_);
  PutText(out, version_);
  Put32(out, startAddress_.value_or(static_cast<std::uint32_t>(sectionStart)));
  Put32(out, static_cast<std::uint32_t>(markStart));
  Put32(out, 0);  // no extension data
  PutZeros(out, kHeaderSize - out.size());
  Put32(out, kAppInfoSize - 4);
  PutZeros(out, kAppInfoSize - 4);

  Put32(out, sectionLength_.value_or(static_cast<std::uint32_t>(sectionLength)));
  Put16(out, 0);  // reserved
  Put16(out, itemCount_.value_or(static_cast<std::uint16_t>(items_.size())));
  Put16(out, 0);  // sub-paths
  for (const PlayItem& item : items_) {
    const std::size_t start = out.size();
    Put16(out, item.declaredLength.value_or(kItemBodySize));
    PutText(out, item.clip);
    PutText(out, "M2TS");
    out.push_back(0);  // not multi-angle
    out.push_back(item.connection);
    out.push_back(0);               // STC id
    Put32(out, 0x00010000);         // in time
    Put32(out, 0x00020000);         // out time
    PutZeros(out, start + kItemSize - out.size());  // user-operation mask, still mode, streams
  }
  // The mark section, or as much of it as asked for.
  std::vector<std::uint8_t> marks;
  Put32(marks, 2);
  Put16(marks, 0);
  marks.resize(trailingBytes_, 0);
  out.insert(out.end(), marks.begin(), marks.end());
  return out;
}

RecordingTree::RecordingTree() {
  for (const char* folder : {"BDMV/STREAM", "BDMV/CLIPINF", "BDMV/PLAYLIST"}) dir_.MakeDir(folder);
}

orxcore::WString RecordingTree::Path(const std::string& relative) const { return dir_.WPath("BDMV/" + relative); }

orxcore::WString RecordingTree::WritePlaylist(const std::string& name, const PlaylistBuilder& playlist) const {
  return ToWString(dir_.WriteFile("BDMV/PLAYLIST/" + name, playlist.Build()));
}

orxcore::WString RecordingTree::WriteStream(const std::string& name) const {
  return ToWString(dir_.WriteFile("BDMV/STREAM/" + name, "stream " + name));
}

void RecordingTree::Remove(const std::string& relative) const {
  std::filesystem::remove_all(dir_.Path("BDMV/" + relative));
}

}  // namespace aurivox_test
