#include "SpannedFileStreamWrapper.h"

#include <gtest/gtest.h>

#include <memory>

#include "OpenFiles.h"
#include "SegmentFiles.h"

namespace Aurivox {
namespace {

using aurivox_test::IsOpenInThisProcess;
using aurivox_test::SegmentFiles;
using aurivox_test::Slice;
using windowsmediafoundation::StreamInterface;
using Bytes = std::vector<std::uint8_t>;

Bytes ReadBytes(StreamInterface& stream, std::uint32_t count) {
  Bytes out(count);
  const std::int64_t n = stream.Read(out.data(), count);
  out.resize(static_cast<std::size_t>(std::max<std::int64_t>(n, 0)));
  return out;
}

class StreamWrapper : public ::testing::Test {
 protected:
  StreamWrapper() : segments_(dir_, {10, 0, 5}) {
    auto wrapper = std::make_shared<SpannedFileStreamWrapper>(segments_.paths);
    handle_ = wrapper->Open();
    stream_ = wrapper;
  }

  aurivox_test::TempDir dir_;
  SegmentFiles segments_;
  std::uint32_t handle_ = 0;
  std::shared_ptr<StreamInterface> stream_;
};

TEST_F(StreamWrapper, ReadsTheJoinedSegmentsAndCountsThePosition) {
  EXPECT_EQ(handle_, 1u);
  EXPECT_EQ(stream_->GetLength(), 15u);
  EXPECT_EQ(ReadBytes(*stream_, 4), Slice(segments_.joined, 0, 4));
  EXPECT_EQ(stream_->GetPosition(), 4u);
  EXPECT_EQ(ReadBytes(*stream_, 100), Slice(segments_.joined, 4, 11));
  EXPECT_EQ(stream_->GetPosition(), 15u);
  EXPECT_TRUE(stream_->IsEndOfStream());
  EXPECT_EQ(stream_->Read(nullptr, 0), 0);
  EXPECT_EQ(stream_->GetPosition(), 15u) << "moves only by what was delivered";
}

TEST_F(StreamWrapper, EndOfStreamAtAndBeyondTheLength) {
  stream_->SetPosition(14);
  EXPECT_FALSE(stream_->IsEndOfStream());
  stream_->SetPosition(15);
  EXPECT_TRUE(stream_->IsEndOfStream());
  for (std::uint64_t past : {std::uint64_t{16}, std::uint64_t{1} << 40, ~std::uint64_t{0}}) {
    stream_->SetPosition(past);
    EXPECT_EQ(stream_->GetPosition(), past);
    EXPECT_TRUE(stream_->IsEndOfStream());
    EXPECT_TRUE(ReadBytes(*stream_, 4).empty());
    EXPECT_EQ(stream_->GetPosition(), past);
  }
}

TEST_F(StreamWrapper, CloseLeavesTheLengthAndStopsTheReads) {
  stream_->Close();
  EXPECT_FALSE(IsOpenInThisProcess(segments_.files[0]));
  EXPECT_EQ(stream_->GetLength(), 15u);
  EXPECT_TRUE(ReadBytes(*stream_, 4).empty());
  stream_->SetPosition(3);
  EXPECT_EQ(stream_->GetPosition(), 3u);
  stream_->Close();
  EXPECT_EQ(stream_->GetLength(), 15u);
}

TEST_F(StreamWrapper, OpenTwiceKeepsTheHandle) {
  auto& wrapper = static_cast<SpannedFileStreamWrapper&>(*stream_);
  EXPECT_EQ(wrapper.Open(), handle_);
  stream_->Close();
  EXPECT_EQ(wrapper.Open(), 2u) << "a new handle after Close";
  EXPECT_EQ(ReadBytes(*stream_, 15), segments_.joined);
}

TEST(SpannedFileStreamWrapper, SegmentThatCannotBeOpened) {
  aurivox_test::TempDir dir;
  const SegmentFiles segments(dir, {10, 5});
  SpannedFileStreamWrapper stream(segments.paths);
  std::filesystem::remove(segments.files[1]);
  EXPECT_EQ(stream.Open(), SpannedFile::kInvalidHandle);
  EXPECT_EQ(stream.GetLength(), 15u);
  EXPECT_TRUE(ReadBytes(stream, 4).empty());
  EXPECT_FALSE(stream.IsEndOfStream());
  stream.SetPosition(15);
  EXPECT_TRUE(stream.IsEndOfStream());
  EXPECT_FALSE(IsOpenInThisProcess(segments.files[0]));
}

TEST(SpannedFileStreamWrapper, WithoutOpenNothingIsRead) {
  aurivox_test::TempDir dir;
  const SegmentFiles segments(dir, {10});
  SpannedFileStreamWrapper stream(segments.paths);
  EXPECT_EQ(stream.GetLength(), 10u);
  EXPECT_TRUE(ReadBytes(stream, 4).empty());
  EXPECT_FALSE(IsOpenInThisProcess(segments.files[0]));
}

}  // namespace
}  // namespace Aurivox
