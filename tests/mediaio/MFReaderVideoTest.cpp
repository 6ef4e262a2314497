// MFReader's video stream on a scripted source reader: set-up, negotiation,
// frame copies with their strides, seeking and what the reader reports.
#include <objbase.h>

#include <cstring>

#include "FakeReaderTest.h"

namespace windowsmediafoundation {
namespace {

using aurivox_test::FakeAudioFormat;
using aurivox_test::FakePicture;
using aurivox_test::FakeRead;
using aurivox_test::FakeVideoFormat;
using Pixels = std::vector<std::uint32_t>;

constexpr UINT64 Pair(UINT32 high, UINT32 low) { return (UINT64{high} << 32) | low; }

std::vector<std::uint8_t> Bytes(const Pixels& pixels) {
  std::vector<std::uint8_t> bytes(pixels.size() * 4);
  std::memcpy(bytes.data(), pixels.data(), bytes.size());
  return bytes;
}

// A width x height picture: pixel (x, y) is tag << 16 | y << 8 | x under a
// top byte of 0x00, 0xFF or 0x5A.
Pixels Picture(std::uint32_t width, std::uint32_t height, std::uint32_t tag) {
  Pixels pixels;
  for (std::uint32_t y = 0; y < height; ++y) {
    for (std::uint32_t x = 0; x < width; ++x) {
      const std::uint32_t top[] = {0x00, 0xFF, 0x5A};
      pixels.push_back(top[(x + y) % 3] << 24 | tag << 16 | y << 8 | x);
    }
  }
  return pixels;
}

Pixels Flipped(const Pixels& pixels, std::uint32_t width) {
  Pixels flipped;
  for (std::size_t row = pixels.size() / width; row-- > 0;) {
    flipped.insert(flipped.end(), pixels.begin() + row * width, pixels.begin() + (row + 1) * width);
  }
  return flipped;
}

// The rows of `pixels` `stride` bytes apart, the padding filled with 0xEE.
std::vector<std::uint8_t> Strided(const Pixels& pixels, std::uint32_t width, std::uint32_t stride) {
  const std::vector<std::uint8_t> packed = Bytes(pixels);
  std::vector<std::uint8_t> bytes;
  for (std::size_t row = 0; row < pixels.size() / width; ++row) {
    bytes.insert(bytes.end(), packed.begin() + row * width * 4, packed.begin() + (row + 1) * width * 4);
    bytes.resize(bytes.size() + (stride - width * 4), 0xEE);
  }
  return bytes;
}

Pixels Opaque(Pixels pixels) {
  for (std::uint32_t& pixel : pixels) pixel ^= 0xFF000000u;
  return pixels;
}

Pixels Joined(Pixels first, const Pixels& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

FakeRead FrameRead(std::vector<std::uint8_t> data, LONGLONG time) {
  FakeRead read = aurivox_test::SampleRead(std::move(data));
  read.time = time;
  return read;
}

class MFReaderVideoTest : public aurivox_test::FakeReaderTest {
 protected:
  void SetUp() override {
    // The video processing transform is a COM object.
    comInitialized_ = SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED));
    fake->sourceAudio.reset();
    fake->sourceVideo = FakeVideoFormat{};
  }
  void TearDown() override {
    FakeReaderTest::TearDown();
    if (comInitialized_) CoUninitialize();
  }

  bool OpenVideo(bool wantAudio = false) {
    Install();
    return reader->OpenFromPath(u"Z:\\media\\clip.mp4", status, true, wantAudio);
  }

  // A small RGB32 stream that the reader delivers itself.
  void UseRgbStream(std::uint32_t width, std::uint32_t height, std::optional<INT32> stride) {
    fake->sourceVideo->frameSize = Pair(width, height);
    fake->sourceVideo->defaultStride = stride;
    fake->acceptedVideoSubtypes = {MFVideoFormat_RGB32};
  }

