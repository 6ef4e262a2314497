// The exported Decoder on real files made by FFmpeg, decoded by Wine's Media
// Foundation, against FFmpeg's own decodes.
#include <gtest/gtest.h>

#include <cstring>
#include <ostream>

#include "DecoderTestSupport.h"
#include "MediaFixtures.h"
#include "aurivox/Decoder.h"

namespace {

using aurivox_test::MediaFixtureWPath;
using aurivox_test::ReadMediaFixture;

constexpr std::uint32_t kPcm = 0x70636D20;    // "pcm "
constexpr std::uint32_t kFloat = 0x32336E69;  // IEEE float

struct MediaCase {
  const char* file;
  const char* reference;
  std::uint32_t channels;
  std::uint32_t rate;
  std::int32_t sampleType;  // as GetAudioFormat reports it
  std::int32_t hostCode;    // as imFileInfoRec8 carries it
  std::uint32_t codecId;
  std::int64_t referenceFrames;  // exact length, or 0 when the encoder pads
  bool exact;
};

std::ostream& operator<<(std::ostream& out, const MediaCase& c) { return out << c.file; }

// Wine reports the decoded type of compressed files as their source type:
// MP3 and FLAC arrive as 16-bit PCM, AAC and AC-3 as float.
const MediaCase kCases[] = {
    {"pcm_u8.wav", "pcm_u8.wav.u8", 2, 44100, 10, 2, kPcm, 88200, true},
    {"pcm_s16.wav", "pcm_s16.wav.s16le", 2, 44100, 20, 3, kPcm, 88200, true},
    {"pcm_s24.wav", "pcm_s24.wav.s24le", 2, 44100, 30, 4, kPcm, 88200, true},
    {"pcm_s32.wav", "pcm_s32.wav.s32le", 2, 44100, 40, 6, kPcm, 88200, true},
    {"float32.wav", "float32.wav.f32le", 2, 44100, 0, 12, kFloat, 88200, true},
    {"stereo.flac", "stereo.flac.s16le", 2, 44100, 20, 3, kPcm, 88200, true},
    {"stereo.mp3", "stereo.mp3.f32le", 2, 44100, 20, 3, kPcm, 0, false},
    {"stereo.m4a", "stereo.m4a.f32le", 2, 48000, 0, 12, kFloat, 0, false},
    {"surround51.m4a", "surround51.m4a.f32le", 6, 48000, 0, 12, kFloat, 0, false},
    {"surround51.ac3", "surround51.ac3.f32le", 6, 48000, 0, 12, kFloat, 0, false},
    {"video_aac.mp4", "video_aac.mp4.f32le", 2, 48000, 0, 12, kFloat, 0, false},
};

class DecoderMediaTest : public ::testing::TestWithParam<MediaCase> {};

TEST_P(DecoderMediaTest, ReportsTheFormatInTheHostRecord) {
  const MediaCase& c = GetParam();
  Aurivox::Decoder decoder;
  imFileInfoRec8 info;
  std::memset(&info, 0xCD, sizeof info);
  info.audioFlags = 0x10;
  ASSERT_EQ(decoder.Open(MediaFixtureWPath(c.file), &info), Aurivox::kResultSuccess);

  EXPECT_EQ(info.hasAudio, 1);
  EXPECT_EQ(info.numChannels, c.channels);
  EXPECT_EQ(info.sampleRate, static_cast<float>(c.rate));
  EXPECT_EQ(info.sampleType, c.hostCode);
  EXPECT_EQ(info.audioDuration, decoder.GetDuration());
  EXPECT_EQ(info.audioFlags, 0x11) << "bit 0 added, others kept";
  // Reserved bytes stay as the host left them.
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(&info);
  for (std::size_t i : {std::size_t{0}, std::size_t{2}, std::size_t{100}, std::size_t{173}, sizeof info - 1}) {
    EXPECT_EQ(bytes[i], 0xCD) << "byte " << i;
  }

  orxmediatypes::AudioFormat format;
  decoder.GetAudioFormat(format);
  EXPECT_EQ(format.GetSampleRate(), c.rate);
  EXPECT_EQ(format.GetChannelCount(), c.channels);
  EXPECT_EQ(format.GetSampleType(), c.sampleType);
  EXPECT_EQ(decoder.GetCodecID(), c.codecId);
  EXPECT_FALSE(decoder.GetCodecDescription().empty());
  if (c.referenceFrames) {
    EXPECT_EQ(decoder.GetDuration(), c.referenceFrames);
  } else {
    EXPECT_NEAR(static_cast<double>(decoder.GetDuration()), 2.0 * c.rate, 0.05 * c.rate);
  }

  imGetAudioChannelLayoutRec layout;
  std::memset(&layout, 0x7F, sizeof layout);
  ASSERT_EQ(decoder.OnGetAudioChannelLayout(&layout), Aurivox::kResultSuccess);
  for (std::uint32_t i = 0; i < c.channels; ++i) EXPECT_EQ(layout.channelLabels[i], 100 + static_cast<int>(i));
  EXPECT_EQ(layout.channelLabels[c.channels], 0x7F7F7F7F) << "labels past the channels are left alone";
}

TEST_P(DecoderMediaTest, DeliversTheSamplesFFmpegDecodes) {
  const MediaCase& c = GetParam();
  Aurivox::Decoder decoder;
  ASSERT_EQ(decoder.Open(MediaFixtureWPath(c.file), nullptr), Aurivox::kResultSuccess);
  const std::uint32_t width = aurivox_test::SampleWidth(decoder);
  int result = -1;
  const auto decoded = aurivox_test::DecodeInterleaved(decoder, c.channels, width, 4096, result);
  ASSERT_EQ(result, Aurivox::kResultSuccess);
  ASSERT_EQ(decoded.size(), std::size_t(decoder.GetDuration()) * c.channels * width);

  const auto reference = ReadMediaFixture(c.reference);
  ASSERT_FALSE(reference.empty()) << c.reference;
  if (c.exact) {
    EXPECT_TRUE(decoded == reference) << "PCM must match bit for bit";
    return;
  }
  // The reported length is an estimate: Wine's AAC decoder leaves out the
  // last 1024-sample frame, which the decoder pads with zeros. The tail is
  // left out of the comparison.
  const std::size_t tailBytes = std::size_t{2048} * c.channels * width;
  const std::vector<std::uint8_t> body(decoded.begin(), decoded.end() - tailBytes);
  const auto comparison = aurivox_test::CompareAligned(
      aurivox_test::SamplesAsFloat(body, width, c.sampleType == 0),
      aurivox_test::SamplesAsFloat(reference, 4, true), c.channels, 4096, 4096);
  EXPECT_GT(comparison.overlapFrames, static_cast<std::size_t>(c.rate));
  // Lossy decoders differ in rounding, not in the sound.
  EXPECT_LT(comparison.rmsDifference, 1e-3) << "lag " << comparison.lag;
  EXPECT_LT(comparison.maxDifference, 1e-2) << "lag " << comparison.lag;
}

INSTANTIATE_TEST_SUITE_P(Formats, DecoderMediaTest, ::testing::ValuesIn(kCases),
                         [](const ::testing::TestParamInfo<MediaCase>& info) {
                           std::string name = info.param.file;
                           for (char& ch : name) {
                             if (!isalnum(static_cast<unsigned char>(ch))) ch = '_';
                           }
                           return name;
                         });

}  // namespace
