// MFReader's video path on H.264 files made by FFmpeg, compared with FFmpeg's
// own decode of the first frames.
#include <gtest/gtest.h>
#include <mfapi.h>
#include <mferror.h>
#include <objbase.h>

#include <cstring>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "MFReader.h"
#include "MediaFixtures.h"
#include "TestStreams.h"

namespace windowsmediafoundation {
namespace {

using aurivox_test::FileStream;
using aurivox_test::MediaFixturePath;
using aurivox_test::MediaFixtureWPath;
using aurivox_test::ReadMediaFixture;

using Frame = std::vector<std::uint32_t>;

// Opens COM on the test's thread for the video processing transforms.
class ComScope {
 public:
  ComScope() : initialized_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) {}
  ~ComScope() {
    if (initialized_) CoUninitialize();
  }

 private:
  bool initialized_;
};

// FFmpeg's decode of the first frames to BGR0 bytes, which read as
// little-endian X8R8G8B8 words.
std::vector<Frame> FFmpegFrames(const std::string& file, std::uint32_t width, std::uint32_t height) {
  const std::vector<std::uint8_t> bytes = ReadMediaFixture(file + ".bgr0");
  const std::size_t pixels = std::size_t{width} * height;
  std::vector<Frame> frames;
  for (std::size_t offset = 0; offset + pixels * 4 <= bytes.size(); offset += pixels * 4) {
    Frame frame(pixels);
    std::memcpy(frame.data(), bytes.data() + offset, pixels * 4);
    frames.push_back(std::move(frame));
  }
  return frames;
}

// Mean absolute difference of the colour bytes (the top byte left out), with
// `b`'s rows taken in reverse order when `flipped`.
double ColourDifference(const Frame& a, const Frame& b, std::uint32_t width, bool flipped) {
  const std::size_t height = a.size() / width;
  double sum = 0;
  for (std::size_t y = 0; y < height; ++y) {
    const std::size_t otherRow = flipped ? height - 1 - y : y;
    for (std::size_t x = 0; x < width; ++x) {
      const std::uint32_t p = a[y * width + x];
      const std::uint32_t q = b[otherRow * width + x];
      for (int shift = 0; shift < 24; shift += 8) {
        sum += std::abs(static_cast<int>((p >> shift) & 0xFF) - static_cast<int>((q >> shift) & 0xFF));
      }
    }
  }
  return sum / (3.0 * static_cast<double>(a.size()));
}

enum class OpenWith { kPath, kStream };

struct VideoCase {
  const char* name;  // of the test case
  const char* file;
  std::uint32_t width;
  std::uint32_t height;
  std::uint32_t rateNumerator;
  std::uint32_t rateDenominator;
  std::int64_t frames;     // what FFmpeg wrote
  const char* suffix;      // the end of the description
};

std::ostream& operator<<(std::ostream& out, const VideoCase& video) { return out << video.file; }

const VideoCase kVideoCases[] = {
    {"Fps25", "video_only.mp4", 320, 240, 25, 1, 50, ", 320 x 240, (25.0)"},
    {"Fps2997", "video_ntsc.mp4", 200, 120, 30000, 1001, 60, ", 200 x 120, (29.97)"},
};

class VideoFileTest : public ::testing::TestWithParam<std::tuple<VideoCase, OpenWith>> {
 protected:
  const VideoCase& video() const { return std::get<0>(GetParam()); }

  bool Open(const char* file, bool wantAudio = false) {
    if (std::get<1>(GetParam()) == OpenWith::kPath) {
      return reader->OpenFromPath(MediaFixtureWPath(file), status, true, wantAudio);
    }
    stream = std::make_shared<FileStream>(MediaFixturePath(file));
    return reader->OpenFromStream(stream, status, true, wantAudio);
  }

  void TearDown() override { reader.reset(); }

  // Reads frames from `position` in calls of `chunk` until the end.
  std::vector<Frame> ReadAll(std::int64_t position, std::int32_t chunk) {
    std::vector<Frame> frames;
    const std::size_t frameBytes = reader->videoFrameBytes();
    std::vector<std::uint8_t> buffer(frameBytes * chunk);
    for (int call = 0; call < 1000; ++call) {
      std::int32_t count = chunk;
      const HRESULT hr = reader->ReadVideoFrames(position, count, buffer.data(), buffer.size());
      EXPECT_EQ(hr, S_OK);
      if (FAILED(hr)) break;
      for (std::int32_t i = 0; i < count; ++i) {
        Frame frame(frameBytes / 4);
        std::memcpy(frame.data(), buffer.data() + i * frameBytes, frameBytes);
        frames.push_back(std::move(frame));
      }
      position += count;
      if (count < chunk) break;
    }
    return frames;
  }

  ComScope com;
  std::unique_ptr<MFReader> reader = std::make_unique<MFReader>();
  std::shared_ptr<FileStream> stream;
  OpenStatus status;
};

TEST_P(VideoFileTest, OpensWithTheFilesSizeRateLengthAndDescription) {
  ASSERT_TRUE(Open(video().file)) << orxcore::UTF16toStdString(status.message);
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
  const std::string suffix = video().suffix;
  ASSERT_GT(description.size(), suffix.size());
  EXPECT_EQ(description.substr(description.size() - suffix.size()), suffix) << description;
  EXPECT_EQ(description.find("Unknown"), std::string::npos) << description;
}

TEST_P(VideoFileTest, RgbFramesStandUprightInFFmpegsColours) {
  const std::uint32_t width = video().width;
  reader->SetDeliverRgbOnly(true);
  ASSERT_TRUE(Open(video().file));
  ASSERT_TRUE(IsEqualGUID(reader->clientVideoSubtype(), MFVideoFormat_RGB32));
  ASSERT_EQ(reader->videoFrameBytes(), width * video().height * 4);
  // An odd chunk makes calls end and start in the middle of the stream.
  const std::vector<Frame> frames = ReadAll(0, 7);
  ASSERT_EQ(static_cast<std::int64_t>(frames.size()), video().frames);

  // The picture stands upright and has FFmpeg's colours (measured: about 1
  // level of 255 apart on average, 40 when upside down).
  const std::vector<Frame> ffmpeg = FFmpegFrames(video().file, width, video().height);
  ASSERT_EQ(ffmpeg.size(), 3u);
  for (std::size_t f = 0; f < ffmpeg.size(); ++f) {
    EXPECT_LT(ColourDifference(frames[f], ffmpeg[f], width, false), 3.0) << "frame " << f;
    EXPECT_GT(ColourDifference(frames[f], ffmpeg[f], width, true), 10.0) << "frame " << f;
  }
}

const auto kOpenModes = ::testing::Values(OpenWith::kPath, OpenWith::kStream);

INSTANTIATE_TEST_SUITE_P(Media, VideoFileTest, ::testing::Combine(::testing::ValuesIn(kVideoCases), kOpenModes),
                         [](const ::testing::TestParamInfo<std::tuple<VideoCase, OpenWith>>& info) {
                           return std::string(std::get<0>(info.param).name) +
                                  (std::get<1>(info.param) == OpenWith::kPath ? "FromPath" : "FromStream");
                         });

}  // namespace
}  // namespace windowsmediafoundation