  struct Frames {
    HRESULT hr = E_FAIL;
    std::int32_t count = 0;
    std::vector<std::uint8_t> bytes;
    Pixels pixels() const {
      Pixels pixels(bytes.size() / 4);
      std::memcpy(pixels.data(), bytes.data(), pixels.size() * 4);
      return pixels;
    }
  };
  Frames ReadFrames(std::int64_t position, std::int32_t count) {
    Frames frames;
    frames.bytes.assign(static_cast<std::size_t>(count) * reader->videoFrameBytes(), 0xCD);
    frames.count = count;
    frames.hr = reader->ReadVideoFrames(position, frames.count, frames.bytes.data(), frames.bytes.size());
    frames.bytes.resize(static_cast<std::size_t>(frames.count) * reader->videoFrameBytes());
    return frames;
  }

 private:
  bool comInitialized_ = false;
};

TEST_F(MFReaderVideoTest, OpensTheVideoStreamSelectsItAndRewinds) {
  ASSERT_TRUE(OpenVideo());
  EXPECT_TRUE(reader->hasVideo());
  EXPECT_FALSE(reader->hasAudio());
  EXPECT_EQ(status.statusClass, kOpenStatusFine);
  EXPECT_EQ(reader->frameWidth(), 320u);
  EXPECT_EQ(reader->frameHeight(), 240u);
  EXPECT_EQ(reader->frameRateNumerator(), 25u);
  EXPECT_EQ(reader->frameRateDenominator(), 1u);
  EXPECT_DOUBLE_EQ(reader->frameRate(), 25.0);
  EXPECT_EQ(reader->frameDuration(), 400000);
  EXPECT_TRUE(IsEqualGUID(reader->clientVideoSubtype(), MFVideoFormat_UYVY));
  EXPECT_EQ(reader->videoFrameBytes(), 320u * 240u * 2u);
  EXPECT_TRUE(reader->hasResizer());
  EXPECT_FALSE(reader->convertsVideo()) << "the reader delivers UYVY itself";
  const std::vector<std::pair<DWORD, BOOL>> selections = {
      {MF_SOURCE_READER_ALL_STREAMS, FALSE}, {MF_SOURCE_READER_FIRST_VIDEO_STREAM, TRUE}};
  EXPECT_EQ(fake->selections, selections);
  EXPECT_EQ(fake->positions, std::vector<LONGLONG>{0});
  EXPECT_EQ(fake->videoReadCalls, 0);
  reader.reset();
  EXPECT_EQ(fake->videoReadCalls, 1) << "a release waits for the source to restart";
}

TEST_F(MFReaderVideoTest, AnNtscRateSetsTheDurationEstimateAndDescription) {
  fake->sourceVideo->frameSize = Pair(1920, 1080);
  fake->sourceVideo->frameRate = Pair(30000, 1001);
  fake->duration = 20020000;
  ASSERT_TRUE(OpenVideo());
  EXPECT_EQ(reader->frameDuration(), 333666);
  EXPECT_NEAR(reader->frameRate(), 29.97, 0.001);
  EXPECT_EQ(reader->GetEstimatedVideoFrameCount(), 60);
  EXPECT_EQ(orxcore::UTF16toStdString(reader->GetVideoFormatDescription()), "H.264, 1920 x 1080, (29.97)");
}

TEST_F(MFReaderVideoTest, AsksForUyvyThenRgb32OrWithTheSetterRgb32Only) {
  fake->acceptedVideoSubtypes = {MFVideoFormat_RGB32};
  ASSERT_TRUE(OpenVideo());
  EXPECT_EQ(fake->askedVideoSubtypes, (std::vector<GUID>{MFVideoFormat_UYVY, MFVideoFormat_RGB32}));
  EXPECT_TRUE(IsEqualGUID(reader->clientVideoSubtype(), MFVideoFormat_RGB32));

  fake->acceptedVideoSubtypes = {MFVideoFormat_UYVY, MFVideoFormat_RGB32};
  reader->SetDeliverRgbOnly(true);
  fake->askedVideoSubtypes.clear();
  EXPECT_EQ(reader->SetupVideo(), S_OK);
  EXPECT_EQ(fake->askedVideoSubtypes, std::vector<GUID>{MFVideoFormat_RGB32});
  fake->askedVideoSubtypes.clear();
  ASSERT_TRUE(OpenVideo());
  EXPECT_TRUE(reader->deliverRgbOnly()) << "the setter lasts across opens";
  EXPECT_EQ(fake->askedVideoSubtypes, std::vector<GUID>{MFVideoFormat_RGB32});
  EXPECT_EQ(reader->videoFrameBytes(), 320u * 240u * 4u);
}

TEST_F(MFReaderVideoTest, VideoIsLeftAloneWhenNotWanted) {
  fake->sourceAudio = FakeAudioFormat{};
  ASSERT_TRUE(Open());  // wantVideo false, as the decoder opens
  EXPECT_FALSE(reader->hasVideo());
  EXPECT_TRUE(fake->askedVideoSubtypes.empty());
  const std::vector<std::pair<DWORD, BOOL>> selections = {
      {MF_SOURCE_READER_ALL_STREAMS, FALSE}, {MF_SOURCE_READER_FIRST_AUDIO_STREAM, TRUE}};
  EXPECT_EQ(fake->selections, selections);
}

TEST_F(MFReaderVideoTest, AudioAndVideoAreSetUpTogetherAndVideoSurvivesFailedAudio) {
  fake->sourceAudio = FakeAudioFormat{};
  fake->reads = {aurivox_test::SampleRead(aurivox_test::Pcm16({1, 2}))};
  ASSERT_TRUE(OpenVideo(true));
  EXPECT_TRUE(reader->hasAudio());
  EXPECT_TRUE(reader->hasVideo());
  EXPECT_EQ(fake->selections.back(), std::make_pair(DWORD{MF_SOURCE_READER_FIRST_VIDEO_STREAM}, BOOL{TRUE}));
  EXPECT_EQ(fake->readCalls, 1) << "the audio is primed";

  fake->acceptedSubtypes.clear();
  ASSERT_TRUE(OpenVideo(true));
  EXPECT_FALSE(reader->hasAudio());
  EXPECT_TRUE(reader->hasVideo());
  EXPECT_EQ(status.statusClass, kOpenStatusFine) << "the video set-up decides the result";
}

TEST_F(MFReaderVideoTest, AStreamWithoutSizeOrRateIsNoVideo) {
  const FakeVideoFormat usable;
  std::vector<FakeVideoFormat> unusable(3, usable);
  unusable[0].frameSize = Pair(0, 240);
  unusable[1].frameRate = Pair(25, 0);
  unusable[2].frameRate.reset();
  for (const FakeVideoFormat& format : unusable) {
    fake->sourceVideo = format;
    EXPECT_FALSE(OpenVideo());
    EXPECT_FALSE(reader->hasVideo());
    EXPECT_EQ(status.statusClass, kOpenStatusFine);
  }
  EXPECT_TRUE(fake->askedVideoSubtypes.empty());
}

TEST_F(MFReaderVideoTest, ANegotiationNothingCanSatisfyFailsTheSetUpAndIsTraced) {
  // The reader delivers neither format, and no transform takes H.264 in.
  fake->acceptedVideoSubtypes.clear();
  CaptureTrace("windowsmediafoundation.MFReader.SetupVideo=5");
  EXPECT_FALSE(OpenVideo());
  const std::string trace = CapturedTrace();
  EXPECT_FALSE(reader->hasVideo());
  EXPECT_EQ(status.statusClass, kOpenStatusReaderFailed);
  EXPECT_TRUE(FAILED(status.hr));
  EXPECT_EQ(trace, ErrorLine(status.hr));
  EXPECT_EQ(reader->videoFrameBytes(), 0u);
}

TEST_F(MFReaderVideoTest, TheTransformConvertsWhatTheReaderCannot) {
  // 16 x 8 I420 frames of one grey are all the reader delivers.
  fake->sourceVideo->subtype = MFVideoFormat_I420;
  fake->sourceVideo->frameSize = Pair(16, 8);
  fake->acceptedVideoSubtypes.clear();
  std::vector<std::uint8_t> grey(16 * 8, 126);
  grey.resize(16 * 8 * 3 / 2, 128);
  fake->videoReads = {FrameRead(grey, 0), FrameRead(grey, 400000)};
  reader->SetDeliverRgbOnly(true);
  ASSERT_TRUE(OpenVideo()) << orxcore::UTF16toStdString(status.message);
  EXPECT_TRUE(reader->convertsVideo());
  ASSERT_TRUE(IsEqualGUID(reader->clientVideoSubtype(), MFVideoFormat_RGB32));
  ASSERT_EQ(reader->SetupResizer(), S_OK);
  EXPECT_TRUE(reader->convertsVideo()) << "a second set-up of the transform still converts";
  const Frames frames = ReadFrames(0, 3);
  EXPECT_EQ(frames.hr, S_OK);
  ASSERT_EQ(frames.count, 2) << "two frames, then the end";
  for (const std::uint32_t pixel : frames.pixels()) {
    for (int shift = 0; shift < 24; shift += 8) {
      EXPECT_NEAR(static_cast<int>((pixel >> shift) & 0xFF), 128, 4) << std::hex << pixel;
    }
  }
}

TEST_F(MFReaderVideoTest, ContiguousRowsFollowTheStrideAndComeOutTopDownAndOpaque) {
  const Pixels picture = Picture(4, 3, 1);
  struct Case {
    std::optional<INT32> stride;
    std::vector<std::uint8_t> buffer;
  };
  const Case cases[] = {
      {std::nullopt, Bytes(Flipped(picture, 4))},  // RGB's default is bottom-up
      {28, Strided(picture, 4, 28)},
      {-20, Strided(Flipped(picture, 4), 4, 20)},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.stride ? *test.stride : 0);
    UseRgbStream(4, 3, test.stride);
    fake->videoReads = {FrameRead(test.buffer, 0)};
    ASSERT_TRUE(OpenVideo());
    const Frames frames = ReadFrames(0, 1);
    ASSERT_EQ(frames.hr, S_OK);
    EXPECT_EQ(frames.pixels(), Opaque(picture));
  }
}

