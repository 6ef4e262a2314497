// The encoder's shared logic behind a platform half that encodes (see
// FakeEncoderPlatform.cpp).
#include "aurivox/Encoder.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/Environment.h"
#include "support/TempDir.h"

namespace Aurivox {
namespace {

class EncoderLogic : public ::testing::Test {
 protected:
  std::vector<std::filesystem::path> Files() const {
    return {std::filesystem::directory_iterator(temp_.path()), std::filesystem::directory_iterator()};
  }

  aurivox_test::TempDir temp_;
  aurivox_test::ScopedTemporaryFolder useTemp_{temp_.path().u8string()};
  std::vector<std::uint8_t> out_;
  const std::uint8_t bytes_[3] = {1, 2, 3};
};

TEST_F(EncoderLogic, EachBufferReturnsWhatItsWriteAddedToAUniqueTemporaryFileDeletedAtTheEnd) {
  {
    Encoder encoder;
    ASSERT_TRUE(encoder.Initialize(1, 48000, 2, 16, 0, 0, 0));
    const auto files = Files();
    ASSERT_EQ(files.size(), 1u);
    EXPECT_EQ(files[0].extension(), ".abc");  // the first extension in byte order
    EXPECT_EQ(files[0].stem().string().size(), 36u);  // a GUID of its own
    ASSERT_TRUE(encoder.GetEncodedBuffer(bytes_, 3, out_));
    EXPECT_EQ(out_, (std::vector<std::uint8_t>{1, 1, 2, 2, 3, 3}));
    ASSERT_TRUE(encoder.GetEncodedBuffer(bytes_ + 2, 1, out_));
    EXPECT_EQ(out_, (std::vector<std::uint8_t>{3, 3}));
    ASSERT_TRUE(encoder.GetEncodedBuffer(bytes_, 0, out_));
    EXPECT_TRUE(out_.empty());
  }
  EXPECT_TRUE(Files().empty());
}

}  // namespace
}  // namespace Aurivox
