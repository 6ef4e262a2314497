// Split camera recordings end to end: the segments of one shot, in a real
// BDMV tree with a real playlist, decode to exactly the samples of the
// unsplit file: camera transport streams where the platform reads them, and
// consecutive byte ranges of files it can read everywhere.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "DecoderTestSupport.h"
#include "MediaFixtures.h"
#include "PlatformExpectations.h"
#include "aurivox/Decoder.h"

namespace {

using aurivox_test::Bytes;
using aurivox_test::ReadMediaFixture;
using aurivox_test::RecordingTree;

Bytes DecodeFile(const orxcore::WString& path, std::int64_t& duration) {
  Aurivox::Decoder decoder;
  EXPECT_EQ(decoder.Open(path, nullptr), Aurivox::kResultSuccess);
  duration = decoder.GetDuration();
  int result = -1;
  Bytes samples = aurivox_test::DecodeInterleaved(decoder, result);
  EXPECT_EQ(result, Aurivox::kResultSuccess);
  return samples;
}

// The largest difference between two runs of float samples.
float WorstDifference(const Bytes& a, const Bytes& b) {
  std::vector<float> x(a.size() / sizeof(float)), y(x.size());
  std::memcpy(x.data(), a.data(), x.size() * sizeof(float));
  std::memcpy(y.data(), b.data(), y.size() * sizeof(float));
  float worst = 0;
  for (std::size_t i = 0; i < x.size(); ++i) worst = std::max(worst, std::abs(x[i] - y[i]));
  return worst;
}

class DecoderSpannedTest : public ::testing::TestWithParam<const char*> {};

TEST_P(DecoderSpannedTest, AnySegmentOfTheShotDecodesToTheWholeFile) {
  const std::string file = GetParam();
  if (file.find(".m2ts") != std::string::npos && !aurivox_test::kReadsTransportStreams) {
    GTEST_SKIP() << "no transport streams here";
  }
  // PCM must match exactly, and so must lossy audio where two decodes of one
  // file agree.
  const bool exact = file.find(".wav") != std::string::npos || file.find("lpcm") != std::string::npos ||
                     aurivox_test::kRepeatedLossyDecodeTolerance == 0;
  const auto source = ReadMediaFixture(file);
  ASSERT_GT(source.size(), 3000u);
  RecordingTree tree;
  // Odd cut points, one of them inside the file's header.
  aurivox_test::WriteSplitRecording(tree, source, {33, source.size() / 2 + 1});

  std::int64_t wholeDuration = 0, splitDuration = 0;
  const auto whole = DecodeFile(aurivox_test::MediaFixtureWPath(file), wholeDuration);
  for (const char* segment : {"STREAM/00012.MTS", "STREAM/00013.MTS", "STREAM/00011.MTS"}) {
    const auto split = DecodeFile(tree.Path(segment), splitDuration);
    EXPECT_EQ(splitDuration, wholeDuration) << segment;
    ASSERT_EQ(split.size(), whole.size()) << segment;
    if (exact) {
      EXPECT_TRUE(split == whole) << segment << ": the samples differ from the unsplit file";
    } else {
      EXPECT_LT(WorstDifference(split, whole), aurivox_test::kRepeatedLossyDecodeTolerance) << segment;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Files, DecoderSpannedTest,
                         ::testing::Values("pcm_s16.wav", "stereo.m4a", "shot_ac3.m2ts", "shot_lpcm.m2ts"));

TEST(DecoderSpannedFailures, AMissingFirstSegmentOrPlaylistLeavesNothingReadable) {
  RecordingTree tree;
  aurivox_test::WriteSplitRecording(tree, ReadMediaFixture("pcm_s16.wav"), {1000, 2000});
  tree.Remove("STREAM/00011.MTS");
  Aurivox::Decoder decoder;
  EXPECT_EQ(decoder.Open(tree.Path("STREAM/00012.MTS"), nullptr), Aurivox::kResultOpenFailed);
  // The recording is recognised, but no playlist names the clip: an empty
  // stream, which the platform's reader refuses.
  tree.Remove("PLAYLIST/00011.MPL");
  EXPECT_EQ(decoder.Open(tree.Path("STREAM/00012.MTS"), nullptr), Aurivox::kResultOpenFailed);
}

}  // namespace