TEST_F(MFReaderVideoTest, TwoDimensionalBuffersAreReadByTheirOwnPitch) {
  for (const bool bottomUp : {false, true}) {
    SCOPED_TRACE(bottomUp ? "bottom-up" : "top-down");
    // The type's stride has the rows the wrong way round; Lock2D is right.
    UseRgbStream(5, 3, bottomUp ? 20 : -20);
    FakeRead read = FrameRead(Bytes(Picture(5, 3, 4)), 0);
    read.picture = FakePicture{5, 3, bottomUp};
    fake->videoReads = {read};
    ASSERT_TRUE(OpenVideo());
    const Frames frames = ReadFrames(0, 1);
    ASSERT_EQ(frames.hr, S_OK);
    EXPECT_EQ(frames.pixels(), Opaque(Picture(5, 3, 4)));
  }
}

TEST_F(MFReaderVideoTest, UyvyFramesAreCopiedUnchanged) {
  fake->sourceVideo->frameSize = Pair(4, 2);
  std::vector<std::uint8_t> frame(4 * 2 * 2);
  for (std::size_t i = 0; i < frame.size(); ++i) frame[i] = static_cast<std::uint8_t>(i * 17);
  fake->videoReads = {FrameRead(frame, 0)};
  ASSERT_TRUE(OpenVideo());
  const Frames frames = ReadFrames(0, 1);
  ASSERT_EQ(frames.hr, S_OK);
  EXPECT_EQ(frames.bytes, frame);
}

