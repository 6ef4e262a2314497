#include "SpannedFile.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "OpenFiles.h"
#include "SegmentFiles.h"
#include "ZUM/File.h"

namespace Aurivox {
namespace {

using aurivox_test::IsOpenInThisProcess;
using aurivox_test::SegmentFiles;
using aurivox_test::Slice;
using Bytes = std::vector<std::uint8_t>;

Bytes ReadBytes(SpannedFile& file, std::uint32_t handle, std::int32_t count) {
  Bytes out(static_cast<std::size_t>(count));
  const std::int32_t n = file.Read(handle, out.data(), count);
  out.resize(static_cast<std::size_t>(std::max(n, 0)));
  return out;
}

Bytes ReadAll(SpannedFile& file, std::uint32_t handle, std::int32_t chunk) {
  Bytes out;
  for (;;) {
    const Bytes piece = ReadBytes(file, handle, chunk);
    if (piece.empty()) return out;
    out.insert(out.end(), piece.begin(), piece.end());
  }
}

std::size_t OpenCount(const SegmentFiles& segments) {
  std::size_t open = 0;
  for (const auto& file : segments.files) open += IsOpenInThisProcess(file) ? 1 : 0;
  return open;
}

class JoinedReads : public ::testing::TestWithParam<std::vector<std::size_t>> {
 protected:
  aurivox_test::TempDir dir_;
};

TEST_P(JoinedReads, EqualThePlainConcatenation) {
  const SegmentFiles segments(dir_, GetParam());
  SpannedFile file(segments.paths);
  ASSERT_EQ(file.GetSize(), static_cast<std::int64_t>(segments.joined.size()));
  const std::uint32_t handle = file.Open();
  ASSERT_EQ(handle, 1u);

  const std::int32_t total = static_cast<std::int32_t>(segments.joined.size());
  for (std::int32_t chunk : {1, 2, 3, 7, 64, 4096, total + 10}) {
    file.Seek(handle, 0);
    EXPECT_EQ(ReadAll(file, handle, chunk), segments.joined) << "chunk " << chunk;
  }

  std::mt19937 random(7);
  for (int i = 0; i < 300; ++i) {
    const std::int64_t position = random() % (total + 4);
    const std::int32_t count = static_cast<std::int32_t>(random() % 300);
    file.Seek(handle, position);
    EXPECT_EQ(ReadBytes(file, handle, count), Slice(segments.joined, position, count))
        << position << " + " << count;
  }
  file.Close(handle);
}

INSTANTIATE_TEST_SUITE_P(SegmentSizes, JoinedReads,
                         ::testing::Values(std::vector<std::size_t>{1}, std::vector<std::size_t>{0, 1},
                                           std::vector<std::size_t>{10, 0, 5}, std::vector<std::size_t>{1, 1, 1},
                                           std::vector<std::size_t>{3, 0, 0, 7919, 1, 0},
                                           std::vector<std::size_t>{4097, 8191, 1, 2}));

TEST(SpannedFile, EmptyListIsAnEmptyStream) {
  SpannedFile file({});
  EXPECT_EQ(file.GetSize(), 0);
  const std::uint32_t handle = file.Open();
  EXPECT_EQ(handle, 1u);
  std::uint8_t byte = 0;
  EXPECT_EQ(file.Read(handle, &byte, 1), 0);
  file.Close(handle);
}

TEST(SpannedFile, EmptySegmentDropsOutAndIsNeverOpened) {
  aurivox_test::TempDir dir;
  const SegmentFiles segments(dir, {10, 0, 5});
  SpannedFile file(segments.paths);
  EXPECT_EQ(file.GetSize(), 15);
  const std::uint32_t handle = file.Open();
  EXPECT_TRUE(IsOpenInThisProcess(segments.files[0]));
  EXPECT_FALSE(IsOpenInThisProcess(segments.files[1]));
  EXPECT_TRUE(IsOpenInThisProcess(segments.files[2]));
  file.Seek(handle, 10);
  EXPECT_EQ(ReadBytes(file, handle, 5), Slice(segments.joined, 10, 5));
}

// Two segments of 10 bytes each, not yet opened.
class TwoSegments : public ::testing::Test {
 protected:
  TwoSegments() : segments_(dir_, {10, 10}), file_(segments_.paths) {}

