// The encoder as this build ships it: every encoding operation fails, the
// capability queries are empty, and nothing is left on disk.
#include "aurivox/Encoder.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/Environment.h"
#include "support/TempDir.h"

TEST(Encoder, EncodingOperationsFailWithoutMakingAFile) {
  aurivox_test::TempDir temp;
  aurivox_test::ScopedTemporaryFolder useTemp(temp.path().u8string());
  Aurivox::Encoder encoder;
  EXPECT_FALSE(encoder.Initialize(0, 48000, 2, 16, 0, 0, 0));
  EXPECT_FALSE(encoder.Initialize(u"out.wav", 0, 48000, 2, 0, 0, 0, 0));
  EXPECT_FALSE(encoder.WriteSampleBytes(reinterpret_cast<const std::uint8_t*>("abcd"), 4));
  EXPECT_FALSE(encoder.FinishWrite());
  EXPECT_TRUE(encoder.GetSupportedExtensions(0).empty());
  EXPECT_TRUE(std::filesystem::is_empty(temp.path()));
}