TEST_F(MFReaderVideoTest, FramesFollowEachOtherUntilTheEnd) {
  UseRgbStream(2, 2, 8);
  fake->videoReads = {FrameRead(Bytes(Picture(2, 2, 10)), 0), FakeRead{},
                      FrameRead(Bytes(Picture(2, 2, 11)), 400000)};
  ASSERT_TRUE(OpenVideo());
  Frames frames = ReadFrames(0, 3);
  ASSERT_EQ(frames.hr, S_OK);
  ASSERT_EQ(frames.count, 2) << "a read without a sample is skipped, then the stream ends";
  EXPECT_EQ(frames.pixels(), Opaque(Joined(Picture(2, 2, 10), Picture(2, 2, 11))));
  frames = ReadFrames(2, 1);
  EXPECT_EQ(frames.hr, S_OK);
  EXPECT_EQ(frames.count, 0);
  EXPECT_EQ(fake->positions, std::vector<LONGLONG>{0}) << "reads went on from where they stopped";
}

TEST_F(MFReaderVideoTest, ABufferTooShortForItsRowsFailsAndIsTraced) {
  UseRgbStream(4, 3, 16);
  fake->videoReads = {FrameRead(std::vector<std::uint8_t>(16 * 3 - 1), 0)};
  ASSERT_TRUE(OpenVideo());
  CaptureTrace("windowsmediafoundation.MFReader.ReadVideoFrames=5");
  const Frames frames = ReadFrames(0, 1);
  EXPECT_EQ(CapturedTrace(), ErrorLine(MF_E_BUFFERTOOSMALL));
  EXPECT_EQ(frames.hr, MF_E_BUFFERTOOSMALL);
  EXPECT_EQ(frames.count, 0);
}

