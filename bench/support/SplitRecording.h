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

// Writes `source` cut into `parts` segments of about equal size below
// `folder` (BDMV/STREAM/00001.MTS onwards, BDMV/PLAYLIST/00001.MPL), unless
// segments of those sizes are there already. Empty on failure.
SplitRecording MakeSplitRecording(const std::filesystem::path& source, int parts,
                                  const std::filesystem::path& folder);

orxcore::WString WidePath(const std::filesystem::path& path);

}  // namespace bench
