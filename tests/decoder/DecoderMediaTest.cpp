// The exported Decoder on real files made by FFmpeg, decoded by Wine's Media
// Foundation, against FFmpeg's own decodes.
#include <gtest/gtest.h>

#include <cstring>
#include <ostream>

#include "DecoderTestSupport.h"
#include "MediaFixtures.h"
#include "PlatformExpectations.h"
#include "aurivox/Decoder.h"

namespace {

using aurivox_test::MediaFixtureWPath;
using aurivox_test::ReadMediaFixture;

constexpr std::uint32_t kPcm = 0x70636D20;    // "pcm "
constexpr std::uint32_t kFloat = 0x32336E69;  // IEEE float
constexpr std::uint32_t kMp3 = 0x2E6D7033;    // ".mp3"
constexpr std::uint32_t kAac = 0x61616320;    // "aac "
constexpr std::uint32_t kAc3 = 0x61632D33;    // "ac-3"
// FLAC has no identifier of its own: the CRC-32 of its subtype's bytes.
constexpr std::uint32_t kFlacChecksum = 0x20B6DABD;

// What the decoder delivers for a file: its codec identity and sample type.
struct Delivery {
  std::uint32_t codecId;
  std::int32_t sampleType;  // as GetAudioFormat reports it
  std::int32_t hostCode;    // as imFileInfoRec8 carries it
  // The host label of a 5.1 file's fifth channel: 104 behind the listener,
  // 109 at the sides (FFmpeg's AC-3 layout names the side speakers).
  std::int32_t surroundLabel = 104;
};
constexpr Delivery kU8{kPcm, 10, 2}, kS16{kPcm, 20, 3}, kS24{kPcm, 30, 4}, kS32{kPcm, 40, 6};
constexpr Delivery kF32{kFloat, 0, 12};

struct MediaCase {
  const char* file;
  const char* reference;
  std::uint32_t channels;
  std::uint32_t rate;
  std::int64_t referenceFrames;  // exact length, or 0 when the encoder pads
  bool exact;                    // lossless: the reference's samples, bit for bit
  Delivery decodedType;          // where the platform reports the decoded type
  Delivery ownCodec;             // where it reports the file's own codec
  bool transportStream = false;
};

std::ostream& operator<<(std::ostream& out, const MediaCase& c) { return out << c.file; }

const Delivery& Expected(const MediaCase& c) {
  return aurivox_test::kReportsTheFilesOwnCodec ? c.ownCodec : c.decodedType;
}

// Compressed audio is delivered as float where the file's codec shows, and
// in the decoded type's width where that type shows instead.
const MediaCase kCases[] = {
    {"pcm_u8.wav", "pcm_u8.wav.u8", 2, 44100, 88200, true, kU8, kU8},
    {"pcm_s16.wav", "pcm_s16.wav.s16le", 2, 44100, 88200, true, kS16, kS16},
    {"pcm_s24.wav", "pcm_s24.wav.s24le", 2, 44100, 88200, true, kS24, kS24},
    {"pcm_s32.wav", "pcm_s32.wav.s32le", 2, 44100, 88200, true, kS32, kS32},
    {"float32.wav", "float32.wav.f32le", 2, 44100, 88200, true, kF32, kF32},
    {"stereo.flac", "stereo.flac.s16le", 2, 44100, 88200, true, kS16, {kFlacChecksum, 0, 12}},
    {"stereo.mp3", "stereo.mp3.f32le", 2, 44100, 0, false, kS16, {kMp3, 0, 12}},
    {"stereo.m4a", "stereo.m4a.f32le", 2, 48000, 0, false, kF32, {kAac, 0, 12}},
    {"surround51.m4a", "surround51.m4a.f32le", 6, 48000, 0, false, kF32, {kAac, 0, 12}},
    {"surround51.ac3", "surround51.ac3.f32le", 6, 48000, 0, false, kF32, {kAc3, 0, 12, 109}},
    {"video_aac.mp4", "video_aac.mp4.f32le", 2, 48000, 0, false, kF32, {kAac, 0, 12}},
    {"shot_ac3.m2ts", "shot_ac3.m2ts.f32le", 6, 48000, 0, false, kF32, {kAc3, 0, 12, 109}, true},
    {"shot_lpcm.m2ts", "shot_lpcm.m2ts.s24le", 2, 48000, 0, true, kS24, kS24, true},
};

class DecoderMediaTest : public ::testing::TestWithParam<MediaCase> {};

TEST_P(DecoderMediaTest, ReportsTheFormatInTheHostRecord) {
  const MediaCase& c = GetParam();
  if (c.transportStream && !aurivox_test::kReadsTransportStreams) GTEST_SKIP() << "no transport streams here";
  const Delivery& expected = Expected(c);
  Aurivox::Decoder decoder;
  imFileInfoRec8 info;
  std::memset(&info, 0xCD, sizeof info);
  info.audioFlags = 0x10;
  ASSERT_EQ(decoder.Open(MediaFixtureWPath(c.file), &info), Aurivox::kResultSuccess);

  EXPECT_EQ(info.hasAudio, 1);
  // Host records are packed; `+` hands gtest a copy rather than a misaligned reference.
  EXPECT_EQ(+info.numChannels, c.channels);
  EXPECT_EQ(+info.sampleRate, static_cast<float>(c.rate));
  EXPECT_EQ(+info.sampleType, expected.hostCode);
  EXPECT_EQ(+info.audioDuration, decoder.GetDuration());
  EXPECT_EQ(+info.audioFlags, 0x11) << "bit 0 added, others kept";
  // Reserved bytes stay as the host left them.
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(&info);
  for (std::size_t i : {std::size_t{0}, std::size_t{2}, std::size_t{100}, std::size_t{173}, sizeof info - 1}) {
    EXPECT_EQ(bytes[i], 0xCD) << "byte " << i;
  }

  orxmediatypes::AudioFormat format;
  decoder.GetAudioFormat(format);
  EXPECT_EQ(format.GetSampleRate(), c.rate);
  EXPECT_EQ(format.GetChannelCount(), c.channels);
  EXPECT_EQ(format.GetSampleType(), expected.sampleType);
  EXPECT_EQ(decoder.GetCodecID(), expected.codecId);
  EXPECT_FALSE(decoder.GetCodecDescription().empty());
  if (c.referenceFrames) {
    EXPECT_EQ(decoder.GetDuration(), c.referenceFrames);
  } else {
    EXPECT_NEAR(static_cast<double>(decoder.GetDuration()), 2.0 * c.rate, 0.05 * c.rate);
  }

  imGetAudioChannelLayoutRec layout;
  std::memset(&layout, 0x7F, sizeof layout);
  ASSERT_EQ(decoder.OnGetAudioChannelLayout(&layout), Aurivox::kResultSuccess);
  for (std::uint32_t i = 0; i < c.channels; ++i) {
    const int label = i < 4 ? 100 + static_cast<int>(i) : expected.surroundLabel + static_cast<int>(i) - 4;
    EXPECT_EQ(layout.channelLabels[i], label) << "channel " << i;
  }
  EXPECT_EQ(layout.channelLabels[c.channels], 0x7F7F7F7F) << "labels past the channels are left alone";
}

TEST_P(DecoderMediaTest, DeliversTheSamplesFFmpegDecodes) {
  const MediaCase& c = GetParam();
  if (c.transportStream && !aurivox_test::kReadsTransportStreams) GTEST_SKIP() << "no transport streams here";
  const bool isFloat = Expected(c).sampleType == 0;
  Aurivox::Decoder decoder;
  ASSERT_EQ(decoder.Open(MediaFixtureWPath(c.file), nullptr), Aurivox::kResultSuccess);
  const std::uint32_t width = aurivox_test::SampleWidth(decoder);
  int result = -1;
  const auto decoded = aurivox_test::DecodeInterleaved(decoder, result);
  ASSERT_EQ(result, Aurivox::kResultSuccess);
  ASSERT_EQ(decoded.size(), std::size_t(decoder.GetDuration()) * c.channels * width);

  const auto reference = ReadMediaFixture(c.reference);
  ASSERT_FALSE(reference.empty()) << c.reference;
  if (c.exact && decoded.size() == reference.size()) {
    EXPECT_TRUE(decoded == reference) << "PCM must match bit for bit";
    return;
  }
  if (c.exact) {
    // Lossless audio delivered as float: every sample is the reference's,
    // scaled exactly.
    const auto referenceWidth = static_cast<std::uint32_t>(reference.size() * width / decoded.size());
    EXPECT_TRUE(aurivox_test::SamplesAsFloat(decoded, width, isFloat) ==
                aurivox_test::SamplesAsFloat(reference, referenceWidth, false));
    return;
  }
  // The reported length is an estimate: Wine's AAC decoder leaves out the
  // last 1024-sample frame, which the decoder pads with zeros. The tail is
  // left out of the comparison.
  const std::size_t tailBytes = std::size_t{2048} * c.channels * width;
  const std::vector<std::uint8_t> body(decoded.begin(), decoded.end() - tailBytes);
  const auto comparison = aurivox_test::CompareAligned(
      aurivox_test::SamplesAsFloat(body, width, isFloat),
      aurivox_test::SamplesAsFloat(reference, 4, true), c.channels, 4096, 4096);
  EXPECT_GT(comparison.overlapFrames, static_cast<std::size_t>(c.rate));
  // Lossy decoders differ in rounding, not in the sound.
  EXPECT_LT(comparison.rmsDifference, 1e-3) << "lag " << comparison.lag;
  EXPECT_LT(comparison.maxDifference, 1e-2) << "lag " << comparison.lag;
}

INSTANTIATE_TEST_SUITE_P(Formats, DecoderMediaTest, ::testing::ValuesIn(kCases));

}  // namespace
