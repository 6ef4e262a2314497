// The encoder's shared logic behind a platform half that encodes (see
// FakeEncoderPlatform.cpp).
#include "aurivox/Encoder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "support/Environment.h"
#include "support/TempDir.h"

namespace Aurivox {
namespace {

// Every test gets a temporary folder of its own.
class EncoderLogic : public ::testing::Test {
 protected:
  std::vector<std::filesystem::path> Files() const {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(temp_.path())) files.push_back(entry.path());
    return files;
  }

  aurivox_test::TempDir temp_;
  aurivox_test::ScopedTemporaryFolder useTemp_{temp_.path().u8string()};
};

TEST_F(EncoderLogic, TemporaryFileIsNamedAfterAUniqueGuidAndTheFirstExtension) {
  Encoder encoder;
  ASSERT_TRUE(encoder.Initialize(1, 48000, 2, 16, 0, 0, 0));
  const auto files = Files();
  ASSERT_EQ(files.size(), 1u);
  EXPECT_EQ(files[0].extension(), ".abc");  // the first extension in byte order
  const std::string stem = files[0].stem().string();
  ASSERT_EQ(stem.size(), 36u);  // XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX
  EXPECT_EQ(stem[8], '-');
  EXPECT_EQ(stem[14], '4');

  Encoder other;
  ASSERT_TRUE(other.Initialize(1, 48000, 2, 16, 0, 0, 0));
  EXPECT_EQ(Files().size(), 2u);  // a name of its own
}

TEST_F(EncoderLogic, EachBufferReturnsWhatItsWriteAdded) {
  Encoder encoder;
  ASSERT_TRUE(encoder.Initialize(1, 48000, 2, 16, 0, 0, 0));
  std::vector<std::uint8_t> out;
  const std::uint8_t first[3] = {1, 2, 3};
  ASSERT_TRUE(encoder.GetEncodedBuffer(first, 3, out));
  EXPECT_EQ(out, (std::vector<std::uint8_t>{1, 1, 2, 2, 3, 3}));
  const std::uint8_t second[2] = {7, 8};
  ASSERT_TRUE(encoder.GetEncodedBuffer(second, 2, out));
  EXPECT_EQ(out, (std::vector<std::uint8_t>{7, 7, 8, 8}));
  ASSERT_TRUE(encoder.GetEncodedBuffer(second, 0, out));
  EXPECT_TRUE(out.empty());
}

TEST_F(EncoderLogic, DestructionDeletesTheTemporaryFile) {
  {
    Encoder encoder;
    ASSERT_TRUE(encoder.Initialize(1, 48000, 2, 16, 0, 0, 0));
    std::vector<std::uint8_t> out;
    const std::uint8_t bytes[1] = {5};
    ASSERT_TRUE(encoder.GetEncodedBuffer(bytes, 1, out));
  }
  EXPECT_TRUE(Files().empty());
}

TEST_F(EncoderLogic, AFormatWithoutExtensionsMakesNoPath) {
  Encoder encoder;
  EXPECT_FALSE(encoder.Initialize(2, 48000, 2, 16, 0, 0, 0));
  std::vector<std::uint8_t> out;
  const std::uint8_t bytes[1] = {5};
  EXPECT_FALSE(encoder.GetEncodedBuffer(bytes, 1, out));  // the empty path cannot be opened
}

}  // namespace
}  // namespace Aurivox
