#include "WaveFormat.h"
#include "WaveWriter.h"

#include <gtest/gtest.h>

#include <tuple>

#include "support/TempDir.h"

namespace audiofile {
namespace {

using Labels = std::vector<std::uint32_t>;

orxmediatypes::AudioFormat Format(const Labels& labels, std::uint32_t rate, std::int32_t type) {
  auto format = orxmediatypes::AudioFormat::CreateAudioFormat({labels.begin(), labels.end()}, rate);
  format.SetSampleType(type);
  return format;
}

std::uint64_t LittleEndianAt(const std::vector<std::uint8_t>& b, std::size_t at, int size) {
  std::uint64_t value = 0;
  for (int i = size - 1; i >= 0; --i) value = (value << 8) | b[at + i];
  return value;
}

std::string TagAt(const std::vector<std::uint8_t>& b, std::size_t at) { return {b.begin() + at, b.begin() + at + 4}; }

// Plain forms up to 16-bit stereo, extensible beyond; the channel mask follows
// the WAVE speaker bits and holds nothing out of their order.
TEST(WaveFormat, ChannelMaskPlainAndExtensibleFormsAndRefusals) {
  const std::pair<Labels, std::uint32_t> kCases[] = {
      {{100, 101, 102, 103, 104, 105}, 0x3F}, {{107, 108, 106}, 0x1C0}, {{100, 101, 109, 110}, 0x603},
      {{112, 114, 113, 115, 117, 116}, 0x3F000}, {{101, 100}, 0}, {{100, 100}, 0}, {{100, 0}, 0}, {{99}, 0}};
  for (const auto& [labels, mask] : kCases) EXPECT_EQ(ChannelMaskFromLayout({labels.begin(), labels.end()}), mask);
  // Labels, rate, sample type; format tag, bytes a second and the serialised size.
  const std::tuple<Labels, std::uint32_t, std::int32_t, std::uint16_t, std::uint32_t, std::size_t> kForms[] = {
      {{100, 101}, 8000, 20, 1, 32000, 16}, {{100}, 8000, 0, 3, 32000, 18}, {{100, 101}, 8000, 30, 0xFFFE, 48000, 40}};
  WaveFormat wave;
  std::vector<std::uint8_t> bytes;
  for (const auto& [labels, rate, type, tag, bytesPerSecond, size] : kForms) {
    ASSERT_TRUE(MakeWaveFormat(Format(labels, rate, type), wave)) << type;
    bytes = wave.Serialize();
    ASSERT_EQ(bytes.size(), size) << type;
    EXPECT_EQ(LittleEndianAt(bytes, 0, 2), tag);
    EXPECT_EQ(LittleEndianAt(bytes, 8, 4), bytesPerSecond);
    if (size > 16) {
      EXPECT_EQ(LittleEndianAt(bytes, 16, 2), size - 18);  // cbSize
    }
  }
  // The last is extensible: valid bits and the channel mask follow cbSize.
  EXPECT_EQ(LittleEndianAt(bytes, 18, 2), 24u);
  EXPECT_EQ(LittleEndianAt(bytes, 20, 4), 0x3u);
  // Unknown sample types, no channels, no rate, and more channels than 16 bits count.
  for (const auto& refused : {Format({100}, 48000, 50), Format({}, 48000, 20), Format({100}, 0, 20),
                              Format(Labels(0x10000, 100), 48000, 20)}) {
    EXPECT_FALSE(MakeWaveFormat(refused, wave));
  }
}

TEST(WaveFormat, RiffAndRf64HeadersHaveTheSameLength) {
  WaveFormat wave;
  ASSERT_TRUE(MakeWaveFormat(Format({100, 101}, 48000, 0), wave));
  const auto small = MakeWaveHeader(wave, 1000);
  EXPECT_EQ(TagAt(small, 0) + TagAt(small, 12) + TagAt(small, small.size() - 8), "RIFFJUNKdata");
  EXPECT_EQ(LittleEndianAt(small, 4, 4), small.size() - 8 + 1000);

  const std::uint64_t fiveGiB = 5ull << 30;
  const auto large = MakeWaveHeader(wave, fiveGiB);
  ASSERT_EQ(large.size(), small.size());
  EXPECT_EQ(TagAt(large, 0) + TagAt(large, 12), "RF64ds64");
  EXPECT_EQ(LittleEndianAt(large, 4, 4), 0xFFFFFFFFu);
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
  ASSERT_TRUE(writer.Open(dir.WPath("odd.wav"), wave));
  ASSERT_TRUE(writer.Write("\x01\x02\x03", 3));
  ASSERT_TRUE(writer.Finalize());
  auto expected = MakeWaveHeader(wave, 3);
  expected.insert(expected.end(), {1, 2, 3, 0});  // the pad byte, counted in the RIFF size
  EXPECT_EQ(aurivox_test::ReadFileBytes(dir.Path("odd.wav")), expected);
  {
    WaveWriter unfinished;
    ASSERT_TRUE(unfinished.Open(dir.WPath("partial.wav"), wave));
    ASSERT_TRUE(unfinished.Write("abcd", 4));
  }
  EXPECT_FALSE(std::filesystem::exists(dir.Path("partial.wav")));
  EXPECT_FALSE(writer.Write("abcd", 4));  // finished
}

}  // namespace
}  // namespace audiofile