TEST_F(MFReaderVideoTest, ATypeChangeMayMoveTheRowsButNotResizeTheFrame) {
  UseRgbStream(4, 2, 16);
  const Pixels picture = Picture(4, 2, 5);
  FakeRead changed = FrameRead(Strided(Flipped(picture, 4), 4, 20), 0);
  changed.flags = MF_SOURCE_READERF_CURRENTMEDIATYPECHANGED;
  changed.newVideoFormat = *fake->sourceVideo;
  changed.newVideoFormat->subtype = MFVideoFormat_RGB32;
  changed.newVideoFormat->defaultStride = -20;
  fake->videoReads = {changed};
  ASSERT_TRUE(OpenVideo());
  Frames frames = ReadFrames(0, 1);
  ASSERT_EQ(frames.hr, S_OK);
  EXPECT_EQ(frames.pixels(), Opaque(picture));

  changed.newVideoFormat->frameSize = Pair(8, 2);
  fake->videoReads = {changed};
  ASSERT_TRUE(OpenVideo());
  frames = ReadFrames(0, 1);
  EXPECT_EQ(frames.hr, MF_E_INVALIDMEDIATYPE);
  EXPECT_EQ(frames.count, 0);
}

TEST_F(MFReaderVideoTest, UnusableArgumentsAreRefused) {
  UseRgbStream(2, 2, 8);
  ASSERT_TRUE(OpenVideo());
  std::vector<std::uint8_t> buffer(reader->videoFrameBytes() * 2);
  std::int32_t count = 3;
  EXPECT_EQ(reader->ReadVideoFrames(0, count, buffer.data(), buffer.size()), E_INVALIDARG) << "too small";
  EXPECT_EQ(count, 0);
  count = 1;
  EXPECT_EQ(reader->ReadVideoFrames(0, count, nullptr, buffer.size()), E_POINTER);
  count = -1;
  EXPECT_EQ(reader->ReadVideoFrames(0, count, buffer.data(), buffer.size()), E_INVALIDARG);
  count = 1;
  EXPECT_EQ(reader->ReadVideoFrames(-1, count, buffer.data(), buffer.size()), E_INVALIDARG);
  EXPECT_EQ(fake->videoReadCalls, 0);
  EXPECT_EQ(ReadFrames(0, 1).hr, S_OK);
  EXPECT_EQ(fake->positions, std::vector<LONGLONG>{0}) << "a refused call does not move the reader";

  fake->sourceVideo.reset();
  fake->sourceAudio = FakeAudioFormat{};
  ASSERT_TRUE(OpenVideo(true));
  count = 1;
  EXPECT_EQ(reader->ReadVideoFrames(0, count, buffer.data(), buffer.size()), MF_E_INVALIDREQUEST) << "no video";
  EXPECT_EQ(orxcore::UTF16toStdString(reader->GetVideoFormatDescription()), "Unknown Video Format: @0");
}

