#include "SpannedFile.h"

#include <gtest/gtest.h>

#include <random>

#include "OpenFiles.h"
#include "SpannedFileStreamWrapper.h"
#include "ZUM/File.h"
#include "support/TempDir.h"

namespace Aurivox {
namespace {

using aurivox_test::IsOpenInThisProcess;
using Bytes = std::vector<std::uint8_t>;

// Segment files seg0.mts, seg1.mts, ... of the given sizes holding
// consecutive pieces of `joined`.
struct Segments {
  Segments(const aurivox_test::TempDir& dir, const std::vector<std::size_t>& sizes) {
    std::mt19937 random(7);
    for (std::size_t i = 0; i < sizes.size(); ++i) {
      Bytes bytes(sizes[i]);
      for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random());
      files.push_back(dir.WriteFile("seg" + std::to_string(i) + ".mts", bytes));
      paths.push_back(aurivox_test::ToWString(files.back()));
      joined.insert(joined.end(), bytes.begin(), bytes.end());
    }
  }
  // `count` bytes of `joined` from `offset`, fewer where it ends.
  Bytes Slice(std::int64_t offset, std::int64_t count) const {
    const auto size = static_cast<std::int64_t>(joined.size());
    const auto begin = joined.begin() + std::min(offset, size);
    return Bytes(begin, joined.begin() + std::min(offset + count, size));
  }
  std::size_t OpenCount() const {
    return static_cast<std::size_t>(std::count_if(files.begin(), files.end(), IsOpenInThisProcess));
  }