  aurivox_test::TempDir dir_;
  SegmentFiles segments_;
  SpannedFile file_;
};

TEST_F(TwoSegments, ReadCrossesIntoTheNextSegment) {
  const std::uint32_t handle = file_.Open();
  file_.Seek(handle, 6);
  EXPECT_EQ(ReadBytes(file_, handle, 8), Slice(segments_.joined, 6, 8));
  // The position moved on to 14.
  EXPECT_EQ(ReadBytes(file_, handle, 1), Slice(segments_.joined, 14, 1));
}

TEST_F(TwoSegments, ReadsAtOrPastTheEndDeliverNothing) {
  const std::uint32_t handle = file_.Open();
  file_.Seek(handle, 20);
  EXPECT_TRUE(ReadBytes(file_, handle, 8).empty());
  file_.Seek(handle, 19);
  EXPECT_EQ(ReadBytes(file_, handle, 8), Slice(segments_.joined, 19, 1));
  EXPECT_TRUE(ReadBytes(file_, handle, 8).empty());
  EXPECT_TRUE(ReadBytes(file_, handle, 0).empty());
  // A read into no buffer delivers nothing and leaves the position alone.
  file_.Seek(handle, 3);
  EXPECT_EQ(file_.Read(handle, nullptr, 8), 0);
  EXPECT_EQ(ReadBytes(file_, handle, 1), Slice(segments_.joined, 3, 1));
}

TEST_F(TwoSegments, FilesOpenWithTheFirstHandleAndCloseWithTheLast) {
  EXPECT_EQ(OpenCount(segments_), 0u);
  EXPECT_EQ(file_.Open(), 1u);
  EXPECT_EQ(OpenCount(segments_), 2u);

  // The files are not opened again for a second handle: on POSIX they can
  // be removed and are still read; Windows refuses to remove an open file.
  std::error_code ignored;
  for (const auto& segment : segments_.files) std::filesystem::remove(segment, ignored);
  EXPECT_EQ(file_.Open(), 2u);
  EXPECT_EQ(ReadAll(file_, 2, 7), segments_.joined);

  file_.Close(1);
  EXPECT_EQ(ReadBytes(file_, 2, 20), Bytes{}) << "handle 2 keeps its position";
  file_.Seek(2, 0);
  EXPECT_EQ(ReadBytes(file_, 2, 20), segments_.joined);
  file_.Close(2);
  EXPECT_EQ(ReadBytes(file_, 2, 20), Bytes{});
}

TEST_F(TwoSegments, LastCloseClosesEveryFileAndHandlesAreNotReused) {
  EXPECT_EQ(file_.Open(), 1u);
  EXPECT_EQ(file_.Open(), 2u);
  file_.Close(1);
  EXPECT_EQ(OpenCount(segments_), 2u);
  file_.Close(2);
  EXPECT_EQ(OpenCount(segments_), 0u);
  const std::uint32_t third = file_.Open();
  EXPECT_EQ(third, 3u);
  EXPECT_EQ(OpenCount(segments_), 2u);
  EXPECT_EQ(ReadAll(file_, third, 3), segments_.joined);
}

TEST_F(TwoSegments, UnknownHandlesAreIgnored) {
  const std::uint32_t handle = file_.Open();
  for (std::uint32_t unknown : {0u, 2u, 99u, SpannedFile::kInvalidHandle}) {
    std::uint8_t byte = 0;
    EXPECT_EQ(file_.Read(unknown, &byte, 1), 0) << unknown;
    file_.Seek(unknown, 7);
    file_.Close(unknown);
  }
  EXPECT_EQ(OpenCount(segments_), 2u);
  EXPECT_EQ(ReadBytes(file_, handle, 4), Slice(segments_.joined, 0, 4));
}

TEST(SpannedFile, SegmentThatCannotBeOpenedFailsTheOpen) {
  aurivox_test::TempDir dir;
  const SegmentFiles segments(dir, {10, 10, 10});
  std::vector<orxcore::WString> paths = segments.paths;
  paths.insert(paths.begin() + 1, dir.WPath("missing.mts"));
  {
    SpannedFile withMissing(paths);
    EXPECT_EQ(withMissing.GetSize(), 30) << "a file without a size counts 0 bytes";
    EXPECT_EQ(withMissing.Open(), 1u) << "and drops out";
  }

  SpannedFile file(segments.paths);
  std::filesystem::remove(segments.files[2]);
  EXPECT_EQ(file.GetSize(), 30);
  EXPECT_EQ(file.Open(), SpannedFile::kInvalidHandle);
  EXPECT_FALSE(IsOpenInThisProcess(segments.files[0])) << "nothing stays open";
  EXPECT_EQ(file.Read(SpannedFile::kInvalidHandle, nullptr, 0), 0);
}

TEST(SpannedFile, DestructionClosesFilesOfOpenHandles) {
  aurivox_test::TempDir dir;
  const SegmentFiles segments(dir, {10, 10});
  {
    SpannedFile file(segments.paths);
    file.Open();
    EXPECT_EQ(OpenCount(segments), 2u);
  }
  EXPECT_EQ(OpenCount(segments), 0u);
}

// A segment of more than 4 GiB, sparse so that it costs no disk space, with
// known bytes around the 4 GiB mark and at its end.
class BeyondFourGiB : public ::testing::Test {
 protected:
  static constexpr std::uint64_t kFourGiB = std::uint64_t{1} << 32;
  static constexpr std::uint64_t kLargeSize = kFourGiB + 16;

