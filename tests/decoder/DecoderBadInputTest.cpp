// Broken and unsuitable input ends with a result code, never a crash.
#include <gtest/gtest.h>

#include <random>

#include "DecoderTestSupport.h"
#include "MediaFixtures.h"
#include "aurivox/Decoder.h"
#include "support/TempDir.h"

namespace {

using aurivox_test::MediaFixtureWPath;
using aurivox_test::ReadMediaFixture;

int OpenResult(const orxcore::WString& path) {
  Aurivox::Decoder decoder;
  return decoder.Open(path, nullptr);
}

TEST(DecoderBadInput, FilesThatCannotBeOpened) {
  aurivox_test::TempDir dir;
  dir.WriteFile("empty.wav", std::vector<std::uint8_t>{});
  dir.MakeDir("folder.mp4");
  std::vector<std::uint8_t> noise(64 * 1024);
  std::mt19937 random(7);
  for (auto& byte : noise) byte = static_cast<std::uint8_t>(random());
  dir.WriteFile("noise.m4a", noise);

  EXPECT_EQ(OpenResult(dir.WPath("missing.wav")), Aurivox::kResultOpenFailed);
  EXPECT_EQ(OpenResult(dir.WPath("empty.wav")), Aurivox::kResultOpenFailed);
  EXPECT_EQ(OpenResult(dir.WPath("folder.mp4")), Aurivox::kResultOpenFailed);
  EXPECT_EQ(OpenResult(dir.WPath("noise.m4a")), Aurivox::kResultOpenFailed);
  EXPECT_EQ(OpenResult(MediaFixtureWPath("not_media.bin")), Aurivox::kResultOpenFailed);
}

TEST(DecoderBadInput, TruncatedFilesOpenAndReadWithoutCrashing) {
  aurivox_test::TempDir dir;
  for (const char* name : {"stereo.m4a", "pcm_s16.wav", "stereo.mp3"}) {
    const auto whole = ReadMediaFixture(name);
    ASSERT_FALSE(whole.empty());
    for (std::size_t keep : {whole.size() / 2, whole.size() - 7, std::size_t{100}}) {
      const std::string truncated = std::to_string(keep) + "-" + name;
      dir.WriteFile(truncated, std::vector<std::uint8_t>(whole.begin(), whole.begin() + keep));
      Aurivox::Decoder decoder;
      const int result = decoder.Open(dir.WPath(truncated), nullptr);
      EXPECT_TRUE(result == Aurivox::kResultSuccess || result == Aurivox::kResultOpenFailed)
          << truncated << " gave " << result;
      if (result != Aurivox::kResultSuccess) continue;
      orxmediatypes::AudioFormat format;
      decoder.GetAudioFormat(format);
      int readResult = -1;
      aurivox_test::DecodeInterleaved(decoder, format.GetChannelCount(), aurivox_test::SampleWidth(decoder),
                                      4096, readResult);
      EXPECT_TRUE(readResult == Aurivox::kResultSuccess || readResult == Aurivox::kResultReadFailed)
          << truncated << " read gave " << readResult;
    }
  }
}

}  // namespace
