// A media file cut into consecutive segments inside a camera's BDMV folder
// tree with a playlist naming them as one shot, for measuring reads across
// segment files against reads of the file itself.
#pragma once

#include <filesystem>
#include <vector>

#include "orxcore/String.h"

namespace bench {

struct SplitRecording {
  std::vector<orxcore::WString> segments;  // in playing order
  orxcore::WString firstSegment;           // what a host would open
};

// The recordings the benchmarks read: a source in 1 segment (the
// reference), 3 and 30.
struct SplitRecordings {
  SplitRecording one;
  SplitRecording three;
  SplitRecording thirty;

  bool empty() const { return one.segments.empty(); }  // made all or none
};

// Writes `source` cut into 1, 3 and 30 segments of about equal size below
// `folder`/split-1, split-3 and split-30 (BDMV/STREAM/00001.MTS onwards,
// BDMV/PLAYLIST/00001.MPL), unless segments of those sizes are there
// already, as when another benchmark wrote them. The copies are written a
// chunk at a time in turn, so that they lie on the same stretch of memory:
// a copy written after another one lies elsewhere, which on a virtual
// machine reads up to half faster or slower by itself.
SplitRecordings MakeSplitRecordings(const std::filesystem::path& source, const std::filesystem::path& folder);

orxcore::WString WidePath(const std::filesystem::path& path);

}  // namespace bench