TEST_F(MFReaderVideoTest, AFrameThatIsNotTheNextOneIsSoughtAndEarlierFramesDropped) {
  UseRgbStream(2, 1, 8);
  // After the seek the source starts at the key frame before frame 5.
  for (std::uint32_t frame = 4; frame < 8; ++frame) {
    fake->videoReads.push_back(FrameRead(Bytes(Picture(2, 1, frame)), frame * 400000));
  }
  ASSERT_TRUE(OpenVideo());
  Frames frames = ReadFrames(5, 2);
  ASSERT_EQ(frames.hr, S_OK);
  ASSERT_EQ(frames.count, 2);
  EXPECT_EQ(frames.pixels(), Opaque(Joined(Picture(2, 1, 5), Picture(2, 1, 6))));
  EXPECT_EQ(fake->positions, (std::vector<LONGLONG>{0, 5 * 400000 + 100000})) << "a quarter frame in";

  frames = ReadFrames(7, 1);
  EXPECT_EQ(frames.pixels(), Opaque(Picture(2, 1, 7)));
  EXPECT_EQ(fake->positions.size(), 2u) << "the next frame needs no seek";

  fake->setPositionHr = MF_E_INVALIDREQUEST;
  CaptureTrace("windowsmediafoundation.MFReader.ReadVideoFrames=5");
  frames = ReadFrames(3, 1);
  EXPECT_EQ(CapturedTrace(), ErrorLine(MF_E_INVALIDREQUEST));
  EXPECT_EQ(frames.hr, MF_E_INVALIDREQUEST);
  EXPECT_EQ(fake->positions.back(), 3 * 400000 + 100000);
}

TEST_F(MFReaderVideoTest, AnUnknownOrUnreadableDurationEstimatesNoFrames) {
  ASSERT_TRUE(OpenVideo());
  fake->duration = 0;
  EXPECT_EQ(reader->GetEstimatedVideoFrameCount(), 0);
  fake->durationHr = MF_E_ATTRIBUTENOTFOUND;
  CaptureTrace("windowsmediafoundation.MFReader.GetEstimatedVideoFrameCount=5");
  EXPECT_EQ(reader->GetEstimatedVideoFrameCount(), 0);
  EXPECT_EQ(CapturedTrace(), ErrorLine(MF_E_ATTRIBUTENOTFOUND));
}

TEST_F(MFReaderVideoTest, SeekabilityAndPixelAspectComeWithTheSetUp) {
  fake->characteristics = MFMEDIASOURCE_CAN_SEEK | MFMEDIASOURCE_CAN_PAUSE;
  fake->sourceVideo->pixelAspectRatio = Pair(4, 3);
  ASSERT_TRUE(OpenVideo());
  EXPECT_TRUE(reader->canSeek());
  EXPECT_EQ(reader->pixelAspectNumerator(), 4u);
  EXPECT_EQ(reader->pixelAspectDenominator(), 3u);
  EXPECT_NEAR(reader->pixelAspectRatio(), 4.0 / 3.0, 1e-12);

  fake->characteristics = MFMEDIASOURCE_CAN_SEEK | MFMEDIASOURCE_HAS_SLOW_SEEK;
  fake->sourceVideo->pixelAspectRatio.reset();
  ASSERT_TRUE(OpenVideo());
  EXPECT_FALSE(reader->canSeek()) << "slow seeking counts as none";
  EXPECT_DOUBLE_EQ(reader->pixelAspectRatio(), 1.0) << "square without the attribute";
}

}  // namespace
}  // namespace windowsmediafoundation
