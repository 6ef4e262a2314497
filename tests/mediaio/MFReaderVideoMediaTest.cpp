// MFReader's video path on H.264 files made by FFmpeg, compared with FFmpeg's
// own decode of the first frames.
#include <gmock/gmock.h>
#include <mfapi.h>
#include <objbase.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "MFReader.h"
#include "MediaFixtures.h"
#include "TestStreams.h"

namespace windowsmediafoundation {
namespace {

using aurivox_test::ReadMediaFixture;

struct VideoCase {
  const char* file;
  std::uint32_t width, height, rateNumerator, rateDenominator;
  std::int64_t frames;  // what FFmpeg wrote
  const char* suffix;   // the end of the description
};

// Mean absolute difference of the colour bytes of two X8R8G8B8 frames of
// `video` (the top byte left out), with `b`'s rows taken in reverse order
// when `flipped`.
double ColourDifference(const std::uint8_t* a, const std::uint8_t* b, const VideoCase& video, bool flipped) {
  const std::size_t width = video.width, height = video.height;
  double sum = 0;
  for (std::size_t y = 0; y < height; ++y) {
    const std::uint8_t* row = b + (flipped ? height - 1 - y : y) * width * 4;
    for (std::size_t x = 0; x < width * 4; ++x) {
      if (x % 4 != 3) sum += std::abs(a[y * width * 4 + x] - row[x]);
    }
  }
  return sum / (3.0 * static_cast<double>(width * height));
}

class VideoFileTest : public ::testing::TestWithParam<std::tuple<VideoCase, bool>> {
 protected:
  // COM on the test's thread, for the video processing transforms.
  void SetUp() override { com = SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED)); }
  void TearDown() override {
    reader.reset();
    if (com) CoUninitialize();
  }

  const VideoCase& video() const { return std::get<0>(GetParam()); }

  // Opens the file by path, or from its bytes in memory.
  bool Open() {
    if (!std::get<1>(GetParam())) {
      return reader->OpenFromPath(aurivox_test::MediaFixtureWPath(video().file), status, true, false);
    }
    auto stream = std::make_shared<aurivox_test::MemoryStream>(ReadMediaFixture(video().file));
    return reader->OpenFromStream(stream, status, true, false);
  }

  bool com = false;
  std::unique_ptr<MFReader> reader = std::make_unique<MFReader>();
  OpenStatus status;
};

TEST_P(VideoFileTest, OpensWithTheFilesSizeRateLengthAndDescription) {
  ASSERT_TRUE(Open()) << orxcore::UTF16toStdString(status.message);
  EXPECT_EQ(status.statusClass, kOpenStatusFine);
  EXPECT_TRUE(reader->hasVideo());
  EXPECT_FALSE(reader->hasAudio());
  EXPECT_EQ(reader->frameWidth(), video().width);
  EXPECT_EQ(reader->frameHeight(), video().height);
  EXPECT_EQ(reader->frameRateNumerator(), video().rateNumerator);
  EXPECT_EQ(reader->frameRateDenominator(), video().rateDenominator);
  EXPECT_DOUBLE_EQ(reader->frameRate(), double(video().rateNumerator) / video().rateDenominator);
  EXPECT_EQ(reader->frameDuration(), 10000000LL * video().rateDenominator / video().rateNumerator);
  EXPECT_DOUBLE_EQ(reader->pixelAspectRatio(), 1.0);
  EXPECT_TRUE(reader->canSeek());
  EXPECT_EQ(reader->GetEstimatedVideoFrameCount(), video().frames);
  const std::string description = orxcore::UTF16toStdString(reader->GetVideoFormatDescription());
  EXPECT_THAT(description, ::testing::EndsWith(video().suffix));
  EXPECT_THAT(description, ::testing::Not(::testing::HasSubstr("Unknown")));
}

TEST_P(VideoFileTest, RgbFramesStandUprightInFFmpegsColours) {
  reader->SetDeliverRgbOnly(true);
  ASSERT_TRUE(Open());
  ASSERT_TRUE(IsEqualGUID(reader->clientVideoSubtype(), MFVideoFormat_RGB32));
  const std::size_t frameBytes = std::size_t{video().width} * video().height * 4;
  ASSERT_EQ(reader->videoFrameBytes(), frameBytes);
  // Calls of an odd number of frames end and start in the middle of the stream.
  std::vector<std::uint8_t> frames((video().frames + 7) * frameBytes);
  std::int64_t read = 0;
  for (std::int32_t count = 7; count == 7 && read <= video().frames; read += count) {
    ASSERT_EQ(reader->ReadVideoFrames(read, count, frames.data() + read * frameBytes, 7 * frameBytes), S_OK);
  }
  ASSERT_EQ(read, video().frames);

  // FFmpeg's decode of the first frames is BGR0, which reads as X8R8G8B8
  // words. The picture stands upright and has FFmpeg's colours (measured:
  // about 1 level of 255 apart on average, 40 when upside down).
  const auto ffmpeg = ReadMediaFixture(std::string(video().file) + ".bgr0");
  ASSERT_EQ(ffmpeg.size(), 3 * frameBytes);
  for (std::size_t f = 0; f < 3; ++f) {
    const std::uint8_t* ours = frames.data() + f * frameBytes;
    const std::uint8_t* theirs = ffmpeg.data() + f * frameBytes;
    EXPECT_LT(ColourDifference(ours, theirs, video(), false), 3.0) << "frame " << f;
    EXPECT_GT(ColourDifference(ours, theirs, video(), true), 10.0) << "frame " << f;
  }
}

const VideoCase kVideoCases[] = {
    {"video_only.mp4", 320, 240, 25, 1, 50, ", 320 x 240, (25.0)"},
    {"video_ntsc.mp4", 200, 120, 30000, 1001, 60, ", 200 x 120, (29.97)"},
};

INSTANTIATE_TEST_SUITE_P(Media, VideoFileTest,
                         ::testing::Combine(::testing::ValuesIn(kVideoCases), ::testing::Bool()),
                         [](const ::testing::TestParamInfo<std::tuple<VideoCase, bool>>& info) {
                           return "Width" + std::to_string(std::get<0>(info.param).width) +
                                  (std::get<1>(info.param) ? "FromStream" : "FromPath");
                         });

}  // namespace
}  // namespace windowsmediafoundation