  std::vector<std::filesystem::path> files;
  std::vector<orxcore::WString> paths;
  Bytes joined;
};

Bytes ReadBytes(SpannedFile& file, std::uint32_t handle, std::int32_t count) {
  Bytes out(static_cast<std::size_t>(count));
  out.resize(static_cast<std::size_t>(file.Read(handle, out.data(), count)));
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

class JoinedReads : public ::testing::TestWithParam<std::vector<std::size_t>> {};

TEST_P(JoinedReads, EqualThePlainConcatenation) {
  aurivox_test::TempDir dir;
  const Segments segments(dir, GetParam());
  SpannedFile file(segments.paths);
  ASSERT_EQ(file.GetSize(), static_cast<std::int64_t>(segments.joined.size()));
  const std::uint32_t handle = file.Open();
  ASSERT_EQ(handle, 1u);

  const auto total = static_cast<std::int32_t>(segments.joined.size());
  for (std::int32_t chunk : {1, 2, 3, 7, 64, 4096, total + 10}) {
    file.Seek(handle, 0);
    EXPECT_EQ(ReadAll(file, handle, chunk), segments.joined) << "chunk " << chunk;
  }
  std::mt19937 random(7);
  for (int i = 0; i < 300; ++i) {
    const std::int64_t position = random() % (total + 4);
    const auto count = static_cast<std::int32_t>(random() % 300);
    file.Seek(handle, position);
    EXPECT_EQ(ReadBytes(file, handle, count), segments.Slice(position, count)) << position << " + " << count;
  }
  EXPECT_EQ(file.Read(handle, nullptr, 8), 0);
}

INSTANTIATE_TEST_SUITE_P(SegmentSizes, JoinedReads,
                         ::testing::Values(std::vector<std::size_t>{}, std::vector<std::size_t>{0, 1},
                                           std::vector<std::size_t>{10, 0, 5}, std::vector<std::size_t>{1, 1, 1},
                                           std::vector<std::size_t>{3, 0, 0, 7919, 1, 0},
                                           std::vector<std::size_t>{4097, 8191, 1, 2}));

TEST(SpannedFile, FilesOpenWithTheFirstHandleAndCloseWithTheLast) {
  aurivox_test::TempDir dir;
  const Segments segments(dir, {10, 0, 10});
  {
    SpannedFile file(segments.paths);
    EXPECT_EQ(segments.OpenCount(), 0u);
    EXPECT_EQ(file.Open(), 1u);
    EXPECT_FALSE(IsOpenInThisProcess(segments.files[1])) << "an empty segment drops out";
    EXPECT_EQ(segments.OpenCount(), 2u);
    EXPECT_EQ(file.Open(), 2u);
    file.Seek(2, 5);
    for (std::uint32_t unknown : {0u, 3u, SpannedFile::kInvalidHandle}) {
      EXPECT_EQ(ReadBytes(file, unknown, 1), Bytes{}) << unknown;
      file.Seek(unknown, 7);
      file.Close(unknown);
    }
    file.Close(1);
    EXPECT_EQ(segments.OpenCount(), 2u);
    EXPECT_EQ(ReadBytes(file, 2, 3), segments.Slice(5, 3)) << "handle 2 keeps its position";
    file.Close(2);
    EXPECT_EQ(segments.OpenCount(), 0u);
    EXPECT_EQ(ReadBytes(file, 2, 1), Bytes{});
    EXPECT_EQ(file.Open(), 3u) << "handles are never reused";
    EXPECT_EQ(ReadAll(file, 3, 3), segments.joined);
  }
  EXPECT_EQ(segments.OpenCount(), 0u) << "destruction closes the files of open handles";
}

TEST(SpannedFile, SegmentThatCannotBeOpenedFailsTheOpen) {
  aurivox_test::TempDir dir;
  const Segments segments(dir, {10, 10, 10});
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
}

TEST(SpannedFileStreamWrapper, CountsThePositionAndEndsAtTheLength) {
  aurivox_test::TempDir dir;
  const Segments segments(dir, {10, 0, 5});
  SpannedFileStreamWrapper stream(segments.paths);
  auto read = [&stream](std::uint32_t count) {
    Bytes out(count);
    out.resize(static_cast<std::size_t>(stream.Read(out.data(), count)));
    return out;
  };
  EXPECT_EQ(read(4), Bytes{}) << "nothing is read before Open";
  EXPECT_EQ(segments.OpenCount(), 0u);
  EXPECT_EQ(stream.Open(), 1u);
  EXPECT_EQ(stream.Open(), 1u) << "a second Open keeps the handle";
  EXPECT_EQ(stream.GetLength(), 15u);
  EXPECT_EQ(read(4), segments.Slice(0, 4));
  EXPECT_EQ(stream.GetPosition(), 4u);
  EXPECT_EQ(read(100), segments.Slice(4, 11));
  EXPECT_EQ(stream.GetPosition(), 15u) << "moves only by what was delivered";
  stream.SetPosition(14);
  EXPECT_FALSE(stream.IsEndOfStream());
  stream.SetPosition(15);
  EXPECT_TRUE(stream.IsEndOfStream());
  stream.SetPosition(std::uint64_t{1} << 40);
  EXPECT_TRUE(read(4).empty());
  EXPECT_EQ(stream.GetPosition(), std::uint64_t{1} << 40);

  stream.Close();
  EXPECT_EQ(segments.OpenCount(), 0u);
  EXPECT_EQ(stream.GetLength(), 15u);
  stream.SetPosition(0);
  EXPECT_TRUE(read(4).empty());
  EXPECT_EQ(stream.Open(), 2u) << "a new handle after Close";
  EXPECT_EQ(read(15), segments.joined);

  // A missing last segment stays in the list, and cannot be opened.
  SpannedFileStreamWrapper broken({segments.paths[0], dir.WPath("missing.mts")});
  EXPECT_EQ(broken.Open(), SpannedFile::kInvalidHandle);
  EXPECT_EQ(broken.Read(nullptr, 4), 0);
  EXPECT_EQ(broken.GetPosition(), 0u);
}

// A segment of more than 4 GiB, sparse so that it costs no disk space, with
// known bytes around the 4 GiB mark and at its end.
TEST(SpannedFile, ReadsNearAndAcrossBoundariesPastFourGiB) {
  constexpr std::uint64_t kFourGiB = std::uint64_t{1} << 32;
  constexpr std::uint64_t kLargeSize = kFourGiB + 16;
  aurivox_test::TempDir dir;
  const auto large = dir.WriteFile("large.mts", "");
  std::filesystem::resize_file(large, kLargeSize);
  Bytes marker(32);
  for (std::size_t i = 0; i < marker.size(); ++i) marker[i] = static_cast<std::uint8_t>(0xA0 + i);
  {
    ZUM::File writer;
    ASSERT_EQ(writer.Create(aurivox_test::ToWString(large), ZUM::kAccessWrite, ZUM::kShareRead, ZUM::kOpenExisting,
                            ZUM::kAttributeNormal, 0),
              ZUM::kSuccess);
    ASSERT_EQ(writer.SetFilePointer(kFourGiB - 16, ZUM::kFromBeginning), ZUM::kSuccess);
    std::uint32_t written = 0;
    ASSERT_EQ(writer.Write(marker.data(), 32, written), ZUM::kSuccess);
  }
  SpannedFile file({aurivox_test::ToWString(large), aurivox_test::ToWString(dir.WriteFile("small.mts", "01234"))});
  ASSERT_EQ(file.GetSize(), static_cast<std::int64_t>(kLargeSize + 5));
  const std::uint32_t handle = file.Open();
  file.Seek(handle, kFourGiB - 16);
  EXPECT_EQ(ReadBytes(file, handle, 32), marker);
  // From the large segment's last 5 bytes into the small one.
  file.Seek(handle, kLargeSize - 5);
  Bytes expected(marker.end() - 5, marker.end());
  expected.insert(expected.end(), {'0', '1', '2', '3', '4'});
  EXPECT_EQ(ReadBytes(file, handle, 20), expected);
  // The sparse middle reads as zeros, well past 2 GiB.
  file.Seek(handle, kFourGiB / 2 + 12345);
  EXPECT_EQ(ReadBytes(file, handle, 64), Bytes(64, 0));
}

}  // namespace
}  // namespace Aurivox
