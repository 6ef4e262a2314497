#include "ZUM/File.h"

#include <gtest/gtest.h>

#include <numeric>

#include "ZUM/PathUtils.h"
#include "support/TempDir.h"

namespace ZUM {
namespace {

std::vector<std::uint8_t> Bytes(std::size_t n) {
  std::vector<std::uint8_t> v(n);
  std::iota(v.begin(), v.end(), 0);
  return v;
}

TEST(ZumFile, OpensReadsSeeksAndSizes) {
  aurivox_test::TempDir dir;
  dir.WriteFile("a.bin", Bytes(300));
  const WString path = dir.WPath("a.bin");

  std::uint64_t size = 0;
  ASSERT_EQ(File::SizeOnDisk(path, size), kSuccess);
  EXPECT_EQ(size, 300u);

  File file;
  ASSERT_EQ(File::Open(path, kAccessRead, file, true), kSuccess);
  EXPECT_TRUE(file.IsOpen());
  ASSERT_EQ(file.SetFilePointer(250, kFromBeginning), kSuccess);
  std::uint8_t buffer[100] = {};
  std::uint32_t read = 0;
  ASSERT_EQ(file.Read(buffer, sizeof buffer, read), kSuccess);
  EXPECT_EQ(read, 50u);  // only 50 bytes are left
  EXPECT_EQ(buffer[0], 250);
  EXPECT_EQ(buffer[49], 299 & 0xFF);
  ASSERT_EQ(file.Read(buffer, sizeof buffer, read), kSuccess);
  EXPECT_EQ(read, 0u);
  ASSERT_EQ(file.SetFilePointer(-10, kFromEnd), kSuccess);
  ASSERT_EQ(file.Read(buffer, 4, read), kSuccess);
  EXPECT_EQ(read, 4u);
  EXPECT_EQ(buffer[0], 290 & 0xFF);
  file.Close();
  EXPECT_FALSE(file.IsOpen());
  EXPECT_LT(file.Read(buffer, 4, read), 0);
}

TEST(ZumFile, MissingFilesAndFoldersFailWithNegativeResults) {
  aurivox_test::TempDir dir;
  dir.MakeDir("folder");
  File file;
  EXPECT_EQ(File::Open(dir.WPath("missing.mts"), kAccessRead, file, true), kErrorNotFound);
  EXPECT_LT(File::Open(dir.WPath("folder"), kAccessRead, file, true), 0);
  EXPECT_LT(File::Open(u"", kAccessRead, file, true), 0);
  EXPECT_FALSE(file.IsOpen());

  std::uint64_t size = 12345;
  EXPECT_LT(File::SizeOnDisk(dir.WPath("missing.mts"), size), 0);
  EXPECT_LT(File::SizeOnDisk(dir.WPath("folder"), size), 0);
  EXPECT_EQ(size, 12345u);  // left alone on failure
}

TEST(PathUtils, StripsLongPathPrefixes) {
  EXPECT_EQ(PathUtils::Win::StripUNC(u"\\\\?\\C:\\clips\\a.mts"), u"C:\\clips\\a.mts");
  EXPECT_EQ(PathUtils::Win::StripUNC(u"\\\\?\\UNC\\server\\share\\a.mts"), u"\\\\server\\share\\a.mts");
  EXPECT_EQ(PathUtils::Win::StripUNC(u"\\\\server\\share\\a.mts"), u"\\\\server\\share\\a.mts");
  EXPECT_EQ(PathUtils::Win::StripUNC(u"C:\\a.mts"), u"C:\\a.mts");
  EXPECT_EQ(PathUtils::Win::StripUNC(u""), u"");
}

}  // namespace
}  // namespace ZUM
