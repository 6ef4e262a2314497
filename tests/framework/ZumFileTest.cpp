#include "ZUM/File.h"

#include <gtest/gtest.h>

#include <numeric>

#include "ZUM/PathUtils.h"
#include "support/TempDir.h"

namespace ZUM {
namespace {

TEST(ZumFile, OpensReadsSeeksAndSizes) {
  aurivox_test::TempDir dir;
  std::vector<std::uint8_t> bytes(300);
  std::iota(bytes.begin(), bytes.end(), 0);
  dir.WriteFile("a.bin", bytes);
  std::uint64_t size = 0;
  ASSERT_EQ(File::SizeOnDisk(dir.WPath("a.bin"), size), kSuccess);
  EXPECT_EQ(size, 300u);
  File file;
  ASSERT_EQ(File::Open(dir.WPath("a.bin"), kAccessRead, file, true), kSuccess);
  ASSERT_EQ(file.SetFilePointer(-60, kFromEnd), kSuccess);
  std::uint8_t buffer[100] = {};
  std::uint32_t read = 0;
  ASSERT_EQ(file.Read(buffer, sizeof buffer, read), kSuccess);
  EXPECT_EQ(read, 60u);  // only 60 bytes are left
  EXPECT_EQ(buffer[59], 299 & 0xFF);
  file.Close();
  EXPECT_LT(file.Read(buffer, 4, read), 0);
}

TEST(ZumFile, MissingFilesAndFoldersFailWithNegativeResults) {
  aurivox_test::TempDir dir;
  dir.MakeDir("folder");
  File file;
  EXPECT_EQ(File::Open(dir.WPath("missing.mts"), kAccessRead, file, true), kErrorNotFound);
  EXPECT_LT(File::Open(dir.WPath("folder"), kAccessRead, file, true), 0);
  EXPECT_FALSE(file.IsOpen());
  std::uint64_t size = 12345;
  EXPECT_LT(File::SizeOnDisk(dir.WPath("folder"), size), 0);
  EXPECT_EQ(size, 12345u);  // left alone on failure
}

TEST(PathUtils, StripsLongPathPrefixes) {
  EXPECT_EQ(PathUtils::Win::StripUNC(u"\\\\?\\C:\\clips\\a.mts"), u"C:\\clips\\a.mts");
  EXPECT_EQ(PathUtils::Win::StripUNC(u"\\\\?\\UNC\\server\\share\\a.mts"), u"\\\\server\\share\\a.mts");
}

}  // namespace
}  // namespace ZUM
