#include "SplitRecording.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <system_error>

#include "PlaylistBuilder.h"

namespace bench {
namespace {

namespace fs = std::filesystem;

// A source cut into `parts` segments below `folder`.
struct Cut {
  int parts;
  fs::path folder;
};

// Bytes a cut is handed before the next one's turn.
constexpr std::size_t kChunkBytes = std::size_t{1} << 20;

std::string ClipName(int index) {
  char name[16];
  std::snprintf(name, sizeof name, "%05d", index + 1);
  return name;
}

fs::path SegmentPath(const Cut& cut, int index) { return cut.folder / "BDMV" / "STREAM" / (ClipName(index) + ".MTS"); }

// Where segment `index` of `parts` starts in `total` bytes; `parts` gives the end.
std::uintmax_t SegmentStart(std::uintmax_t total, int parts, int index) {
  return total * static_cast<std::uintmax_t>(index) / static_cast<std::uintmax_t>(parts);
}

bool HasSegments(const Cut& cut, std::uintmax_t total) {
  for (int i = 0; i < cut.parts; ++i) {
    std::error_code error;
    const std::uintmax_t size = SegmentStart(total, cut.parts, i + 1) - SegmentStart(total, cut.parts, i);
    if (fs::file_size(SegmentPath(cut, i), error) != size || error) return false;
  }
  return true;
}

// Writes one cut's segments in order as the source's bytes come.
class SegmentWriter {
 public:
  SegmentWriter(const Cut& cut, std::uintmax_t total) : cut_(cut), total_(total) {}

  bool Write(const char* data, std::size_t size) {
    while (size > 0) {
      if (!out_.is_open()) out_.open(SegmentPath(cut_, index_), std::ios::binary | std::ios::trunc);
      const std::uintmax_t end = SegmentStart(total_, cut_.parts, index_ + 1);
      const auto piece = static_cast<std::size_t>(std::min<std::uintmax_t>(size, end - written_));
      if (!out_.write(data, static_cast<std::streamsize>(piece))) return false;
      data += piece;
      size -= piece;
      written_ += piece;
      if (written_ == end) {
        out_.close();
        if (!out_) return false;
        ++index_;
      }
    }
    return true;
  }

 private:
  const Cut& cut_;
  std::uintmax_t total_;
  std::uintmax_t written_ = 0;
  int index_ = 0;
  std::ofstream out_;
};

bool CopyInTurns(const fs::path& source, std::uintmax_t total, const std::vector<Cut>& cuts) {
  std::vector<SegmentWriter> writers;
  writers.reserve(cuts.size());
  for (const Cut& cut : cuts) writers.emplace_back(cut, total);
  std::ifstream in(source, std::ios::binary);
  std::vector<char> buffer(kChunkBytes);
  std::size_t turn = 0;
  for (std::uintmax_t left = total; left > 0;) {
    in.read(buffer.data(), static_cast<std::streamsize>(std::min<std::uintmax_t>(left, buffer.size())));
    const auto got = static_cast<std::size_t>(in.gcount());
    if (got == 0) return false;
    // Who writes first turns with every chunk, so that no copy always gets
    // the same place among the pages handed out together.
    for (std::size_t k = 0; k < writers.size(); ++k) {
      if (!writers[(k + turn) % writers.size()].Write(buffer.data(), got)) return false;
    }
    left -= got;
    ++turn;
  }
  return true;
}

SplitRecording WritePlaylist(const Cut& cut) {
  SplitRecording recording;
  aurivox_test::PlayItems playlist;
  for (int i = 0; i < cut.parts; ++i) {
    recording.segments.push_back(WidePath(SegmentPath(cut, i)));
    playlist.emplace_back(ClipName(i), i == 0 ? aurivox_test::kNewShot : aurivox_test::kSameShot);
  }
  const std::vector<std::uint8_t> bytes = aurivox_test::MakePlaylist(playlist);
  std::ofstream(cut.folder / "BDMV" / "PLAYLIST" / "00001.MPL", std::ios::binary | std::ios::trunc)
      .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  recording.firstSegment = recording.segments.front();
  return recording;
}

}  // namespace

orxcore::WString WidePath(const fs::path& path) { return orxcore::UTF8to16(path.u8string()); }

SplitRecordings MakeSplitRecordings(const fs::path& source, const fs::path& folder) {
  const std::vector<Cut> cuts{{1, folder / "split-1"}, {3, folder / "split-3"}, {30, folder / "split-30"}};
  std::error_code error;
  const std::uintmax_t total = fs::file_size(source, error);
  // At least a byte a segment.
  if (error || total < static_cast<std::uintmax_t>(cuts.back().parts)) return {};
  bool present = true;
  for (const Cut& cut : cuts) {
    for (const char* sub : {"BDMV/STREAM", "BDMV/CLIPINF", "BDMV/PLAYLIST"}) fs::create_directories(cut.folder / sub);
    present = present && HasSegments(cut, total);
  }
  if (!present && !CopyInTurns(source, total, cuts)) return {};
  return {WritePlaylist(cuts[0]), WritePlaylist(cuts[1]), WritePlaylist(cuts[2])};
}

}  // namespace bench
