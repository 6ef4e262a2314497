// Broken and unsuitable input ends with a result code, never a crash.
#include <gtest/gtest.h>

#include <random>

#include "DecoderTestSupport.h"
#include "MediaFixtures.h"
#include "aurivox/Decoder.h"
#include "support/TempDir.h"

namespace {

TEST(DecoderBadInput, FilesThatCannotBeOpened) {
  aurivox_test::TempDir dir;
  dir.WriteFile("empty.wav", "");
  dir.MakeDir("folder.mp4");
  aurivox_test::Bytes noise(64 * 1024);
  std::mt19937 random(7);
  for (auto& byte : noise) byte = static_cast<std::uint8_t>(random());
  dir.WriteFile("noise.m4a", noise);
  for (const auto& path : {dir.WPath("missing.wav"), dir.WPath("empty.wav"), dir.WPath("folder.mp4"),
                           dir.WPath("noise.m4a"), aurivox_test::MediaFixtureWPath("not_media.bin")}) {
    Aurivox::Decoder decoder;
    EXPECT_EQ(decoder.Open(path, nullptr), Aurivox::kResultOpenFailed) << orxcore::UTF16toStdString(path);
  }
}

TEST(DecoderBadInput, TruncatedFilesOpenAndReadWithoutCrashing) {
  aurivox_test::TempDir dir;
  for (const char* name : {"stereo.m4a", "pcm_s16.wav", "stereo.mp3"}) {
    const auto whole = aurivox_test::ReadMediaFixture(name);
    ASSERT_FALSE(whole.empty());
    for (std::size_t keep : {whole.size() / 2, whole.size() - 7, std::size_t{100}}) {
      const std::string truncated = std::to_string(keep) + "-" + name;
      dir.WriteFile(truncated, aurivox_test::Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(keep)));
      Aurivox::Decoder decoder;
      const int result = decoder.Open(dir.WPath(truncated), nullptr);
      EXPECT_TRUE(result == Aurivox::kResultSuccess || result == Aurivox::kResultOpenFailed)
          << truncated << " gave " << result;
      if (result != Aurivox::kResultSuccess) continue;
      int readResult = -1;
      aurivox_test::DecodeInterleaved(decoder, readResult);
      EXPECT_TRUE(readResult == Aurivox::kResultSuccess || readResult == Aurivox::kResultReadFailed)
          << truncated << " read gave " << readResult;
    }
  }
}

}  // namespace
