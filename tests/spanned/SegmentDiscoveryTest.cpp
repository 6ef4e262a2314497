#include <gtest/gtest.h>

#include "AVCHDUtils.h"
#include "PlaylistBuilder.h"

namespace AVCHDUtils {
namespace {

using aurivox_test::kNewShot;
using aurivox_test::kSameShot;
using Paths = std::vector<orxcore::WString>;

struct SegmentDiscovery : ::testing::Test {
  Paths Streams(std::initializer_list<const char*> names) const {
    Paths out;
    for (const char* name : names) out.push_back(tree_.Path(std::string("STREAM/") + name));
    return out;
  }
  Paths SegmentsOf(const std::string& name) const {
    Paths segments;
    FindSpannedSegments(tree_.Path("STREAM/" + name), segments);
    return segments;
  }

  aurivox_test::RecordingTree tree_;
};

TEST_F(SegmentDiscovery, OpeningAnySegmentGivesItsWholeShot) {
  // Shots 00001-00003, 00004-00005 and 00006; only the low four bits of an
  // item's condition byte are the condition.
  tree_.WritePlaylist("00001.mpls", {{"00001", kNewShot}, {"00002", kSameShot}, {"00003", 0xF0 | kSameShot},
                                     {"00004", kNewShot}, {"00005", kSameShot}, {"00006", kNewShot}});
  // 00002 is missing and left out; ".MTS" is taken before ".m2ts".
  for (const char* name : {"00001.m2ts", "00003.m2ts", "00003.MTS", "00004.m2ts", "00005.m2ts", "00006.m2ts"}) {
    tree_.WriteStream(name);
  }
  const Paths first = Streams({"00001.m2ts", "00003.MTS"});
  const std::pair<const char*, Paths> kCases[] = {
      {"00001.m2ts", first}, {"00002.m2ts", first}, {"00003.MTS", first},
      {"00004.m2ts", Streams({"00004.m2ts", "00005.m2ts"})}, {"00006.m2ts", Streams({"00006.m2ts"})},
  };
  for (const auto& [name, expected] : kCases) EXPECT_EQ(SegmentsOf(name), expected) << name;
}

TEST_F(SegmentDiscovery, PlaylistsAreTriedDownFromTheClipsNumberUntilOneNamesIt) {
  for (const char* name : {"00001.m2ts", "00002.m2ts", "00003.m2ts"}) tree_.WriteStream(name);
  tree_.WritePlaylist("00000.mpls", {{"00003", kNewShot}});
  // ".MPL" is taken before ".mpls".
  tree_.WritePlaylist("00002.MPL", {{"00002", kNewShot}});
  tree_.WritePlaylist("00002.mpls", {{"00001", kNewShot}, {"00002", kSameShot}, {"00003", kSameShot}});
  tree_.WritePlaylist("00004.mpls", {{"00001", kNewShot}, {"00003", kSameShot}, {"00004", kSameShot}});
  EXPECT_EQ(SegmentsOf("00002.m2ts"), Streams({"00002.m2ts"}));
  // 00002.MPL does not name 00003; 00000 is the last one tried.
  EXPECT_EQ(SegmentsOf("00003.m2ts"), Streams({"00003.m2ts"}));
  EXPECT_TRUE(SegmentsOf("00001.m2ts").empty());
  EXPECT_EQ(SegmentsOf("00004.m2ts"), Streams({"00001.m2ts", "00003.m2ts"})) << "00004 has no stream file";
}

}  // namespace
}  // namespace AVCHDUtils
