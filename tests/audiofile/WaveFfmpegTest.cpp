// Files written here must open in FFmpeg and give back the same samples.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <tuple>

#include "WaveWriter.h"
#include "support/TempDir.h"

namespace audiofile {
namespace {

// The standard output of `command`, or its exit status when it fails.
std::string Shell(const std::string& command, const aurivox_test::TempDir& dir) {
  const int status = std::system((command + " > '" + dir.Path("out.txt").string() + "' 2>/dev/null").c_str());
  if (status != 0) return "exit " + std::to_string(status);
  std::ifstream in(dir.Path("out.txt"));
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

WaveFormat Wave(std::uint32_t channels, std::uint32_t rate, std::int32_t sampleType) {
  orxmediatypes::AudioChannelLayout layout;
  for (std::uint32_t i = 0; i < channels; ++i) layout.emplace_back(100 + i);
  auto format = orxmediatypes::AudioFormat::CreateAudioFormat(layout, rate);
  format.SetSampleType(sampleType);
  WaveFormat wave;
  EXPECT_TRUE(MakeWaveFormat(format, wave));
  return wave;
}

TEST(WaveFile, FfmpegDecodesTheSamplesWrittenAndReadsAnRf64LengthFromDs64) {
  // Sample type, channels, FFmpeg's name for the same sample layout.
  const std::tuple<std::int32_t, std::uint32_t, std::string> kFormats[] = {
      {10, 1, "u8"}, {20, 2, "s16le"}, {30, 2, "s24le"}, {40, 6, "s32le"}, {0, 2, "f32le"}, {0, 6, "f32le"}};
  aurivox_test::TempDir dir;
  const std::string wav = "'" + dir.Path("t.wav").string() + "'", raw = dir.Path("t.raw").string();
  for (const auto& [sampleType, channels, rawFormat] : kFormats) {
    const WaveFormat wave = Wave(channels, 22050, sampleType);
    std::vector<std::uint8_t> samples(wave.blockAlign * 1001);
    for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<std::uint8_t>(i * 7 + 3);
    // Keeps the floats finite and small.
    for (std::size_t i = 3; sampleType == 0 && i < samples.size(); i += 4) samples[i] = 0x3E;
    WaveWriter writer;
    ASSERT_TRUE(writer.Open(dir.WPath("t.wav"), wave));
    ASSERT_TRUE(writer.Write(samples.data(), samples.size()) && writer.Finalize());
    ASSERT_EQ(Shell("ffmpeg -y -v error -i " + wav + " -f " + rawFormat + " -c:a pcm_" + rawFormat + " '" + raw + "'", dir), "");
    EXPECT_EQ(aurivox_test::ReadFileBytes(raw), samples) << rawFormat << channels;
    EXPECT_EQ(Shell("sox --i -s " + wav, dir), "1001\n");
  }

  // 5 GiB of silence, sparse on disk: 5 * 2^30 / 8 bytes a frame / 48000 Hz.
  const std::uint64_t dataBytes = 5ull << 30;
  const auto header = MakeWaveHeader(Wave(2, 48000, 0), dataBytes);
  std::filesystem::resize_file(dir.WriteFile("t.wav", header), header.size() + dataBytes);
  EXPECT_EQ(Shell("ffprobe -v error -show_entries format=format_name:stream=duration_ts -of csv=p=0 " + wav, dir),
            std::to_string(dataBytes / 8) + "\nwav\n");
}

}  // namespace
}  // namespace audiofile
