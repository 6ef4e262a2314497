// Discovery of the stream files that hold one shot of an AVCHD recording.
#include <cstdio>
#include <string>
#include <vector>

#include "AVCHDLayout.h"
#include "AVCHDUtils.h"
#include "PlayItemVisitors.h"
#include "orxcore/File.h"

namespace AVCHDUtils {
namespace {

using orxcore::WString;
namespace File = orxcore::File;

// `folder`/`name` with the first of the two extensions that exists; empty
// when neither does.
WString FindWithExtension(const WString& folder, const WString& name, const char16_t* preferred,
                          const char16_t* fallback) {
  // No file name holds a NUL, though the file system would see only the
  // part before one.
  if (name.find(u'\0') != WString::npos) return {};
  WString path = File::Combine(folder, name + preferred);
  if (File::Exists(path)) return path;
  path = File::Combine(folder, name + fallback);
  return File::Exists(path) ? path : WString();
}

WString FindPlaylistFile(const WString& playlistFolder, int number) {
  char name[16];
  std::snprintf(name, sizeof name, "%05d", number);
  return FindWithExtension(playlistFolder, orxcore::AsciiToUTF16(name), u".MPL", u".mpls");
}

// Appends the stream file of each clip, skipping clips whose file is missing.
void AppendStreamFiles(const WString& streamFolder, const std::vector<std::string>& clips,
                       std::vector<WString>& out) {
  for (const std::string& clip : clips) {
    WString path = FindWithExtension(streamFolder, orxcore::AsciiToUTF16(clip), u".MTS", u".m2ts");
    if (!path.empty()) out.push_back(std::move(path));
  }
}

}  // namespace

void FindSpannedSegments(const WString& path, std::vector<WString>& segments) {
  if (!IsSpannedClipFile(path)) return;

  // A clip-information file is looked up in its own folder, which holds no
  // stream files, so it yields nothing.
  const WString streamFolder = File::GetParent(path);
  const WString playlistFolder = File::Combine(File::GetParent(streamFolder), kPlaylistFolder);
  const WString title = File::GetTitle(path);
  const std::string targetClip = orxcore::UTF16toStdString(title);
  std::int32_t number = -1;
  orxcore::StringToNumber(title, number);

  // The playlist numbered like the clip comes first, then the lower ones;
  // the first that names the clip decides.
  bool found = false;
  std::vector<std::string> clips;
  do {
    const WString playlist = FindPlaylistFile(playlistFolder, number);
    if (!playlist.empty()) {
      found = false;
      clips.clear();
      PlayItemClipFinder finder(targetClip.c_str(), &found, &clips);
      VisitPlayItems(playlist, finder);
      if (found) AppendStreamFiles(streamFolder, clips, segments);
    }
    --number;
  } while (number >= 0 && !found);
}

void FindShotHeads(const WString& playlistPath, std::vector<WString>& streams) {
  const WString streamFolder = File::Combine(File::GetParent(File::GetParent(playlistPath)), kStreamFolder);
  if (!File::IsDirectory(streamFolder)) return;
  std::vector<std::string> clips;
  ShotHeadClipFinder finder(&clips);
  VisitPlayItems(playlistPath, finder);
  AppendStreamFiles(streamFolder, clips, streams);
}

}  // namespace AVCHDUtils
