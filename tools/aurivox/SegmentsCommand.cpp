// aurivox segments: the segment files that opening a file of a split camera
// recording reads, in playing order.
#include <cstdio>
#include <string>
#include <vector>

#include "AVCHDUtils.h"
#include "Commands.h"
#include "Json.h"
#include "ZUM/PathUtils.h"
#include "orxcore/File.h"
#include "orxcore/String.h"

namespace aurivox_tool {
namespace {

constexpr char kName[] = "segments";

void PrintHelp() {
  std::fputs(
      "Usage: aurivox segments [--json] PATH\n"
      "\n"
      "Lists, one per line, the segment files that opening PATH reads as one\n"
      "stream: the stream files of the camera shot that PATH belongs to, from\n"
      "the shot's first segment to its last, as the recording's playlists\n"
      "(BDMV/PLAYLIST) order them. Prints nothing for a file that is not part of\n"
      "a split recording (AVCHD: BDMV/STREAM/NNNNN.MTS beside CLIPINF and\n"
      "PLAYLIST); such a file is read on its own.\n"
      "\n"
      "Options:\n"
      "  --json      print the paths as a JSON array of strings\n"
      "  -h, --help  show this help and exit\n",
      stdout);
}

// Segments as the decoder finds them: only a recognised clip is looked up.
std::vector<orxcore::WString> SegmentsOf(const orxcore::WString& path) {
  std::vector<orxcore::WString> segments;
  if (AVCHDUtils::IsSpannedClipFile(path)) AVCHDUtils::FindSpannedSegments(path, segments);
  return segments;
}

void PrintSegments(const std::vector<orxcore::WString>& segments, bool json) {
  if (!json) {
    for (const auto& segment : segments) std::printf("%s\n", orxcore::UTF16toStdString(segment).c_str());
    return;
  }
  Json paths = Json::array();
  for (const auto& segment : segments) paths.push_back(orxcore::UTF16toStdString(segment));
  std::printf("%s\n", JsonLine(paths).c_str());
}

}  // namespace

int RunSegments(const Arguments& args) {
  bool json = false;
  bool optionsEnded = false;
  std::string path;
  for (const std::string& arg : args) {
    if (!optionsEnded && (arg == "-h" || arg == "--help")) {
      PrintHelp();
      return kExitOk;
    }
    if (!optionsEnded && arg == "--json") {
      json = true;
    } else if (!optionsEnded && arg == "--") {
      optionsEnded = true;
    } else if (!optionsEnded && arg.size() > 1 && arg[0] == '-') {
      return UsageError(kName, "unknown option '" + arg + "'");
    } else if (path.empty()) {
      path = arg;
      if (path.empty()) return UsageError(kName, "PATH is empty");
    } else {
      return UsageError(kName, "takes one PATH; '" + arg + "' is one too many");
    }
  }
  if (path.empty()) return UsageError(kName, "missing PATH");

  // The decoder strips a long-path prefix before it looks at the name.
  const orxcore::WString widePath = ZUM::PathUtils::Win::StripUNC(orxcore::UTF8to16(path));
  if (!orxcore::File::IsRegularFile(widePath)) return Fail("no such file: " + path);
  PrintSegments(SegmentsOf(widePath), json);
  return kExitOk;
}

}  // namespace aurivox_tool
