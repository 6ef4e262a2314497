#include "WaveFormat.h"
#include "WaveWriter.h"

#include <gtest/gtest.h>

#include <cstring>

#include "support/TempDir.h"

namespace audiofile {
namespace {

using orxmediatypes::AudioChannelLayout;
using orxmediatypes::AudioFormat;

AudioChannelLayout Layout(std::initializer_list<std::uint32_t> labels) {
  AudioChannelLayout layout;
  for (auto label : labels) layout.emplace_back(label);
  return layout;
}

AudioFormat Format(std::initializer_list<std::uint32_t> labels, std::uint32_t rate, std::int32_t type) {
  AudioFormat format = AudioFormat::CreateAudioFormat(Layout(labels), rate);
  format.SetSampleType(type);
  return format;
}

std::uint32_t U32At(const std::vector<std::uint8_t>& b, std::size_t at) {
  return b[at] | (b[at + 1] << 8) | (b[at + 2] << 16) | (std::uint32_t(b[at + 3]) << 24);
}

std::uint64_t U64At(const std::vector<std::uint8_t>& b, std::size_t at) {
  return U32At(b, at) | (std::uint64_t(U32At(b, at + 4)) << 32);
}

std::string TagAt(const std::vector<std::uint8_t>& b, std::size_t at) {
  return std::string(b.begin() + at, b.begin() + at + 4);
}

TEST(ChannelMask, FollowsTheWaveSpeakerBits) {
  EXPECT_EQ(ChannelMaskFromLayout(Layout({100, 101, 102, 103, 104, 105})), 0x3Fu);
  EXPECT_EQ(ChannelMaskFromLayout(Layout({107, 108, 106})), 0x1C0u);
  EXPECT_EQ(ChannelMaskFromLayout(Layout({100, 101, 109, 110})), 0x603u);
  EXPECT_EQ(ChannelMaskFromLayout(Layout({112, 114, 113, 115, 117, 116})), 0x3F000u);
}

TEST(WaveFormat, PlainFormsForMonoAndStereoUpTo16Bits) {
  WaveFormat wave;
  ASSERT_TRUE(MakeWaveFormat(Format({100, 101}, 44100, 20), wave));
  EXPECT_EQ(wave.formatTag, kWaveFormatPcm);
  EXPECT_EQ(wave.blockAlign, 4);
  EXPECT_EQ(wave.averageBytesPerSecond, 176400u);
  EXPECT_EQ(wave.Serialize().size(), 16u);

  ASSERT_TRUE(MakeWaveFormat(Format({100, 101}, 48000, 0), wave));
  EXPECT_EQ(wave.formatTag, kWaveFormatIeeeFloat);
  EXPECT_EQ(wave.bitsPerSample, 32);
  const auto bytes = wave.Serialize();
  ASSERT_EQ(bytes.size(), 18u);
  EXPECT_EQ(bytes[16] | (bytes[17] << 8), 0);  // cbSize

  ASSERT_TRUE(MakeWaveFormat(Format({102}, 8000, 10), wave));
  EXPECT_EQ(wave.formatTag, kWaveFormatPcm);
  EXPECT_EQ(wave.bitsPerSample, 8);
}

TEST(WaveFormat, ExtensibleFormForWideSamplesAndManyChannels) {
  WaveFormat wave;
  ASSERT_TRUE(MakeWaveFormat(Format({100, 101}, 96000, 30), wave));
  EXPECT_TRUE(wave.IsExtensible());
  EXPECT_EQ(wave.bitsPerSample, 24);
  EXPECT_EQ(wave.blockAlign, 6);
  EXPECT_EQ(wave.channelMask, 0x3u);
  EXPECT_EQ(wave.subFormat.data1, kWaveFormatPcm);

  ASSERT_TRUE(MakeWaveFormat(Format({100, 101, 102, 103, 104, 105}, 48000, 0), wave));
  EXPECT_TRUE(wave.IsExtensible());
  EXPECT_EQ(wave.channelMask, 0x3Fu);
  EXPECT_EQ(wave.subFormat.data1, kWaveFormatIeeeFloat);
  const auto bytes = wave.Serialize();
  ASSERT_EQ(bytes.size(), 40u);
  EXPECT_EQ(bytes[16] | (bytes[17] << 8), 22);
  EXPECT_EQ(U32At(bytes, 20), 0x3Fu);
  // KSDATAFORMAT_SUBTYPE_IEEE_FLOAT as it lies in a file.
  const std::uint8_t kFloat[16] = {3, 0, 0, 0, 0, 0, 0x10, 0, 0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71};
  EXPECT_EQ(std::memcmp(bytes.data() + 24, kFloat, 16), 0);
}

TEST(WaveFormat, RefusesFormatsWaveCannotHold) {
  WaveFormat wave;
  EXPECT_FALSE(MakeWaveFormat(Format({100, 101}, 48000, 50), wave));
  EXPECT_FALSE(MakeWaveFormat(Format({}, 48000, 20), wave));
  EXPECT_FALSE(MakeWaveFormat(Format({100}, 0, 20), wave));
  // The header counts channels in 16 bits.
  AudioFormat tooMany = AudioFormat::CreateAudioFormat(AudioChannelLayout(0x10000, orxmediatypes::AudioChannelDescription(100)), 48000);
  tooMany.SetSampleType(20);
  EXPECT_FALSE(MakeWaveFormat(tooMany, wave));
}

TEST(WaveHeader, RiffAndRf64HeadersHaveTheSameLength) {
  WaveFormat wave;
  ASSERT_TRUE(MakeWaveFormat(Format({100, 101}, 48000, 0), wave));
  const auto small = MakeWaveHeader(wave, 1000);
  const std::uint64_t fiveGiB = 5ull << 30;
  const auto large = MakeWaveHeader(wave, fiveGiB);
  ASSERT_EQ(small.size(), large.size());

  EXPECT_EQ(TagAt(small, 0), "RIFF");
  EXPECT_EQ(U32At(small, 4), small.size() - 8 + 1000);
  EXPECT_EQ(TagAt(small, 12), "JUNK");
  EXPECT_EQ(TagAt(small, small.size() - 8), "data");
  EXPECT_EQ(U32At(small, small.size() - 4), 1000u);

  EXPECT_EQ(TagAt(large, 0), "RF64");
  EXPECT_EQ(U32At(large, 4), 0xFFFFFFFFu);
  EXPECT_EQ(TagAt(large, 12), "ds64");
  EXPECT_EQ(U64At(large, 20), large.size() - 8 + fiveGiB);
  EXPECT_EQ(U64At(large, 28), fiveGiB);
  EXPECT_EQ(U64At(large, 36), fiveGiB / 8);  // frames of stereo float
  EXPECT_EQ(U32At(large, large.size() - 4), 0xFFFFFFFFu);
}

TEST(WaveWriter, WritesDataAndPadsAnOddLength) {
  aurivox_test::TempDir dir;
  WaveFormat wave;
  ASSERT_TRUE(MakeWaveFormat(Format({100}, 8000, 10), wave));
  WaveWriter writer;
  ASSERT_TRUE(writer.Open(dir.WPath("odd.wav"), wave));
  const std::uint8_t samples[3] = {1, 2, 3};
  ASSERT_TRUE(writer.Write(samples, 3));
  ASSERT_TRUE(writer.Finalize());
  EXPECT_EQ(writer.dataBytes(), 3u);

  const auto file = aurivox_test::ReadFileBytes(dir.Path("odd.wav"));
  const auto header = MakeWaveHeader(wave, 3);
  ASSERT_EQ(file.size(), header.size() + 4);
  EXPECT_TRUE(std::equal(header.begin(), header.end(), file.begin()));
  EXPECT_EQ(file[header.size() + 2], 3);
  EXPECT_EQ(file.back(), 0);  // pad byte, counted in the RIFF size
  EXPECT_EQ(U32At(file, 4), file.size() - 8);
}

TEST(WaveWriter, AnUnfinishedFileIsRemoved) {
  aurivox_test::TempDir dir;
  WaveFormat wave;
  ASSERT_TRUE(MakeWaveFormat(Format({100, 101}, 8000, 20), wave));
  {
    WaveWriter writer;
    ASSERT_TRUE(writer.Open(dir.WPath("partial.wav"), wave));
    ASSERT_TRUE(writer.Write("abcd", 4));
  }
  EXPECT_FALSE(std::filesystem::exists(dir.Path("partial.wav")));

  WaveWriter writer;
  ASSERT_TRUE(writer.Open(dir.WPath("aborted.wav"), wave));
  writer.Abort();
  EXPECT_FALSE(std::filesystem::exists(dir.Path("aborted.wav")));
  EXPECT_FALSE(writer.Write("abcd", 4));
}

TEST(WaveWriter, OpenFailsInAMissingFolder) {
  aurivox_test::TempDir dir;
  WaveFormat wave;
  ASSERT_TRUE(MakeWaveFormat(Format({100, 101}, 8000, 20), wave));
  WaveWriter writer;
  EXPECT_FALSE(writer.Open(dir.WPath("missing/out.wav"), wave));
}

}  // namespace
}  // namespace audiofile
