// The encoder's shared logic behind a platform half that encodes (see
// FakeEncoderPlatform.cpp).
#include "aurivox/Encoder.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/Environment.h"
#include "support/TempDir.h"

namespace Aurivox {
namespace {

TEST(EncoderLogic, EachBufferReturnsWhatItsWriteAddedToAUniqueTemporaryFileDeletedAtTheEnd) {
  aurivox_test::TempDir temp;
  aurivox_test::ScopedTemporaryFolder useTemp{temp.path().u8string()};
  const std::uint8_t bytes[3] = {1, 2, 3};
  std::vector<std::uint8_t> out;
  {
    Encoder encoder;
    ASSERT_TRUE(encoder.Initialize(1, 48000, 2, 16, 0, 0, 0));
    const std::vector<std::filesystem::path> files{std::filesystem::directory_iterator(temp.path()), {}};
    ASSERT_EQ(files.size(), 1u);
    EXPECT_EQ(files[0].extension(), ".abc");  // the first extension in byte order
    EXPECT_EQ(files[0].stem().string().size(), 36u);  // a GUID of its own
    ASSERT_TRUE(encoder.GetEncodedBuffer(bytes, 3, out));
    EXPECT_EQ(out, (std::vector<std::uint8_t>{1, 1, 2, 2, 3, 3}));
    ASSERT_TRUE(encoder.GetEncodedBuffer(bytes + 2, 1, out));
    EXPECT_EQ(out, (std::vector<std::uint8_t>{3, 3}));
  }
  EXPECT_TRUE(std::filesystem::is_empty(temp.path()));
}

}  // namespace
}  // namespace Aurivox
