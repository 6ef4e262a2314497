#include "WaveFormat.h"
#include "WaveWriter.h"

#include <gtest/gtest.h>

#include <cstring>
#include <tuple>

#include "support/TempDir.h"

namespace audiofile {
namespace {

using Labels = std::vector<std::uint32_t>;

orxmediatypes::AudioFormat Format(const Labels& labels, std::uint32_t rate, std::int32_t type) {
  orxmediatypes::AudioChannelLayout layout(labels.begin(), labels.end());
  auto format = orxmediatypes::AudioFormat::CreateAudioFormat(layout, rate);
  format.SetSampleType(type);
  return format;
}

std::uint64_t LittleEndianAt(const std::vector<std::uint8_t>& b, std::size_t at, int size) {
  std::uint64_t value = 0;
  for (int i = size - 1; i >= 0; --i) value = (value << 8) | b[at + i];
  return value;
}

std::string TagAt(const std::vector<std::uint8_t>& b, std::size_t at) { return std::string(b.begin() + at, b.begin() + at + 4); }

TEST(ChannelMask, FollowsTheWaveSpeakerBitsAndRefusesAnythingOutOfTheirOrder) {
  const std::pair<Labels, std::uint32_t> kCases[] = {
      {{100, 101, 102, 103, 104, 105}, 0x3F}, {{107, 108, 106}, 0x1C0}, {{100, 101, 109, 110}, 0x603},
      {{112, 114, 113, 115, 117, 116}, 0x3F000}, {{101, 100}, 0}, {{100, 100}, 0}, {{100, 0}, 0}, {{99}, 0}};
  for (const auto& [labels, mask] : kCases) EXPECT_EQ(ChannelMaskFromLayout(Format(labels, 1, 0).GetChannelLayout()), mask);
}

TEST(WaveFormat, PlainFormsUpTo16BitStereoAndExtensibleBeyond) {
  // Labels, rate, sample type; then format tag, bits, block align, bytes a second, serialised size.
  const std::tuple<Labels, std::uint32_t, std::int32_t, int, int, int, std::uint32_t, std::size_t> kCases[] = {
      {{100, 101}, 44100, 20, kWaveFormatPcm, 16, 4, 176400, 16},
      {{102}, 8000, 10, kWaveFormatPcm, 8, 1, 8000, 16},
      {{100, 101}, 48000, 0, kWaveFormatIeeeFloat, 32, 8, 384000, 18},
      {{100, 101}, 96000, 30, kWaveFormatExtensible, 24, 6, 576000, 40},
      {{100, 101, 102, 103, 104, 105}, 48000, 0, kWaveFormatExtensible, 32, 24, 1152000, 40}};
  for (const auto& [labels, rate, type, tag, bits, blockAlign, bytesPerSecond, size] : kCases) {
    WaveFormat wave;
    ASSERT_TRUE(MakeWaveFormat(Format(labels, rate, type), wave)) << type;
    EXPECT_EQ(wave.formatTag, tag);
    EXPECT_EQ(wave.bitsPerSample, bits);
    EXPECT_EQ(wave.blockAlign, blockAlign);
    EXPECT_EQ(wave.averageBytesPerSecond, bytesPerSecond);
    const auto bytes = wave.Serialize();
    ASSERT_EQ(bytes.size(), size) << type;
    if (size > 16) EXPECT_EQ(LittleEndianAt(bytes, 16, 2), size - 18);  // cbSize
  }
  WaveFormat wave;
  ASSERT_TRUE(MakeWaveFormat(Format({100, 101, 102, 103, 104, 105}, 48000, 0), wave));
  const auto bytes = wave.Serialize();
  EXPECT_EQ(LittleEndianAt(bytes, 18, 2), 32u);
  EXPECT_EQ(LittleEndianAt(bytes, 20, 4), 0x3Fu);
  // KSDATAFORMAT_SUBTYPE_IEEE_FLOAT as it lies in a file.
  const std::uint8_t kFloat[16] = {3, 0, 0, 0, 0, 0, 0x10, 0, 0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71};
  EXPECT_EQ(std::memcmp(bytes.data() + 24, kFloat, 16), 0);

  // Unknown sample types, no channels, no rate, and more channels than 16 bits count.
  for (const auto& refused : {Format({100}, 48000, 50), Format({}, 48000, 20), Format({100}, 0, 20),
                              Format(Labels(0x10000, 100), 48000, 20)}) {
    EXPECT_FALSE(MakeWaveFormat(refused, wave));
  }
}

TEST(WaveHeader, RiffAndRf64HeadersHaveTheSameLength) {
  WaveFormat wave;
  ASSERT_TRUE(MakeWaveFormat(Format({100, 101}, 48000, 0), wave));
  const auto small = MakeWaveHeader(wave, 1000);
  EXPECT_EQ(TagAt(small, 0), "RIFF");
  EXPECT_EQ(LittleEndianAt(small, 4, 4), small.size() - 8 + 1000);
  EXPECT_EQ(TagAt(small, 12), "JUNK");
  EXPECT_EQ(TagAt(small, small.size() - 8), "data");
  EXPECT_EQ(LittleEndianAt(small, small.size() - 4, 4), 1000u);

  const std::uint64_t fiveGiB = 5ull << 30;
  const auto large = MakeWaveHeader(wave, fiveGiB);
  ASSERT_EQ(large.size(), small.size());
  EXPECT_EQ(TagAt(large, 0), "RF64");
  EXPECT_EQ(LittleEndianAt(large, 4, 4), 0xFFFFFFFFu);
  EXPECT_EQ(TagAt(large, 12), "ds64");
  EXPECT_EQ(LittleEndianAt(large, 16, 4), 28u);
  EXPECT_EQ(LittleEndianAt(large, 20, 8), large.size() - 8 + fiveGiB);
  EXPECT_EQ(LittleEndianAt(large, 28, 8), fiveGiB);
  EXPECT_EQ(LittleEndianAt(large, 36, 8), fiveGiB / 8);  // frames of stereo float
  EXPECT_EQ(LittleEndianAt(large, large.size() - 4, 4), 0xFFFFFFFFu);
  // The largest RIFF, and one odd byte more whose pad byte no longer fits.
  const std::uint64_t largestRiffData = 0xFFFFFFFFu - (small.size() - 8) - 1;
  EXPECT_EQ(TagAt(MakeWaveHeader(wave, largestRiffData), 0), "RIFF");
  EXPECT_EQ(TagAt(MakeWaveHeader(wave, largestRiffData + 1), 0), "RF64");
}

TEST(WaveWriter, PadsAnOddLengthAndRemovesAnyUnfinishedFile) {
  aurivox_test::TempDir dir;
  WaveFormat wave;
  ASSERT_TRUE(MakeWaveFormat(Format({100}, 8000, 10), wave));
  WaveWriter writer;
  EXPECT_FALSE(writer.Open(dir.WPath("missing/out.wav"), wave));
  ASSERT_TRUE(writer.Open(dir.WPath("odd.wav"), wave));
  ASSERT_TRUE(writer.Write("\x01\x02\x03", 3));
  ASSERT_TRUE(writer.Finalize());
  EXPECT_EQ(writer.dataBytes(), 3u);
  const auto file = aurivox_test::ReadFileBytes(dir.Path("odd.wav"));
  auto expected = MakeWaveHeader(wave, 3);
  expected.insert(expected.end(), {1, 2, 3, 0});  // the pad byte, counted in the RIFF size
  EXPECT_EQ(file, expected);

  {
    WaveWriter unfinished;
    ASSERT_TRUE(unfinished.Open(dir.WPath("partial.wav"), wave));
    ASSERT_TRUE(unfinished.Write("abcd", 4));
  }
  EXPECT_FALSE(std::filesystem::exists(dir.Path("partial.wav")));
  ASSERT_TRUE(writer.Open(dir.WPath("aborted.wav"), wave));
  writer.Abort();
  EXPECT_FALSE(std::filesystem::exists(dir.Path("aborted.wav")));
  EXPECT_FALSE(writer.Write("abcd", 4));
  EXPECT_TRUE(std::filesystem::exists(dir.Path("odd.wav")));
}

}  // namespace
}  // namespace audiofile
