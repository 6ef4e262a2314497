// The decoder's contract with its host, on real files: opening once, the
// sequential reads, the zero padding at the end, the records it fills and
// the platform object that copies share.
#include <gtest/gtest.h>

#include <cstring>

#include "DecoderTestSupport.h"
#include "MediaFixtures.h"
#include "PlaylistBuilder.h"
#include "aurivox/Decoder.h"

namespace {

using aurivox_test::HostBuffers;
using aurivox_test::kNewShot;
using aurivox_test::kSameShot;
using aurivox_test::MediaFixtureWPath;
using aurivox_test::PlaylistBuilder;
using aurivox_test::ReadBlock;
using aurivox_test::ReadMediaFixture;
using aurivox_test::RecordingTree;

constexpr std::uint32_t kFrames = 88200;  // the WAVE fixtures hold two seconds at 44.1 kHz

// Frames [first, first + count) of one channel of an interleaved reference.
std::vector<std::uint8_t> ReferenceChannel(const std::vector<std::uint8_t>& interleaved, std::uint32_t channels,
                                           std::uint32_t width, std::uint32_t channel, std::uint32_t first,
                                           std::uint32_t count) {
  std::vector<std::uint8_t> out;
  for (std::uint32_t f = first; f < first + count; ++f) {
    const std::size_t at = (std::size_t{f} * channels + channel) * width;
    out.insert(out.end(), interleaved.begin() + at, interleaved.begin() + at + width);
  }
  return out;
}

std::vector<std::uint8_t> Bytes(const std::uint8_t* data, std::size_t size) {
  return std::vector<std::uint8_t>(data, data + size);
}

TEST(DecoderOpen, ASecondOpenKeepsTheFirstFile) {
  Aurivox::Decoder decoder;
  ASSERT_EQ(decoder.Open(MediaFixtureWPath("pcm_s16.wav"), nullptr), Aurivox::kResultSuccess);
  imFileInfoRec8 info{};
  EXPECT_EQ(decoder.Open(MediaFixtureWPath("surround51.m4a"), &info), Aurivox::kResultSuccess);
  // Host records are packed; `+` hands gtest a copy rather than a misaligned reference.
  EXPECT_EQ(+info.numChannels, 2u);
  EXPECT_EQ(+info.sampleRate, 44100.0f);
  EXPECT_EQ(+info.sampleType, 3);
  // The read after Quiet reopens the path of the first open.
  decoder.Quiet();
  HostBuffers buffers(2, 100);
  ASSERT_EQ(ReadBlock(decoder, buffers, 100), Aurivox::kResultSuccess);
  EXPECT_EQ(Bytes(buffers.bytes(0), 200), ReferenceChannel(ReadMediaFixture("pcm_s16.wav.s16le"), 2, 2, 0, 0, 100));
}

// The two segments of one shot holding the halves of `bytes`, and their playlist.
orxcore::WString WriteRecording(const RecordingTree& tree, const std::vector<std::uint8_t>& bytes) {
  const auto half = bytes.begin() + bytes.size() / 2;
  tree.dir().WriteFile("BDMV/STREAM/00001.MTS", std::vector<std::uint8_t>(bytes.begin(), half));
  tree.dir().WriteFile("BDMV/STREAM/00002.MTS", std::vector<std::uint8_t>(half, bytes.end()));
  tree.WritePlaylist("00001.MPL", PlaylistBuilder().Item("00001", kNewShot).Item("00002", kSameShot));
  return tree.Path("STREAM/00002.MTS");
}

TEST(DecoderOpen, AfterAFailedOpenTheNextRecordingReplacesTheStream) {
  const RecordingTree broken, good;
  const auto reference = ReadMediaFixture("pcm_s16.wav.s16le");
  Aurivox::Decoder decoder;
  EXPECT_EQ(decoder.Open(WriteRecording(broken, ReadMediaFixture("not_media.bin")), nullptr),
            Aurivox::kResultOpenFailed);
  ASSERT_EQ(decoder.Open(WriteRecording(good, ReadMediaFixture("pcm_s16.wav")), nullptr), Aurivox::kResultSuccess);
  EXPECT_EQ(decoder.GetDuration(), kFrames);
  HostBuffers buffers(2, 100);
  ASSERT_EQ(ReadBlock(decoder, buffers, 100), Aurivox::kResultSuccess);
  EXPECT_EQ(Bytes(buffers.bytes(1), 200), ReferenceChannel(reference, 2, 2, 1, 0, 100));
}

TEST(DecoderOpen, BadArguments) {
  Aurivox::Decoder decoder;
  EXPECT_EQ(decoder.Open(u"", nullptr), Aurivox::kResultBadArgument);
  EXPECT_EQ(decoder.Open(static_cast<const imFileOpenRec8*>(nullptr)), Aurivox::kResultBadArgument);
  imFileOpenRec8 rec{};
  rec.filePath = nullptr;
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
  EXPECT_EQ(fresh.GetDuration(), 0);
  EXPECT_EQ(fresh.GetCodecID(), 0u);
  EXPECT_TRUE(fresh.GetCodecDescription().empty());
  imGetAudioChannelLayoutRec layout{};
  EXPECT_EQ(fresh.OnGetAudioChannelLayout(&layout), Aurivox::kResultNoChannelLayout);
  // Still open: a second open with an audio file changes nothing.
  EXPECT_EQ(fresh.Open(MediaFixtureWPath("pcm_s16.wav"), &info), Aurivox::kResultSuccess);
  EXPECT_EQ(+info.numChannels, 0u);
  EXPECT_EQ(fresh.GetDuration(), 0);

  Aurivox::Decoder reused;
  ASSERT_EQ(reused.Open(MediaFixtureWPath("pcm_s16.wav"), nullptr), Aurivox::kResultSuccess);
  const orxcore::WString description = reused.GetCodecDescription();
  reused.Quiet();
  EXPECT_EQ(reused.Open(MediaFixtureWPath("video_only.mp4"), nullptr), Aurivox::kResultSuccess);
  EXPECT_EQ(reused.GetDuration(), kFrames);
  EXPECT_EQ(reused.GetCodecID(), 0x70636D20u);
  EXPECT_EQ(reused.GetCodecDescription(), description);
}

TEST(DecoderRead, PositionIsIgnoredAndReadsAreSequential) {
  Aurivox::Decoder decoder;
  ASSERT_EQ(decoder.Open(MediaFixtureWPath("pcm_s16.wav"), nullptr), Aurivox::kResultSuccess);
  const auto reference = ReadMediaFixture("pcm_s16.wav.s16le");
  HostBuffers buffers(2, 1000);
  ASSERT_EQ(ReadBlock(decoder, buffers, 1000, 5000), Aurivox::kResultSuccess);
  EXPECT_EQ(Bytes(buffers.bytes(1), 2000), ReferenceChannel(reference, 2, 2, 1, 0, 1000));
  ASSERT_EQ(ReadBlock(decoder, buffers, 1000, 5000), Aurivox::kResultSuccess);
  EXPECT_EQ(Bytes(buffers.bytes(0), 2000), ReferenceChannel(reference, 2, 2, 0, 1000, 1000));
}

TEST(DecoderRead, AShortReadIsPaddedWithFloatSizedZeros) {
  Aurivox::Decoder decoder;
  ASSERT_EQ(decoder.Open(MediaFixtureWPath("pcm_s16.wav"), nullptr), Aurivox::kResultSuccess);
  HostBuffers skip(2, kFrames - 400);
  ASSERT_EQ(ReadBlock(decoder, skip, kFrames - 400), Aurivox::kResultSuccess);

  const auto reference = ReadMediaFixture("pcm_s16.wav.s16le");
  HostBuffers buffers(2, 1000, 0xAB);
  ASSERT_EQ(ReadBlock(decoder, buffers, 1000), Aurivox::kResultSuccess);
  for (std::uint32_t c = 0; c < 2; ++c) {
    // 400 16-bit samples, then the untouched rest of the first 400 slots,
    // then 600 zero floats from slot 400 on.
    EXPECT_EQ(Bytes(buffers.bytes(c), 800), ReferenceChannel(reference, 2, 2, c, kFrames - 400, 400));
    for (std::size_t i = 800; i < 1600; ++i) ASSERT_EQ(buffers.bytes(c)[i], 0xAB) << i;
    for (std::size_t i = 400; i < 1000; ++i) ASSERT_EQ(buffers.floats(c)[i], 0.0f) << i;
  }
  // Past the end every read succeeds with zeros.
  HostBuffers after(2, 10, 0xAB);
  ASSERT_EQ(ReadBlock(decoder, after, 10), Aurivox::kResultSuccess);
  EXPECT_EQ(after.floats(0)[9], 0.0f);
}

TEST(DecoderRead, ANullChannelBufferIsNeitherWrittenNorPadded) {
  Aurivox::Decoder decoder;
  ASSERT_EQ(decoder.Open(MediaFixtureWPath("float32.wav"), nullptr), Aurivox::kResultSuccess);
  HostBuffers skip(2, kFrames - 10);
  ASSERT_EQ(ReadBlock(decoder, skip, kFrames - 10), Aurivox::kResultSuccess);
  HostBuffers buffers(2, 100, 0xAB);
  const float* untouched = buffers.floats(1);
  buffers.DropChannel(1);
  ASSERT_EQ(ReadBlock(decoder, buffers, 100), Aurivox::kResultSuccess);
  for (int i = 0; i < 100; ++i) ASSERT_EQ(reinterpret_cast<const std::uint8_t*>(untouched)[i * 4], 0xAB);
  EXPECT_EQ(buffers.floats(0)[50], 0.0f);
}

TEST(DecoderRead, ReadBeforeAnyOpenReportsTheReadNotTheOpen) {
  Aurivox::Decoder decoder;
  HostBuffers buffers(2, 16);
  EXPECT_EQ(ReadBlock(decoder, buffers, 16), Aurivox::kResultReadFailed);
  EXPECT_EQ(decoder.ReadAudio(nullptr), Aurivox::kResultBadArgument);
}

TEST(DecoderRead, QuietThenReadReopensFromTheStart) {
  Aurivox::Decoder decoder;
  ASSERT_EQ(decoder.Open(MediaFixtureWPath("pcm_s16.wav"), nullptr), Aurivox::kResultSuccess);
  HostBuffers buffers(2, 500);
  ASSERT_EQ(ReadBlock(decoder, buffers, 500), Aurivox::kResultSuccess);
  EXPECT_EQ(decoder.Quiet(), Aurivox::kResultSuccess);
  ASSERT_EQ(ReadBlock(decoder, buffers, 500), Aurivox::kResultSuccess);
  const auto reference = ReadMediaFixture("pcm_s16.wav.s16le");
  EXPECT_EQ(Bytes(buffers.bytes(0), 1000), ReferenceChannel(reference, 2, 2, 0, 0, 500));
}

TEST(DecoderCopies, ShareThePlatformObject) {
  Aurivox::Decoder original;
  ASSERT_EQ(original.Open(MediaFixtureWPath("pcm_s16.wav"), nullptr), Aurivox::kResultSuccess);
  Aurivox::Decoder copy(original);
  EXPECT_EQ(copy.GetDuration(), kFrames);
  HostBuffers buffers(2, 100);
  // Both read from the one reader: the copy continues where the original stopped.
  ASSERT_EQ(ReadBlock(original, buffers, 100), Aurivox::kResultSuccess);
  ASSERT_EQ(ReadBlock(copy, buffers, 100), Aurivox::kResultSuccess);
  const auto reference = ReadMediaFixture("pcm_s16.wav.s16le");
  EXPECT_EQ(Bytes(buffers.bytes(0), 200), ReferenceChannel(reference, 2, 2, 0, 100, 100));

  // Closing one closes the platform object for both.
  copy.Quiet();
  EXPECT_EQ(ReadBlock(original, buffers, 100), Aurivox::kResultBadArgument);
  // Each can open again, with a platform object of its own.
  original.Quiet();
  EXPECT_EQ(original.Open(MediaFixtureWPath("float32.wav"), nullptr), Aurivox::kResultSuccess);
  EXPECT_EQ(copy.Open(MediaFixtureWPath("pcm_s16.wav"), nullptr), Aurivox::kResultSuccess);
  EXPECT_EQ(ReadBlock(original, buffers, 100), Aurivox::kResultSuccess);
  EXPECT_EQ(ReadBlock(copy, buffers, 100), Aurivox::kResultSuccess);
}

TEST(DecoderCopies, AssignmentSharesAndDestructionIsSafe) {
  Aurivox::Decoder kept;
  {
    Aurivox::Decoder source;
    ASSERT_EQ(source.Open(MediaFixtureWPath("pcm_s16.wav"), nullptr), Aurivox::kResultSuccess);
    kept = source;
  }  // the source's destructor closes the shared platform object
  EXPECT_EQ(kept.GetDuration(), kFrames);
  HostBuffers buffers(2, 10);
  EXPECT_EQ(ReadBlock(kept, buffers, 10), Aurivox::kResultBadArgument);
}

TEST(DecoderRecords, AnalysisTextIsTheDescriptionCutToTheBuffer) {
  Aurivox::Decoder decoder;
  ASSERT_EQ(decoder.Open(MediaFixtureWPath("float32.wav"), nullptr), Aurivox::kResultSuccess);
  const std::string description = orxcore::UTF16toStdString(decoder.GetCodecDescription());
  ASSERT_GT(description.size(), 5u);

  char text[64];
  imAnalysisRec rec{};
  rec.buffer = text;
  for (std::int32_t size : {INT32_MIN, -1, 0, 1}) {
    std::memset(text, '#', sizeof text);
    rec.bufferSize = size;
    EXPECT_EQ(decoder.OnAnalysis(&rec), Aurivox::kResultSuccess);
    EXPECT_EQ(text[0], '#') << "size " << size << " writes nothing, not even a NUL";
  }
  std::memset(text, '#', sizeof text);
  rec.bufferSize = 5;
  EXPECT_EQ(decoder.OnAnalysis(&rec), Aurivox::kResultSuccess);
  EXPECT_EQ(std::string(text), description.substr(0, 4));
  EXPECT_EQ(text[5], '#');
  for (std::int32_t size : {std::int32_t{sizeof text}, INT32_MAX}) {
    rec.bufferSize = size;  // a larger buffer than the text needs: the text and its NUL
    EXPECT_EQ(decoder.OnAnalysis(&rec), Aurivox::kResultSuccess);
    EXPECT_EQ(std::string(text), description);
  }
  EXPECT_EQ(decoder.OnAnalysis(nullptr), Aurivox::kResultNullRecord);
  EXPECT_EQ(decoder.OnGetAudioChannelLayout(nullptr), Aurivox::kResultNullRecord);
}

TEST(DecoderRecords, GetAudioFormatReplacesWhatWasThere) {
  Aurivox::Decoder decoder;
  ASSERT_EQ(decoder.Open(MediaFixtureWPath("surround51.m4a"), nullptr), Aurivox::kResultSuccess);
  orxmediatypes::AudioFormat format = orxmediatypes::AudioFormat::CreateAudioFormat(
      {orxmediatypes::AudioChannelDescription(100)}, 8000);
  format.SetSampleType(20);
  decoder.GetAudioFormat(format);
  EXPECT_EQ(format.GetChannelCount(), 6u);
  EXPECT_EQ(format.GetSampleRate(), 48000u);
  EXPECT_EQ(format.GetSampleType(), 0);
  EXPECT_EQ(orxmediatypes::AudioChannelLayoutDescription(format.GetChannelLayout()), "L, R, C, LFE, Ls, Rs");
}

}  // namespace