  void SetUp() override {
    large_ = dir_.Path("large.mts");
    dir_.WriteFile("large.mts", "");
    std::filesystem::resize_file(large_, kLargeSize);
    ZUM::File writer;
    ASSERT_EQ(writer.Create(aurivox_test::ToWString(large_), ZUM::kAccessWrite, ZUM::kShareRead,
                            ZUM::kOpenExisting, ZUM::kAttributeNormal, 0),
              ZUM::kSuccess);
    for (std::size_t i = 0; i < marker_.size(); ++i) marker_[i] = static_cast<std::uint8_t>(0xA0 + i);
    ASSERT_EQ(writer.SetFilePointer(static_cast<std::int64_t>(kFourGiB - 16), ZUM::kFromBeginning),
              ZUM::kSuccess);
    std::uint32_t written = 0;
    ASSERT_EQ(writer.Write(marker_.data(), 32, written), ZUM::kSuccess);
    writer.Close();
    dir_.WriteFile("small.mts", "0123456789");
    paths_ = {aurivox_test::ToWString(large_), dir_.WPath("small.mts")};
  }

  aurivox_test::TempDir dir_;
  std::filesystem::path large_;
  Bytes marker_ = Bytes(32);
  std::vector<orxcore::WString> paths_;
};

TEST_F(BeyondFourGiB, ReadsNearAndAcrossTheBoundaries) {
  SpannedFile file(paths_);
  ASSERT_EQ(file.GetSize(), static_cast<std::int64_t>(kLargeSize + 10));
  const std::uint32_t handle = file.Open();

  file.Seek(handle, static_cast<std::int64_t>(kFourGiB - 16));
  EXPECT_EQ(ReadBytes(file, handle, 32), marker_);

  // From the large segment's last 5 bytes into the small one.
  file.Seek(handle, static_cast<std::int64_t>(kLargeSize - 5));
  Bytes expected(marker_.end() - 5, marker_.end());
  expected.insert(expected.end(), {'0', '1', '2', '3', '4'});
  EXPECT_EQ(ReadBytes(file, handle, 10), expected);
  EXPECT_EQ(ReadBytes(file, handle, 10), (Bytes{'5', '6', '7', '8', '9'}));
  EXPECT_TRUE(ReadBytes(file, handle, 10).empty());

  // The sparse middle reads as zeros, well past 2 GiB.
  file.Seek(handle, static_cast<std::int64_t>(kFourGiB / 2 + 12345));
  EXPECT_EQ(ReadBytes(file, handle, 64), Bytes(64, 0));
}

}  // namespace
}  // namespace Aurivox
