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

// A source cut into `parts` segments of about equal size below `folder`
// (BDMV/STREAM/00001.MTS onwards, BDMV/PLAYLIST/00001.MPL).
struct Cut {
  int parts;
  std::filesystem::path folder;
};

// Writes `source` cut as each of `cuts` says, unless segments of those sizes
// are there already: a recording a cut, empty for every cut on failure. The
// copies are written a chunk at a time in turn, so that they lie on the same
// stretch of memory: a copy written after another one lies elsewhere, which
// on a virtual machine reads up to half faster or slower by itself.
std::vector<SplitRecording> MakeSplitRecordings(const std::filesystem::path& source, const std::vector<Cut>& cuts);

// The cuts the benchmarks read, the same folders so that one benchmark finds
// what another wrote: 1 segment (the reference), 3 and 30.
std::vector<Cut> OneThreeAndThirtySegments(const std::filesystem::path& folder);

orxcore::WString WidePath(const std::filesystem::path& path);

}  // namespace bench
