// The exported Decoder end to end as a host drives it, on real files FFmpeg
// made, against FFmpeg's own decodes: under Wine through Media Foundation,
// natively through the FFmpeg platform half.
#include "aurivox/Decoder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <ostream>

#include "MediaFixtures.h"
#include "PlatformExpectations.h"
#include "PlaylistBuilder.h"

namespace {

using aurivox_test::MediaFixtureWPath;
using aurivox_test::ReadMediaFixture;
using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t kPcm = 0x70636D20;    // "pcm "
constexpr std::uint32_t kFloat = 0x32336E69;  // IEEE float
constexpr std::uint32_t kMp3 = 0x2E6D7033;    // ".mp3"
constexpr std::uint32_t kAac = 0x61616320;    // "aac "
constexpr std::uint32_t kAc3 = 0x61632D33;    // "ac-3"
// FLAC has no identifier of its own: the CRC-32 of its subtype's bytes.
constexpr std::uint32_t kFlacChecksum = 0x20B6DABD;
constexpr std::uint32_t kFrames = 88200;  // the WAVE fixtures hold two seconds at 44.1 kHz

// Per-channel host buffers of 32-bit slots filled with 0xAB, and the
// pointer array the read record carries.
struct HostBuffers {
  HostBuffers(std::uint32_t channels, std::uint32_t frames) : storage(channels, std::vector<float>(frames)) {
    for (auto& channel : storage) {
      std::memset(channel.data(), 0xAB, channel.size() * sizeof(float));
      pointers.push_back(channel.data());
    }
  }
  // Bytes [first, first + count) of a channel.
  Bytes bytes(std::uint32_t channel, std::size_t first, std::size_t count) const {
    const auto* start = reinterpret_cast<const std::uint8_t*>(storage[channel].data()) + first;
    return Bytes(start, start + count);
  }
  std::vector<std::vector<float>> storage;
  std::vector<float*> pointers;
};

int ReadBlock(Aurivox::Decoder& decoder, HostBuffers& buffers, std::uint32_t frames, std::int64_t position = 0) {
  imImportAudioRec7 request{position, frames, buffers.pointers.data(), {}};
  return decoder.ReadAudio(&request);
}

// Sample types 10, 20 and 30 are 8, 16 and 24-bit integers; the rest take 4 bytes.
std::uint32_t SampleWidth(const orxmediatypes::AudioFormat& format) {
  const std::int32_t type = format.GetSampleType();
  return type >= 10 && type <= 30 ? static_cast<std::uint32_t>(type / 10) : 4;
}

// The decoder's whole reported duration, read in blocks and interleaved, up
// to the first failing read.
Bytes DecodeInterleaved(Aurivox::Decoder& decoder) {
  constexpr std::uint32_t kBlock = 4096;
  orxmediatypes::AudioFormat format;
  decoder.GetAudioFormat(format);
  const std::uint32_t channels = format.GetChannelCount(), width = SampleWidth(format);
  HostBuffers buffers(channels, kBlock);
  const std::int64_t total = decoder.GetDuration();
  Bytes out;
  for (std::int64_t done = 0; done < total; done += kBlock) {
    const auto frames = static_cast<std::uint32_t>(std::min<std::int64_t>(kBlock, total - done));
    const int result = ReadBlock(decoder, buffers, frames);
    EXPECT_EQ(result, Aurivox::kResultSuccess) << "frame " << done;
    if (result != Aurivox::kResultSuccess) break;
    for (std::uint32_t f = 0; f < frames; ++f) {
      for (std::uint32_t c = 0; c < channels; ++c) {
        const Bytes sample = buffers.bytes(c, std::size_t{f} * width, width);
        out.insert(out.end(), sample.begin(), sample.end());
      }
    }
  }
  return out;
}

// Frames [first, first + count) of one channel of the 16-bit stereo
// fixture, as FFmpeg decodes it.
Bytes Reference(std::uint32_t channel, std::uint32_t first, std::uint32_t count) {
  static const Bytes reference = ReadMediaFixture("pcm_s16.wav.s16le");
  Bytes out;
  for (std::uint32_t f = first; f < first + count; ++f) {
    const auto at = reference.begin() + (std::ptrdiff_t{f} * 2 + channel) * 2;
    out.insert(out.end(), at, at + 2);
  }
  return out;
}

// What the decoder delivers for a file: its codec identity and sample type.
struct Delivery {
  std::uint32_t codecId;
  std::int32_t sampleType;  // as GetAudioFormat reports it
  std::int32_t hostCode;    // as imFileInfoRec8 carries it
  // The host label of a 5.1 file's fifth channel: 104 behind the listener,
  // 109 at the sides (FFmpeg's AC-3 layout names the side speakers).
  std::int32_t surroundLabel = 104;
};
constexpr Delivery kU8{kPcm, 10, 2}, kS16{kPcm, 20, 3}, kS24{kPcm, 30, 4}, kS32{kPcm, 40, 6}, kF32{kFloat, 0, 12};

struct MediaCase {
  const char* file;
  const char* reference;
  std::uint32_t channels;
  std::uint32_t rate;
  bool exact;                    // lossless: the reference's samples, bit for bit
  Delivery decodedType;          // where the platform reports the decoded type
  Delivery ownCodec;             // where it reports the file's own codec
  bool split = false;            // also decoded from every segment of a split recording
  bool transportStream = false;
};

std::ostream& operator<<(std::ostream& out, const MediaCase& c) { return out << c.file; }

// Compressed audio is delivered as float where the file's codec shows, and
// in the decoded type's width where that type shows instead.
const MediaCase kCases[] = {
    {"pcm_u8.wav", "pcm_u8.wav.u8", 2, 44100, true, kU8, kU8},
    {"pcm_s16.wav", "pcm_s16.wav.s16le", 2, 44100, true, kS16, kS16, true},
    {"pcm_s24.wav", "pcm_s24.wav.s24le", 2, 44100, true, kS24, kS24},
    {"pcm_s32.wav", "pcm_s32.wav.s32le", 2, 44100, true, kS32, kS32},
    {"float32.wav", "float32.wav.f32le", 2, 44100, true, kF32, kF32},
    {"stereo.flac", "stereo.flac.s16le", 2, 44100, true, kS16, {kFlacChecksum, 0, 12}},
    {"stereo.mp3", "stereo.mp3.f32le", 2, 44100, false, kS16, {kMp3, 0, 12}},
    {"stereo.m4a", "stereo.m4a.f32le", 2, 48000, false, kF32, {kAac, 0, 12}, true},
    {"surround51.m4a", "surround51.m4a.f32le", 6, 48000, false, kF32, {kAac, 0, 12}},
    {"surround51.ac3", "surround51.ac3.f32le", 6, 48000, false, kF32, {kAc3, 0, 12, 109}},
    {"video_aac.mp4", "video_aac.mp4.f32le", 2, 48000, false, kF32, {kAac, 0, 12}},
    {"shot_ac3.m2ts", "shot_ac3.m2ts.f32le", 6, 48000, false, kF32, {kAc3, 0, 12, 109}, true, true},
    {"shot_lpcm.m2ts", "shot_lpcm.m2ts.s24le", 2, 48000, true, kS24, kS24, true, true},
};

class DecoderMediaTest : public ::testing::TestWithParam<MediaCase> {};

TEST_P(DecoderMediaTest, ReportsTheFormatAndDeliversTheSamplesFFmpegDecodes) {
  const MediaCase& c = GetParam();
  if (c.transportStream && !aurivox_test::kReadsTransportStreams) GTEST_SKIP() << "no transport streams here";
  const Delivery& expected = aurivox_test::kReportsTheFilesOwnCodec ? c.ownCodec : c.decodedType;
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
  EXPECT_EQ(format.GetSampleType(), expected.sampleType);
  EXPECT_EQ(decoder.GetCodecID(), expected.codecId);
  // Every fixture holds about two seconds; lossless ones are held to their
  // exact length by the sample comparison below.
  EXPECT_NEAR(static_cast<double>(decoder.GetDuration()), 2.0 * c.rate, 0.05 * c.rate);
  imGetAudioChannelLayoutRec layout;
  std::memset(&layout, 0x7F, sizeof layout);
  ASSERT_EQ(decoder.OnGetAudioChannelLayout(&layout), Aurivox::kResultSuccess);
  for (std::uint32_t i = 0; i < c.channels; ++i) {
    const int label = i < 4 ? 100 + static_cast<int>(i) : expected.surroundLabel + static_cast<int>(i) - 4;
    EXPECT_EQ(layout.channelLabels[i], label) << "channel " << i;
  }
  EXPECT_EQ(layout.channelLabels[c.channels], 0x7F7F7F7F) << "labels past the channels are left alone";

  const std::uint32_t width = SampleWidth(format);
  const Bytes decoded = DecodeInterleaved(decoder);
  ASSERT_EQ(decoded.size(), std::size_t(decoder.GetDuration()) * c.channels * width);
  const Bytes reference = ReadMediaFixture(c.reference);
  ASSERT_FALSE(reference.empty()) << c.reference;
  const auto asFloat = aurivox_test::SamplesAsFloat(decoded, width, expected.sampleType == 0);
  if (c.split) {
    // Any segment of one shot, in a real BDMV tree with a real playlist,
    // decodes to the samples of the unsplit file: exactly where the
    // platform's decodes repeat. The cuts are odd, one inside the header.
    const Bytes source = ReadMediaFixture(c.file);
    aurivox_test::RecordingTree tree;
    tree.WriteSplitRecording(source, {33, source.size() / 2 + 1});
    for (const char* segment : {"STREAM/00012.MTS", "STREAM/00013.MTS", "STREAM/00011.MTS"}) {
      Aurivox::Decoder part;
      ASSERT_EQ(part.Open(tree.Path(segment), nullptr), Aurivox::kResultSuccess) << segment;
      const auto split = aurivox_test::SamplesAsFloat(DecodeInterleaved(part), width, expected.sampleType == 0);
      ASSERT_EQ(split.size(), asFloat.size()) << segment;
      float worst = 0;
      for (std::size_t i = 0; i < split.size(); ++i) worst = std::max(worst, std::abs(split[i] - asFloat[i]));
      EXPECT_LE(worst, c.exact ? 0 : aurivox_test::kRepeatedLossyDecodeTolerance) << segment;
    }
  }
  if (c.exact) {
    // Lossless audio: the reference's samples, bit for bit, or exactly
    // scaled where the platform delivers them as float.
    const auto referenceWidth = static_cast<std::uint32_t>(reference.size() * width / decoded.size());
    EXPECT_TRUE(decoded == reference || asFloat == aurivox_test::SamplesAsFloat(reference, referenceWidth, false));
    return;
  }
  // The reported length is an estimate: Wine's AAC decoder leaves out the
  // last 1024-sample frame, which the decoder pads with zeros. The tail is
  // left out of the comparison.
  const auto comparison = aurivox_test::CompareAligned(
      std::vector<float>(asFloat.begin(), asFloat.end() - 2048 * c.channels),
      aurivox_test::SamplesAsFloat(reference, 4, true), c.channels, 4096, 4096);
  EXPECT_GT(comparison.overlapFrames, static_cast<std::size_t>(c.rate));
  // Lossy decoders differ in rounding, not in the sound.
  EXPECT_LT(comparison.rmsDifference, 1e-3) << "lag " << comparison.lag;
  EXPECT_LT(comparison.maxDifference, 1e-2) << "lag " << comparison.lag;
}

INSTANTIATE_TEST_SUITE_P(Formats, DecoderMediaTest, ::testing::ValuesIn(kCases));

TEST(DecoderRead, ASecondOpenKeepsTheFirstFileAndReadsAreSequentialThroughEveryCopy) {
  Aurivox::Decoder decoder;
  ASSERT_EQ(decoder.Open(MediaFixtureWPath("pcm_s16.wav"), nullptr), Aurivox::kResultSuccess);
  imFileInfoRec8 info{};
  EXPECT_EQ(decoder.Open(MediaFixtureWPath("surround51.m4a"), &info), Aurivox::kResultSuccess);
  EXPECT_EQ(+info.numChannels, 2u);
  // Copies share the platform object, so each read goes on where the last
  // one ended, whichever copy made it; the position in the request is not
  // used.
  Aurivox::Decoder copy(decoder);
  Aurivox::Decoder assigned;
  assigned = decoder;
  HostBuffers buffers(2, 1000);
  ASSERT_EQ(ReadBlock(copy, buffers, 1000, 5000), Aurivox::kResultSuccess);
  EXPECT_EQ(buffers.bytes(1, 0, 2000), Reference(1, 0, 1000));
  ASSERT_EQ(ReadBlock(assigned, buffers, 1000, 5000), Aurivox::kResultSuccess);
  EXPECT_EQ(buffers.bytes(0, 0, 2000), Reference(0, 1000, 1000));
  // Quiet closes the platform object for every copy; the next read of the
  // one that closed it reopens the first file from its start.
  EXPECT_EQ(decoder.Quiet(), Aurivox::kResultSuccess);
  EXPECT_EQ(ReadBlock(copy, buffers, 1000), Aurivox::kResultBadArgument);
  ASSERT_EQ(ReadBlock(decoder, buffers, 1000), Aurivox::kResultSuccess);
  EXPECT_EQ(buffers.bytes(0, 0, 2000), Reference(0, 0, 1000));

  HostBuffers skip(2, kFrames - 1400);
  ASSERT_EQ(ReadBlock(decoder, skip, kFrames - 1400), Aurivox::kResultSuccess);
  HostBuffers last(2, 1000);
  last.pointers[1] = nullptr;
  ASSERT_EQ(ReadBlock(decoder, last, 1000), Aurivox::kResultSuccess);
  // 400 16-bit samples, then the untouched rest of the first 400 slots,
  // then 600 zero floats from slot 400 on.
  EXPECT_EQ(last.bytes(0, 0, 800), Reference(0, kFrames - 400, 400));
  EXPECT_EQ(last.bytes(0, 800, 800), Bytes(800, 0xAB));
  EXPECT_EQ(last.bytes(0, 1600, 2400), Bytes(2400, 0));
  EXPECT_EQ(last.bytes(1, 0, 4000), Bytes(4000, 0xAB)) << "a null channel buffer is left alone";
  // Past the end every read succeeds with zeros.
  ASSERT_EQ(ReadBlock(decoder, last, 10), Aurivox::kResultSuccess);
  EXPECT_EQ(last.bytes(0, 0, 40), Bytes(40, 0));
}

// A failed open keeps the platform object, and the next recording opened
// replaces the stream of the failed one.
TEST(DecoderOpen, AMissingFirstSegmentFailsTheOpenOfARecording) {
  const aurivox_test::RecordingTree broken, good;
  broken.WriteSplitRecording(ReadMediaFixture("pcm_s16.wav"), {1000, 2000});
  good.WriteSplitRecording(ReadMediaFixture("pcm_s16.wav"), {1001});
  broken.Remove("STREAM/00011.MTS");
  Aurivox::Decoder decoder;
  EXPECT_EQ(decoder.Open(broken.Path("STREAM/00012.MTS"), nullptr), Aurivox::kResultOpenFailed);
  ASSERT_EQ(decoder.Open(good.Path("STREAM/00012.MTS"), nullptr), Aurivox::kResultSuccess);
  HostBuffers buffers(2, 100);
  ASSERT_EQ(ReadBlock(decoder, buffers, 100), Aurivox::kResultSuccess);
  EXPECT_EQ(buffers.bytes(1, 0, 200), Reference(1, 0, 100));
}

TEST(DecoderOpen, BadArgumentsFilesThatCannotBeOpenedAndFilesWithoutAudio) {
  Aurivox::Decoder decoder;
  HostBuffers buffers(2, 16);
  EXPECT_EQ(ReadBlock(decoder, buffers, 16), Aurivox::kResultReadFailed) << "a read before any open";
  EXPECT_EQ(decoder.ReadAudio(nullptr), Aurivox::kResultBadArgument);
  EXPECT_EQ(decoder.Open(u"", nullptr), Aurivox::kResultBadArgument);
  imFileOpenRec8 rec{};
  EXPECT_EQ(decoder.Open(&rec), Aurivox::kResultBadArgument);

  const orxcore::WString notMedia = MediaFixtureWPath("not_media.bin");
  rec.filePath = notMedia.c_str();
  EXPECT_EQ(decoder.Open(&rec), Aurivox::kResultOpenFailed);
  // A file without audio opens, and stays open: an audio file opened next
  // changes nothing.
  imFileInfoRec8 info{};
  EXPECT_EQ(decoder.Open(MediaFixtureWPath("video_only.mp4"), &info), Aurivox::kResultSuccess);
  EXPECT_EQ(+info.numChannels, 0u);
  imGetAudioChannelLayoutRec layout{};
  EXPECT_EQ(decoder.OnGetAudioChannelLayout(&layout), Aurivox::kResultNoChannelLayout);
  const orxcore::WString path = MediaFixtureWPath("pcm_s16.wav");
  rec.filePath = path.c_str();
  EXPECT_EQ(decoder.Open(&rec), Aurivox::kResultSuccess);
  EXPECT_EQ(decoder.GetDuration(), 0);
  // After Quiet it opens; a file without audio opened after Quiet leaves
  // its values.
  decoder.Quiet();
  EXPECT_EQ(decoder.Open(&rec), Aurivox::kResultSuccess);
  decoder.Quiet();
  EXPECT_EQ(decoder.Open(MediaFixtureWPath("video_only.mp4"), nullptr), Aurivox::kResultSuccess);
  EXPECT_EQ(decoder.GetDuration(), kFrames);
  EXPECT_EQ(decoder.GetCodecID(), kPcm);
}

// Broken input ends with a result code, never a crash, on either platform
// half: files cut short in the header, in the middle and by a few bytes.
TEST(DecoderOpen, TruncatedFilesOpenAndReadWithoutCrashing) {
  aurivox_test::TempDir dir;
  for (const char* name : {"stereo.m4a", "pcm_s16.wav", "stereo.mp3"}) {
    const Bytes whole = ReadMediaFixture(name);
    for (std::size_t keep : {std::size_t{100}, whole.size() / 2, whole.size() - 7}) {
      const std::string cut = std::to_string(keep) + "-" + name;
      dir.WriteFile(cut, Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(keep)));
      Aurivox::Decoder decoder;
      int result = decoder.Open(dir.WPath(cut), nullptr);
      EXPECT_TRUE(result == Aurivox::kResultSuccess || result == Aurivox::kResultOpenFailed) << cut;
      HostBuffers buffers(2, 4096);
      for (std::int64_t done = 0; result == Aurivox::kResultSuccess && done < decoder.GetDuration(); done += 4096) {
        result = ReadBlock(decoder, buffers, 4096);
        EXPECT_TRUE(result == Aurivox::kResultSuccess || result == Aurivox::kResultReadFailed) << cut;
      }
    }
  }
}

