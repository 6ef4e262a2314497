// Arbitrary bytes as the playlist of a recording: the segments found for a
// clip and the shot heads must agree with the play items the reader hands
// over, and name only stream files that exist.
#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "AVCHDUtils.h"
#include "FuzzSupport.h"
#include "orxcore/File.h"

namespace {

namespace fs = std::filesystem;
using orxcore::WString;

constexpr char kTargetClip[] = "00003";
// A dozen play items reach every branch; longer playlists only repeat the
// look at each item's stream files and cut the runs a second by as much.
constexpr std::size_t kMaxPlaylistBytes = 1024;

struct Recording {
  Recording() {
    const fs::path root = aurivox_fuzz::ScratchFolder() / "BDMV";
    for (const char* folder : {"STREAM", "CLIPINF", "PLAYLIST"}) fs::create_directories(root / folder);
    // 00004 has no stream file; 00002 has both spellings.
    for (const char* name : {"00001.m2ts", "00002.m2ts", "00002.MTS", "00003.m2ts", "00005.m2ts",
                             "00006.m2ts", "00007.m2ts", "00008.m2ts", "00009.m2ts"}) {
      aurivox_fuzz::WriteFile(root / "STREAM" / name, reinterpret_cast<const std::uint8_t*>(name), 5);
      existing.insert(std::string(name, 5));
    }
    playlist = root / "PLAYLIST" / (std::string(kTargetClip) + ".mpls");
    widePlaylist = aurivox_fuzz::ToWString(playlist);
    streamFolder = aurivox_fuzz::ToWString(root / "STREAM");
    target = orxcore::File::Combine(streamFolder, u"00003.m2ts");
  }

  fs::path playlist;
  WString widePlaylist;
  WString streamFolder;
  WString target;
  std::set<std::string> existing;  // clips with a stream file
};

struct Item {
  std::string clip;
  bool continuesShot;
};

class ItemCollector : public AVCHDUtils::PlayItemVisitor {
 public:
  bool Visit(const std::uint8_t* item) override {
    items.push_back({std::string(reinterpret_cast<const char*>(item + 2), 5), (item[12] & 0x0F) == 6});
    return true;
  }
  std::vector<Item> items;
};

// The clip number of a found stream file, checking that it is one.
std::string ClipOf(const Recording& recording, const WString& path) {
  FUZZ_CHECK(orxcore::File::GetParent(path) == recording.streamFolder);
  FUZZ_CHECK(orxcore::File::IsRegularFile(path));
  const std::string clip = orxcore::UTF16toStdString(orxcore::File::GetTitle(path));
  FUZZ_CHECK(recording.existing.count(clip) == 1);
  return clip;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Recording recording;
  aurivox_fuzz::WriteFile(recording.playlist, data, std::min(size, kMaxPlaylistBytes));

  ItemCollector collector;
  AVCHDUtils::VisitPlayItems(recording.widePlaylist, collector);
  const auto& items = collector.items;

  std::vector<WString> segments;
  AVCHDUtils::FindSpannedSegments(recording.target, segments);
  const bool named = std::any_of(items.begin(), items.end(), [](const Item& i) { return i.clip == kTargetClip; });
  // Only this one playlist exists, so the clip's shot is found exactly when
  // it names the clip, and then includes the clip's own file.
  FUZZ_CHECK(named == !segments.empty());
  FUZZ_CHECK(segments.empty() || std::count(segments.begin(), segments.end(), recording.target) >= 1);
  FUZZ_CHECK(segments.size() <= items.size());
  for (const WString& segment : segments) ClipOf(recording, segment);

  std::vector<WString> heads;
  AVCHDUtils::FindShotHeads(recording.widePlaylist, heads);
  std::vector<std::string> expectedHeads;
  for (const Item& item : items) {
    if (!item.continuesShot && recording.existing.count(item.clip)) expectedHeads.push_back(item.clip);
  }
  FUZZ_CHECK(heads.size() == expectedHeads.size());
  for (std::size_t i = 0; i < heads.size(); ++i) FUZZ_CHECK(ClipOf(recording, heads[i]) == expectedHeads[i]);
  return 0;
}
