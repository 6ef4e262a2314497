// The encoder as this build ships it: every encoding operation fails, the
// capability queries are empty, and nothing is left on disk.
#include "aurivox/Encoder.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/Environment.h"
#include "support/TempDir.h"

namespace Aurivox {
namespace {

TEST(Encoder, EncodingOperationsFail) {
  Encoder encoder;
  EXPECT_FALSE(encoder.Initialize(u"out.wav", 0, 48000, 2, 0, 0, 0, 0));
  const std::uint8_t bytes[4] = {1, 2, 3, 4};
  EXPECT_FALSE(encoder.WriteSampleBytes(bytes, 4));
  EXPECT_FALSE(encoder.FinishWrite());
}

TEST(Encoder, GetEncodedBufferBeforeInitializeFailsAndLeavesOutputAlone) {
  Encoder encoder;
  std::vector<std::uint8_t> out = {9, 9};
  const std::uint8_t bytes[4] = {1, 2, 3, 4};
  EXPECT_FALSE(encoder.GetEncodedBuffer(bytes, 4, out));
  EXPECT_EQ(out, (std::vector<std::uint8_t>{9, 9}));
}

TEST(Encoder, IntegerInitializeFailsWithoutMakingAFile) {
  aurivox_test::TempDir temp;
  aurivox_test::ScopedTemporaryFolder useTemp(temp.path().u8string());
  {
    Encoder encoder;
    EXPECT_FALSE(encoder.Initialize(0, 48000, 2, 16, 0, 0, 0));
    // Initialised now, so the read-back runs, and fails at the empty path.
    std::vector<std::uint8_t> out;
    const std::uint8_t bytes[4] = {1, 2, 3, 4};
    EXPECT_FALSE(encoder.GetEncodedBuffer(bytes, 4, out));
    EXPECT_TRUE(out.empty());
  }
  EXPECT_TRUE(std::filesystem::is_empty(temp.path()));
}

}  // namespace
}  // namespace Aurivox
