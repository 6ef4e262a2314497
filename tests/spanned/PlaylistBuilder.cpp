#include "PlaylistBuilder.h"

#include <algorithm>
#include <cstring>

namespace aurivox_test {

void PutBigEndian(std::vector<std::uint8_t>& bytes, std::size_t offset, std::uint32_t value, std::size_t size) {
  for (std::size_t i = 0; i < size; ++i) bytes[offset + i] = static_cast<std::uint8_t>(value >> (8 * (size - 1 - i)));
}

std::vector<std::uint8_t> MakePlaylist(const PlayItems& items) {
  const auto marks = static_cast<std::uint32_t>(kFirstItemOffset + items.size() * kItemSize);
  std::vector<std::uint8_t> out(marks + 6);
  std::memcpy(out.data(), "MPLS0100", 8);
  PutBigEndian(out, 8, kSectionStart, 4);
  PutBigEndian(out, 12, marks, 4);
  PutBigEndian(out, 40, 14, 4);  // application info
  PutBigEndian(out, kSectionStart, marks - kSectionStart - 4, 4);
  PutBigEndian(out, kSectionStart + 6, static_cast<std::uint32_t>(items.size()), 2);
  for (std::size_t i = 0; i < items.size(); ++i) {
    const std::size_t at = kFirstItemOffset + i * kItemSize;
    const std::string names = items[i].first + "M2TS";
    PutBigEndian(out, at, kItemSize - 2, 2);
    std::copy(names.begin(), names.end(), out.begin() + static_cast<std::ptrdiff_t>(at + 2));
    out[at + 12] = items[i].second;
  }
  return out;
}

RecordingTree::RecordingTree() {
  for (const char* folder : {"BDMV/STREAM", "BDMV/CLIPINF", "BDMV/PLAYLIST"}) dir_.MakeDir(folder);
}

orxcore::WString RecordingTree::Path(const std::string& relative) const { return dir_.WPath("BDMV/" + relative); }

void RecordingTree::WritePlaylist(const std::string& name, const PlayItems& items) const {
  dir_.WriteFile("BDMV/PLAYLIST/" + name, MakePlaylist(items));
}

void RecordingTree::WriteStream(const std::string& name) const {
  dir_.WriteFile("BDMV/STREAM/" + name, "stream " + name);
}

void RecordingTree::Remove(const std::string& relative) const {
  std::filesystem::remove_all(dir_.Path("BDMV/" + relative));
}

void RecordingTree::WriteSplitRecording(const std::vector<std::uint8_t>& source,
                                        const std::vector<std::size_t>& cuts) const {
  std::size_t begin = 0;
  for (std::size_t i = 0; i <= cuts.size(); ++i) {
    const std::size_t end = i < cuts.size() ? cuts[i] : source.size();
    const std::vector<std::uint8_t> piece(source.data() + begin, source.data() + end);
    dir_.WriteFile("BDMV/STREAM/0001" + std::to_string(i + 1) + ".MTS", piece);
    begin = end;
  }
  WriteStream("00010.MTS");
  WritePlaylist("00011.MPL", {{"00010", kNewShot}, {"00011", kNewShot}, {"00012", kSameShot}, {"00013", kSameShot}});
}

}  // namespace aurivox_test
