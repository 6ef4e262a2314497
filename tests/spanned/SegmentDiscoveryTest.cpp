#include <gtest/gtest.h>

#include "AVCHDUtils.h"
#include "PlaylistBuilder.h"
#include "orxcore/File.h"

namespace AVCHDUtils {
namespace {

using aurivox_test::kNewShot;
using aurivox_test::kSameShot;
using aurivox_test::PlaylistBuilder;
using aurivox_test::RecordingTree;
using orxcore::WString;
using Paths = std::vector<WString>;

const bool kWindows = orxcore::File::PreferredSeparator() == u'\\';

// Stream files carry ".m2ts" unless a test says otherwise: it is recognised
// with the same spelling on every platform.
class SegmentDiscovery : public ::testing::Test {
 protected:
  void WriteStreams(std::initializer_list<const char*> clips, const std::string& extension = ".m2ts") {
    for (const char* clip : clips) tree_.WriteStream(clip + extension);
  }
  WString Stream(const std::string& name) const { return tree_.Path("STREAM/" + name); }
  Paths Streams(std::initializer_list<const char*> clips) const {
    Paths out;
    for (const char* clip : clips) out.push_back(Stream(std::string(clip) + ".m2ts"));
    return out;
  }
  Paths SegmentsOf(const std::string& relative) const {
    Paths segments;
    FindSpannedSegments(tree_.Path(relative), segments);
    return segments;
  }

  RecordingTree tree_;
  // Two shots: 00001 to 00003, then 00004 and 00005. Only the low four
  // bits of an item's condition byte are the condition.
  PlaylistBuilder twoShots_ = PlaylistBuilder()
                                  .Item("00001", kNewShot)
                                  .Item("00002", kSameShot)
                                  .Item("00003", 0xF0 | kSameShot)
                                  .Item("00004", kNewShot)
                                  .Item("00005", kSameShot);
};

TEST_F(SegmentDiscovery, OpeningAnySegmentGivesItsWholeShot) {
  tree_.WritePlaylist("00001.mpls", twoShots_);
  WriteStreams({"00001", "00002", "00003", "00004", "00005"});
  const Paths first = Streams({"00001", "00002", "00003"});
  const Paths second = Streams({"00004", "00005"});
  EXPECT_EQ(SegmentsOf("STREAM/00001.m2ts"), first);
  EXPECT_EQ(SegmentsOf("STREAM/00002.m2ts"), first);
  EXPECT_EQ(SegmentsOf("STREAM/00003.m2ts"), first);
  EXPECT_EQ(SegmentsOf("STREAM/00004.m2ts"), second);
  EXPECT_EQ(SegmentsOf("STREAM/00005.m2ts"), second);
}

TEST_F(SegmentDiscovery, OnlyPlaylistsNumberedAtOrBelowTheClipAreTried) {
  tree_.WritePlaylist("00005.mpls", twoShots_);
  WriteStreams({"00001", "00002", "00003", "00004", "00005"});
  EXPECT_TRUE(SegmentsOf("STREAM/00003.m2ts").empty());
  EXPECT_EQ(SegmentsOf("STREAM/00005.m2ts"), Streams({"00004", "00005"}));

  // 00000 is the last one tried.
  tree_.WritePlaylist("00000.mpls", PlaylistBuilder().Item("00003", kNewShot));
  EXPECT_EQ(SegmentsOf("STREAM/00003.m2ts"), Streams({"00003"}));
}

TEST_F(SegmentDiscovery, FirstPlaylistThatNamesTheClipDecides) {
  WriteStreams({"00011", "00012", "00013"});
  tree_.WritePlaylist("00010.mpls", PlaylistBuilder().Item("00011", kNewShot).Item("00012", kSameShot));
  tree_.WritePlaylist("00012.mpls", PlaylistBuilder().Item("00012", kNewShot).Item("00013", kSameShot));
  EXPECT_EQ(SegmentsOf("STREAM/00012.m2ts"), Streams({"00012", "00013"}));

  // A playlist that does not name the clip is passed over.
  tree_.WritePlaylist("00012.mpls", PlaylistBuilder().Item("00013", kNewShot));
  EXPECT_EQ(SegmentsOf("STREAM/00012.m2ts"), Streams({"00011", "00012"}));
}

TEST_F(SegmentDiscovery, MPLIsPreferredOverMpls) {
  WriteStreams({"00001", "00002"});
  tree_.WritePlaylist("00002.MPL", PlaylistBuilder().Item("00002", kNewShot));
  tree_.WritePlaylist("00002.mpls", PlaylistBuilder().Item("00001", kNewShot).Item("00002", kSameShot));
  EXPECT_EQ(SegmentsOf("STREAM/00002.m2ts"), Streams({"00002"}));
}

TEST_F(SegmentDiscovery, MissingStreamFilesAreLeftOut) {
  tree_.WritePlaylist("00001.mpls", twoShots_);
  WriteStreams({"00001", "00003"});
  EXPECT_EQ(SegmentsOf("STREAM/00002.m2ts"), Streams({"00001", "00003"}));
}

TEST_F(SegmentDiscovery, UpperCaseMTSIsPreferredOverM2ts) {
  tree_.WritePlaylist("00001.mpls", twoShots_);
  WriteStreams({"00001", "00002", "00003"});
  WriteStreams({"00002"}, ".MTS");
  EXPECT_EQ(SegmentsOf("STREAM/00003.m2ts"),
            (Paths{Stream("00001.m2ts"), Stream("00002.MTS"), Stream("00003.m2ts")}));
}

TEST_F(SegmentDiscovery, ShotThatStartsAtTheLastItem) {
  tree_.WritePlaylist("00001.mpls", PlaylistBuilder(twoShots_).Item("00006", kNewShot));
  WriteStreams({"00005", "00006"});
  EXPECT_EQ(SegmentsOf("STREAM/00006.m2ts"), Streams({"00006"}));
}

TEST_F(SegmentDiscovery, FileOutsideARecordingGivesNothing) {
  tree_.WritePlaylist("00001.mpls", twoShots_);
  WriteStreams({"00001", "00002"});
  tree_.Remove("CLIPINF");
  EXPECT_TRUE(SegmentsOf("STREAM/00002.m2ts").empty());
}

}  // namespace
}  // namespace AVCHDUtils