TEST(DecoderRecords, AnalysisTextIsTheDescriptionCutToTheBuffer) {
  Aurivox::Decoder decoder;
  ASSERT_EQ(decoder.Open(MediaFixtureWPath("float32.wav"), nullptr), Aurivox::kResultSuccess);
  const std::string description = orxcore::UTF16toStdString(decoder.GetCodecDescription());
  ASSERT_GT(description.size(), 5u);
  // Sizes below 2 write nothing, not even a NUL.
  const std::string untouched(63, '#');
  const std::pair<std::int32_t, std::string> kSizes[] = {
      {INT32_MIN, untouched}, {1, untouched},          {5, description.substr(0, 4)},
      {64, description},      {INT32_MAX, description},
  };
  for (const auto& [size, expected] : kSizes) {
    std::string text = untouched;
    imAnalysisRec rec{{}, size, text.data(), {}};
    EXPECT_EQ(decoder.OnAnalysis(&rec), Aurivox::kResultSuccess);
    EXPECT_EQ(text.c_str(), expected) << "size " << size;
  }
  EXPECT_EQ(decoder.OnAnalysis(nullptr), Aurivox::kResultNullRecord);
  EXPECT_EQ(decoder.OnGetAudioChannelLayout(nullptr), Aurivox::kResultNullRecord);
}

}  // namespace
