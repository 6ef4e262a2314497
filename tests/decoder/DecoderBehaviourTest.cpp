// The decoder's contract with its host, on real files: opening once, the
// sequential reads, the zero padding at the end, the records it fills and
// the platform object that copies share.
#include <gtest/gtest.h>

#include <cstring>

#include "DecoderTestSupport.h"
#include "MediaFixtures.h"
#include "aurivox/Decoder.h"

namespace {

using aurivox_test::ChannelOf;
using aurivox_test::HostBuffers;
using aurivox_test::MediaFixtureWPath;
using aurivox_test::ReadBlock;
using aurivox_test::ReadMediaFixture;

constexpr std::uint32_t kFrames = 88200;  // the WAVE fixtures hold two seconds at 44.1 kHz
constexpr std::uint32_t kPcmCodec = 0x70636D20;

// Frames of one channel of the 16-bit stereo fixture, as FFmpeg decodes it.
aurivox_test::Bytes Reference(std::uint32_t channel, std::uint32_t first, std::uint32_t count) {
  static const auto reference = ReadMediaFixture("pcm_s16.wav.s16le");
  return ChannelOf(reference, 2, 2, channel, first, count);
}

TEST(DecoderOpen, ASecondOpenKeepsTheFirstFileAndReadsAreSequential) {
  Aurivox::Decoder decoder;
  ASSERT_EQ(decoder.Open(MediaFixtureWPath("pcm_s16.wav"), nullptr), Aurivox::kResultSuccess);
  imFileInfoRec8 info{};
  EXPECT_EQ(decoder.Open(MediaFixtureWPath("surround51.m4a"), &info), Aurivox::kResultSuccess);
  // Host records are packed; `+` hands gtest a copy rather than a misaligned reference.
  EXPECT_EQ(+info.numChannels, 2u);
  EXPECT_EQ(+info.sampleType, 3);

  // The position in the request is not used.
  HostBuffers buffers(2, 1000);
  ASSERT_EQ(ReadBlock(decoder, buffers, 1000, 5000), Aurivox::kResultSuccess);
  EXPECT_EQ(buffers.bytes(1, 2000), Reference(1, 0, 1000));
  ASSERT_EQ(ReadBlock(decoder, buffers, 1000, 5000), Aurivox::kResultSuccess);
  EXPECT_EQ(buffers.bytes(0, 2000), Reference(0, 1000, 1000));
  // The read after Quiet reopens the first file from its start.
  EXPECT_EQ(decoder.Quiet(), Aurivox::kResultSuccess);
  ASSERT_EQ(ReadBlock(decoder, buffers, 1000), Aurivox::kResultSuccess);
  EXPECT_EQ(buffers.bytes(0, 2000), Reference(0, 0, 1000));
}

TEST(DecoderOpen, AfterAFailedOpenTheNextRecordingReplacesTheStream) {
  const aurivox_test::RecordingTree broken, good;
  const auto junk = ReadMediaFixture("not_media.bin");
  aurivox_test::WriteSplitRecording(broken, junk, {junk.size() / 2});
  aurivox_test::WriteSplitRecording(good, ReadMediaFixture("pcm_s16.wav"), {1001});
  Aurivox::Decoder decoder;
  EXPECT_EQ(decoder.Open(broken.Path("STREAM/00012.MTS"), nullptr), Aurivox::kResultOpenFailed);
  ASSERT_EQ(decoder.Open(good.Path("STREAM/00012.MTS"), nullptr), Aurivox::kResultSuccess);
  EXPECT_EQ(decoder.GetDuration(), kFrames);
  HostBuffers buffers(2, 100);
  ASSERT_EQ(ReadBlock(decoder, buffers, 100), Aurivox::kResultSuccess);
  EXPECT_EQ(buffers.bytes(1, 200), Reference(1, 0, 100));
}

TEST(DecoderOpen, BadArguments) {
  Aurivox::Decoder decoder;
  HostBuffers buffers(2, 16);
  EXPECT_EQ(ReadBlock(decoder, buffers, 16), Aurivox::kResultReadFailed) << "a read before any open";
  EXPECT_EQ(decoder.ReadAudio(nullptr), Aurivox::kResultBadArgument);
  EXPECT_EQ(decoder.Open(u"", nullptr), Aurivox::kResultBadArgument);
  EXPECT_EQ(decoder.Open(static_cast<const imFileOpenRec8*>(nullptr)), Aurivox::kResultBadArgument);
  imFileOpenRec8 rec{};
  EXPECT_EQ(decoder.Open(&rec), Aurivox::kResultBadArgument);
  const orxcore::WString path = MediaFixtureWPath("pcm_s16.wav");
  rec.filePath = path.c_str();
  EXPECT_EQ(decoder.Open(&rec), Aurivox::kResultSuccess);
  EXPECT_EQ(decoder.GetDuration(), kFrames);
}

TEST(DecoderOpen, AFileWithoutAudioOpensAndKeepsEarlierValues) {
  Aurivox::Decoder fresh;
  imFileInfoRec8 info{};
  EXPECT_EQ(fresh.Open(MediaFixtureWPath("video_only.mp4"), &info), Aurivox::kResultSuccess);
  EXPECT_EQ(info.hasAudio, 1);
  EXPECT_EQ(+info.numChannels, 0u);
  EXPECT_EQ(fresh.GetCodecID(), 0u);
  imGetAudioChannelLayoutRec layout{};
  EXPECT_EQ(fresh.OnGetAudioChannelLayout(&layout), Aurivox::kResultNoChannelLayout);
  // Still open: a second open with an audio file changes nothing.
  EXPECT_EQ(fresh.Open(MediaFixtureWPath("pcm_s16.wav"), &info), Aurivox::kResultSuccess);
  EXPECT_EQ(fresh.GetDuration(), 0);

  Aurivox::Decoder reused;
  ASSERT_EQ(reused.Open(MediaFixtureWPath("pcm_s16.wav"), nullptr), Aurivox::kResultSuccess);
  reused.Quiet();
  EXPECT_EQ(reused.Open(MediaFixtureWPath("video_only.mp4"), nullptr), Aurivox::kResultSuccess);
  EXPECT_EQ(reused.GetDuration(), kFrames);
  EXPECT_EQ(reused.GetCodecID(), kPcmCodec);
}

TEST(DecoderRead, AShortReadIsPaddedWithFloatSizedZerosExceptInNullBuffers) {
  Aurivox::Decoder decoder;
  ASSERT_EQ(decoder.Open(MediaFixtureWPath("pcm_s16.wav"), nullptr), Aurivox::kResultSuccess);
  HostBuffers skip(2, kFrames - 400);
  ASSERT_EQ(ReadBlock(decoder, skip, kFrames - 400), Aurivox::kResultSuccess);

  HostBuffers buffers(2, 1000);
  buffers.DropChannel(1);
  ASSERT_EQ(ReadBlock(decoder, buffers, 1000), Aurivox::kResultSuccess);
  // 400 16-bit samples, then the untouched rest of the first 400 slots,
  // then 600 zero floats from slot 400 on.
  const auto written = buffers.bytes(0, 4000);
  EXPECT_EQ(aurivox_test::Bytes(written.begin(), written.begin() + 800), Reference(0, kFrames - 400, 400));
  EXPECT_EQ(aurivox_test::Bytes(written.begin() + 800, written.begin() + 1600), aurivox_test::Bytes(800, 0xAB));
  EXPECT_EQ(aurivox_test::Bytes(written.begin() + 1600, written.end()), aurivox_test::Bytes(2400, 0));
  EXPECT_EQ(buffers.bytes(1, 4000), aurivox_test::Bytes(4000, 0xAB)) << "a null channel buffer is left alone";
  // Past the end every read succeeds with zeros.
  HostBuffers after(2, 10);
  ASSERT_EQ(ReadBlock(decoder, after, 10), Aurivox::kResultSuccess);
  EXPECT_EQ(after.bytes(1, 40), aurivox_test::Bytes(40, 0));
}

TEST(DecoderCopies, ShareThePlatformObject) {
  Aurivox::Decoder original;
  ASSERT_EQ(original.Open(MediaFixtureWPath("pcm_s16.wav"), nullptr), Aurivox::kResultSuccess);
  Aurivox::Decoder copy(original);
  Aurivox::Decoder assigned;
  assigned = original;
  EXPECT_EQ(assigned.GetDuration(), kFrames);
  HostBuffers buffers(2, 100);
  // All read from the one reader: each continues where the other stopped.
  ASSERT_EQ(ReadBlock(original, buffers, 100), Aurivox::kResultSuccess);
  ASSERT_EQ(ReadBlock(copy, buffers, 100), Aurivox::kResultSuccess);
  ASSERT_EQ(ReadBlock(assigned, buffers, 100), Aurivox::kResultSuccess);
  EXPECT_EQ(buffers.bytes(0, 200), Reference(0, 200, 100));

  // Closing one closes the platform object for all.
  copy.Quiet();
  EXPECT_EQ(ReadBlock(original, buffers, 100), Aurivox::kResultBadArgument);
  EXPECT_EQ(assigned.GetDuration(), kFrames);
  // Each can open again, with a platform object of its own.
  original.Quiet();
  EXPECT_EQ(original.Open(MediaFixtureWPath("float32.wav"), nullptr), Aurivox::kResultSuccess);
  EXPECT_EQ(copy.Open(MediaFixtureWPath("pcm_s16.wav"), nullptr), Aurivox::kResultSuccess);
  EXPECT_EQ(ReadBlock(original, buffers, 100), Aurivox::kResultSuccess);
  EXPECT_EQ(ReadBlock(copy, buffers, 100), Aurivox::kResultSuccess);
}

TEST(DecoderRecords, AnalysisTextIsTheDescriptionCutToTheBuffer) {
  Aurivox::Decoder decoder;
  ASSERT_EQ(decoder.Open(MediaFixtureWPath("float32.wav"), nullptr), Aurivox::kResultSuccess);
  const std::string description = orxcore::UTF16toStdString(decoder.GetCodecDescription());
  ASSERT_GT(description.size(), 5u);
  // Sizes below 2 write nothing, not even a NUL.
  const std::string untouched(63, '#');
  const std::pair<std::int32_t, std::string> kCases[] = {
      {INT32_MIN, untouched}, {-1, untouched}, {0, untouched}, {1, untouched},
      {5, description.substr(0, 4)}, {64, description}, {INT32_MAX, description},
  };
  for (const auto& [size, expected] : kCases) {
    char text[64];
    std::memset(text, '#', sizeof text - 1);
    text[63] = '\0';
    imAnalysisRec rec{};
    rec.buffer = text;
    rec.bufferSize = size;
    EXPECT_EQ(decoder.OnAnalysis(&rec), Aurivox::kResultSuccess);
    EXPECT_EQ(std::string(text), expected) << "size " << size;
  }
  EXPECT_EQ(decoder.OnAnalysis(nullptr), Aurivox::kResultNullRecord);
  EXPECT_EQ(decoder.OnGetAudioChannelLayout(nullptr), Aurivox::kResultNullRecord);
}

}  // namespace
