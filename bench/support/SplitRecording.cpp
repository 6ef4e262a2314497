#include "SplitRecording.h"

#include <cstdio>
#include <fstream>
#include <system_error>

#include "PlaylistBuilder.h"

namespace bench {
namespace {

namespace fs = std::filesystem;

std::string ClipName(int index) {
  char name[16];
  std::snprintf(name, sizeof name, "%05d", index + 1);
  return name;
}

bool HasSize(const fs::path& path, std::uintmax_t size) {
  std::error_code error;
  return fs::file_size(path, error) == size && !error;
}

// Copies `size` bytes of `in` to `path`.
bool CopyRange(std::ifstream& in, std::uintmax_t size, const fs::path& path) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  std::vector<char> buffer(1 << 20);
  while (size > 0 && in && out) {
    const auto chunk = static_cast<std::streamsize>(std::min<std::uintmax_t>(size, buffer.size()));
    in.read(buffer.data(), chunk);
    out.write(buffer.data(), in.gcount());
    size -= static_cast<std::uintmax_t>(in.gcount());
  }
  return size == 0 && static_cast<bool>(out);
}

}  // namespace

orxcore::WString WidePath(const fs::path& path) { return orxcore::UTF8to16(path.u8string()); }

SplitRecording MakeSplitRecording(const fs::path& source, int parts, const fs::path& folder) {
  std::error_code error;
  const std::uintmax_t total = fs::file_size(source, error);
  if (error || parts < 1 || total < static_cast<std::uintmax_t>(parts)) return {};
  for (const char* sub : {"BDMV/STREAM", "BDMV/CLIPINF", "BDMV/PLAYLIST"}) fs::create_directories(folder / sub);

  SplitRecording recording;
  aurivox_test::PlayItems playlist;
  std::ifstream in(source, std::ios::binary);
  for (int i = 0; i < parts; ++i) {
    const std::uintmax_t begin = total * static_cast<std::uintmax_t>(i) / static_cast<std::uintmax_t>(parts);
    const std::uintmax_t end = total * static_cast<std::uintmax_t>(i + 1) / static_cast<std::uintmax_t>(parts);
    const fs::path segment = folder / "BDMV" / "STREAM" / (ClipName(i) + ".MTS");
    if (!HasSize(segment, end - begin)) {
      in.seekg(static_cast<std::streamoff>(begin));
      if (!CopyRange(in, end - begin, segment)) return {};
    }
    recording.segments.push_back(WidePath(segment));
    playlist.emplace_back(ClipName(i), i == 0 ? aurivox_test::kNewShot : aurivox_test::kSameShot);
  }
  const std::vector<std::uint8_t> bytes = aurivox_test::MakePlaylist(playlist);
  std::ofstream(folder / "BDMV" / "PLAYLIST" / "00001.MPL", std::ios::binary | std::ios::trunc)
      .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  recording.firstSegment = recording.segments.front();
  return recording;
}

}  // namespace bench
