#include "SpannedFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "OpenFiles.h"
#include "SpannedFileStreamWrapper.h"
#include "support/TempDir.h"

namespace Aurivox {
namespace {

using aurivox_test::IsOpenInThisProcess;
using Bytes = std::vector<std::uint8_t>;

// Segment files of the given sizes holding consecutive pieces of `joined`.
struct Segments {
  explicit Segments(const std::vector<std::size_t>& sizes) {
    std::mt19937 random(7);
    for (std::size_t size : sizes) {
      Bytes bytes(size);
      for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random());
      paths.push_back(aurivox_test::ToWString(dir.WriteFile("seg" + std::to_string(paths.size()) + ".mts", bytes)));
      joined.insert(joined.end(), bytes.begin(), bytes.end());
    }
  }
  // `count` bytes from `offset`, fewer where they end.
  Bytes Slice(std::int64_t offset, std::int64_t count) const {
    const auto size = static_cast<std::int64_t>(joined.size());
    return Bytes(joined.begin() + std::min(offset, size), joined.begin() + std::min(offset + count, size));
  }
  std::ptrdiff_t OpenCount() const { return std::count_if(paths.begin(), paths.end(), IsOpenInThisProcess); }

  aurivox_test::TempDir dir;
  std::vector<orxcore::WString> paths;
  Bytes joined;
};

Bytes ReadBytes(SpannedFile& file, std::uint32_t handle, std::int32_t count) {
  Bytes out(static_cast<std::size_t>(count));
  out.resize(static_cast<std::size_t>(file.Read(handle, out.data(), count)));
  return out;
}

using Sizes = std::vector<std::size_t>;
class JoinedReads : public ::testing::TestWithParam<Sizes> {};

TEST_P(JoinedReads, EqualThePlainConcatenation) {
  const Segments segments(GetParam());
  SpannedFile file(segments.paths);
  ASSERT_EQ(file.GetSize(), static_cast<std::int64_t>(segments.joined.size()));
  const std::uint32_t handle = file.Open();
  const auto total = static_cast<std::int32_t>(segments.joined.size());
  EXPECT_EQ(ReadBytes(file, handle, total + 10), segments.joined) << "one read across every segment";
  std::mt19937 random(7);
  for (int i = 0; i < 300; ++i) {
    const std::int64_t position = random() % (total + 4);
    const auto count = static_cast<std::int32_t>(random() % 300);
    file.Seek(handle, position);
    EXPECT_EQ(ReadBytes(file, handle, count), segments.Slice(position, count)) << position << " + " << count;
  }
}

INSTANTIATE_TEST_SUITE_P(SegmentSizes, JoinedReads,
                         ::testing::Values(Sizes{}, Sizes{10, 0, 5}, Sizes{3, 0, 0, 7919, 1, 0},
                                           Sizes{4097, 8191, 1, 2}));

TEST(SpannedFile, FilesOpenWithTheFirstHandleAndCloseWithTheLast) {
  const Segments segments({10, 0, 10});
  {
    SpannedFile file(segments.paths);
    EXPECT_EQ(file.Open(), 1u);
    EXPECT_EQ(segments.OpenCount(), 2) << "an empty segment drops out";
    EXPECT_EQ(file.Open(), 2u);
    file.Seek(2, 5);
    for (std::uint32_t unknown : {0u, 3u, SpannedFile::kInvalidHandle}) {
      EXPECT_EQ(ReadBytes(file, unknown, 1), Bytes{}) << unknown;
      file.Close(unknown);
    }
    file.Close(1);
    EXPECT_EQ(ReadBytes(file, 2, 3), segments.Slice(5, 3)) << "handle 2 keeps its position and its files";
    file.Close(2);
    EXPECT_EQ(segments.OpenCount(), 0);
    EXPECT_EQ(file.Open(), 3u) << "handles are never reused";
  }
  EXPECT_EQ(segments.OpenCount(), 0) << "destruction closes the files of open handles";

  // A missing segment counts 0 bytes and drops out, except at the end,
  // where it fails the open and leaves nothing open.
  std::vector<orxcore::WString> paths = segments.paths;
  paths.insert(paths.begin() + 1, segments.dir.WPath("missing.mts"));
  EXPECT_EQ(SpannedFile(paths).Open(), 1u);
  paths.push_back(segments.dir.WPath("missing.mts"));
  SpannedFile broken(paths);
  EXPECT_EQ(broken.Open(), SpannedFile::kInvalidHandle);
  EXPECT_EQ(segments.OpenCount(), 0);

  // The stream over the file holds one handle, and takes a new one after
  // Close.
  SpannedFileStreamWrapper stream(segments.paths);
  EXPECT_EQ(stream.Open(), 1u);
  EXPECT_EQ(stream.Open(), 1u);
  Bytes bytes(30);
  EXPECT_EQ(stream.Read(bytes.data(), 4), 4);
  EXPECT_EQ(stream.Read(bytes.data() + 4, 26), 16);
  EXPECT_EQ(stream.GetPosition(), 20u);
  EXPECT_TRUE(stream.IsEndOfStream());
  stream.SetPosition(19);
  EXPECT_FALSE(stream.IsEndOfStream());
  stream.Close();
  EXPECT_EQ(segments.OpenCount(), 0);
  EXPECT_EQ(stream.Open(), 2u);
}

// A sparse segment of more than 4 GiB, which costs no disk space, before a
// small one.
TEST(SpannedFile, ReadsPastFourGiB) {
  constexpr std::int64_t kLargeSize = (std::int64_t{1} << 32) + 16;
  aurivox_test::TempDir dir;
  std::filesystem::resize_file(dir.WriteFile("large.mts", ""), kLargeSize);
  SpannedFile file({dir.WPath("large.mts"), aurivox_test::ToWString(dir.WriteFile("small.mts", "01234"))});
  ASSERT_EQ(file.GetSize(), kLargeSize + 5);
  const std::uint32_t handle = file.Open();
  file.Seek(handle, kLargeSize - 2);
  EXPECT_EQ(ReadBytes(file, handle, 20), (Bytes{0, 0, '0', '1', '2', '3', '4'}));
}

}  // namespace
}  // namespace Aurivox
