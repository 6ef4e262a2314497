// Files written here must open in FFmpeg and give back the same samples.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "WaveWriter.h"
#include "support/TempDir.h"

namespace audiofile {
namespace {

std::string Shell(const std::string& command) {
  aurivox_test::TempDir dir;
  const auto out = dir.Path("out.txt");
  const int status = std::system((command + " > '" + out.string() + "' 2>/dev/null").c_str());
  if (status != 0) return "exit " + std::to_string(status);
  std::ifstream in(out);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

struct Case {
  std::int32_t sampleType;
  int channels;
  const char* rawFormat;  // FFmpeg's name for the same sample layout
};

class WaveRoundTrip : public ::testing::TestWithParam<Case> {};

TEST_P(WaveRoundTrip, FfmpegDecodesTheSamplesWritten) {
  const Case c = GetParam();
  orxmediatypes::AudioChannelLayout layout;
  for (int i = 0; i < c.channels; ++i) layout.emplace_back(100 + i);
  auto format = orxmediatypes::AudioFormat::CreateAudioFormat(layout, 22050);
  format.SetSampleType(c.sampleType);
  WaveFormat wave;
  ASSERT_TRUE(MakeWaveFormat(format, wave));

  std::vector<std::uint8_t> samples(wave.blockAlign * 1001);
  for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<std::uint8_t>(i * 7 + 3);
  if (c.sampleType == 0) {  // keep the floats finite and small
    for (std::size_t i = 3; i < samples.size(); i += 4) samples[i] = 0x3E;
  }

  aurivox_test::TempDir dir;
  WaveWriter writer;
  ASSERT_TRUE(writer.Open(dir.WPath("t.wav"), wave));
  ASSERT_TRUE(writer.Write(samples.data(), samples.size()));
  ASSERT_TRUE(writer.Finalize());

  const auto raw = dir.Path("t.raw");
  ASSERT_EQ(Shell("ffmpeg -v error -i '" + dir.Path("t.wav").string() + "' -f " + c.rawFormat +
                " -c:a pcm_" + c.rawFormat + " '" + raw.string() + "'"),
            "");
  EXPECT_EQ(aurivox_test::ReadFileBytes(raw), samples);
  EXPECT_EQ(Shell("sox --i -s '" + dir.Path("t.wav").string() + "'"), "1001\n");
}

INSTANTIATE_TEST_SUITE_P(Formats, WaveRoundTrip,
                         ::testing::Values(Case{10, 1, "u8"}, Case{20, 2, "s16le"}, Case{30, 2, "s24le"},
                                           Case{40, 6, "s32le"}, Case{0, 2, "f32le"}, Case{0, 6, "f32le"}),
                         [](const auto& info) {
                           return std::string(info.param.rawFormat) + "_" +
                                  std::to_string(info.param.channels) + "ch";
                         });

TEST(WaveRf64, FfmpegReadsTheLengthFromDs64) {
  orxmediatypes::AudioChannelLayout layout{orxmediatypes::AudioChannelDescription(100),
                                           orxmediatypes::AudioChannelDescription(101)};
  auto format = orxmediatypes::AudioFormat::CreateAudioFormat(layout, 48000);
  WaveFormat wave;
  ASSERT_TRUE(MakeWaveFormat(format, wave));
  // 5 GiB of silence, sparse on disk: 5 * 2^30 / 8 bytes a frame / 48000 Hz.
  const std::uint64_t dataBytes = 5ull << 30;
  aurivox_test::TempDir dir;
  const auto header = MakeWaveHeader(wave, dataBytes);
  const auto path = dir.WriteFile("big.wav", header);
  std::filesystem::resize_file(path, header.size() + dataBytes);
  EXPECT_EQ(Shell("ffprobe -v error -show_entries format=format_name:stream=duration_ts -of csv=p=0 '" +
                path.string() + "'"),
            std::to_string(dataBytes / 8) + "\nwav\n");
}

}  // namespace
}  // namespace audiofile
