// Split camera recordings end to end: the segments of one shot, in a real
// BDMV tree with a real playlist, decode to exactly the samples of the
// unsplit file: camera transport streams where the platform reads them, and
// consecutive byte ranges of files it can read everywhere.
#include "DecoderSpannedTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "DecoderTestSupport.h"
#include "MediaFixtures.h"
#include "PlatformExpectations.h"
#include "PlaylistBuilder.h"
#include "aurivox/Decoder.h"

namespace {

using aurivox_test::kNewShot;
using aurivox_test::kSameShot;
using aurivox_test::MediaFixtureWPath;
using aurivox_test::PlaylistBuilder;
using aurivox_test::ReadMediaFixture;
using aurivox_test::RecordingTree;

}  // namespace

namespace aurivox_test {

void WriteSplitRecording(const RecordingTree& tree, const std::vector<std::uint8_t>& source,
                         const std::vector<std::size_t>& cuts) {
  std::size_t begin = 0;
  for (std::size_t i = 0; i <= cuts.size(); ++i) {
    const std::size_t end = i < cuts.size() ? cuts[i] : source.size();
    tree.dir().WriteFile("BDMV/STREAM/0001" + std::to_string(i + 1) + ".MTS",
                         std::vector<std::uint8_t>(source.begin() + begin, source.begin() + end));
    begin = end;
  }
  tree.dir().WriteFile("BDMV/STREAM/00010.MTS", "another shot");
  PlaylistBuilder playlist;
  playlist.Item("00010", kNewShot).Item("00011", kNewShot).Item("00012", kSameShot).Item("00013", kSameShot);
  tree.WritePlaylist("00011.MPL", playlist);
}

}  // namespace aurivox_test

namespace {

using aurivox_test::WriteSplitRecording;

std::vector<std::uint8_t> DecodeFile(const orxcore::WString& path, int& openResult, std::int64_t& duration) {
  Aurivox::Decoder decoder;
  openResult = decoder.Open(path, nullptr);
  duration = decoder.GetDuration();
  if (openResult != Aurivox::kResultSuccess) return {};
  orxmediatypes::AudioFormat format;
  decoder.GetAudioFormat(format);
  int readResult = -1;
  auto samples = aurivox_test::DecodeInterleaved(decoder, format.GetChannelCount(),
                                                 aurivox_test::SampleWidth(decoder), 4096, readResult);
  EXPECT_EQ(readResult, Aurivox::kResultSuccess);
  return samples;
}

float Sample(const std::vector<std::uint8_t>& bytes, std::size_t index) {
  float value;
  std::memcpy(&value, bytes.data() + index * sizeof value, sizeof value);
  return value;
}

// PCM must match exactly, and so must lossy audio where two decodes of one
// file agree.
void ExpectSameAudio(const std::vector<std::uint8_t>& split, const std::vector<std::uint8_t>& whole,
                     bool exact, const char* segment) {
  ASSERT_EQ(split.size(), whole.size()) << segment;
  if (exact || aurivox_test::kRepeatedLossyDecodeTolerance == 0) {
    EXPECT_TRUE(split == whole) << segment << ": the samples differ from the unsplit file";
    return;
  }
  float worst = 0;
  for (std::size_t i = 0; i < whole.size() / sizeof(float); ++i) {
    worst = std::max(worst, std::abs(Sample(split, i) - Sample(whole, i)));
  }
  EXPECT_LT(worst, aurivox_test::kRepeatedLossyDecodeTolerance) << segment;
}

class DecoderSpannedTest : public ::testing::TestWithParam<const char*> {};

TEST_P(DecoderSpannedTest, AnySegmentOfTheShotDecodesToTheWholeFile) {
  const std::string file = GetParam();
  const bool transportStream = file.find(".m2ts") != std::string::npos;
  if (transportStream && !aurivox_test::kReadsTransportStreams) GTEST_SKIP() << "no transport streams here";
  const bool exact = file.find(".wav") != std::string::npos || file.find("lpcm") != std::string::npos;
  const auto source = ReadMediaFixture(file);
  ASSERT_GT(source.size(), 3000u);
  RecordingTree tree;
  // Odd cut points, one of them inside the file's header.
  WriteSplitRecording(tree, source, {33, source.size() / 2 + 1});

  int result = -1;
  std::int64_t wholeDuration = 0, splitDuration = 0;
  const auto whole = DecodeFile(MediaFixtureWPath(file), result, wholeDuration);
  ASSERT_EQ(result, Aurivox::kResultSuccess);
  for (const char* segment : {"STREAM/00012.MTS", "STREAM/00013.MTS", "STREAM/00011.MTS"}) {
    const auto split = DecodeFile(tree.Path(segment), result, splitDuration);
    ASSERT_EQ(result, Aurivox::kResultSuccess) << segment;
    EXPECT_EQ(splitDuration, wholeDuration) << segment;
    ExpectSameAudio(split, whole, exact, segment);
  }
}

INSTANTIATE_TEST_SUITE_P(Files, DecoderSpannedTest,
                         ::testing::Values("pcm_s16.wav", "stereo.m4a", "shot_ac3.m2ts", "shot_lpcm.m2ts"),
                         [](const auto& info) {
                           std::string name = info.param;
                           return name.substr(0, name.find('.'));
                         });

TEST(DecoderSpannedFailures, AMissingFirstSegmentLeavesNothingReadable) {
  const auto source = ReadMediaFixture("pcm_s16.wav");
  RecordingTree tree;
  WriteSplitRecording(tree, source, {1000, 2000});
  tree.Remove("STREAM/00011.MTS");
  Aurivox::Decoder decoder;
  EXPECT_EQ(decoder.Open(tree.Path("STREAM/00012.MTS"), nullptr), Aurivox::kResultOpenFailed);
}

TEST(DecoderSpannedFailures, AClipNoPlaylistNamesOpensNothing) {
  RecordingTree tree;
  tree.dir().WriteFile("BDMV/STREAM/00005.MTS", ReadMediaFixture("pcm_s16.wav"));
  Aurivox::Decoder decoder;
  // The recording is recognised, but no playlist names the clip: an empty
  // stream, which Media Foundation refuses.
  EXPECT_EQ(decoder.Open(tree.Path("STREAM/00005.MTS"), nullptr), Aurivox::kResultOpenFailed);
}

}  // namespace
