// Path rules of the core library and ZUMFoundation.
#include <gtest/gtest.h>

#include <array>
#include <tuple>

#include "ZUM/PathUtils.h"
#include "orxcore/File.h"
#include "support/TempDir.h"

namespace {

namespace File = orxcore::File;
using orxcore::WString;

const bool kWindows = File::PreferredSeparator() == u'\\';

TEST(FileName, PartsOfAPath) {
  // Path, parent, file name, title, extension.
  const std::array<const char16_t*, 5> kRows[] = {
      {u"/clips/take.2.MTS", u"/clips", u"take.2.MTS", u"take.2", u".MTS"},
      {u"/clips.d/README", u"/clips.d", u"README", u"README", u""},
      {u"/c/.hidden", u"/c", u".hidden", u"", u".hidden"},
      {u"/a//b", u"/a", u"b", u"b", u""},
      {u"/a", u"/", u"a", u"a", u""},
      // A name after a drive lies in that drive's current folder; a backslash separates only on Windows.
      {u"C:name", kWindows ? u"C:" : u"", u"C:name", u"C:name", u""},
      {u"C:\\B/S\\1.MTS", kWindows ? u"C:\\B/S" : u"C:\\B", kWindows ? u"1.MTS" : u"S\\1.MTS",
       kWindows ? u"1" : u"S\\1", u".MTS"},
      {u"C:\\BDMV", kWindows ? u"C:\\" : u"", kWindows ? u"BDMV" : u"C:\\BDMV", kWindows ? u"BDMV" : u"C:\\BDMV", u""},
  };
  for (const auto& [path, parent, name, title, extension] : kRows) {
    SCOPED_TRACE(orxcore::UTF16toStdString(path));
    EXPECT_EQ(File::GetParent(path), parent);
    EXPECT_EQ(File::GetFileName(path), name);
    EXPECT_EQ(File::GetTitle(path), title);
    EXPECT_EQ(File::GetExtension(path, true), extension);
    EXPECT_EQ(File::GetExtension(path, false), WString(extension).substr(extension[0] ? 1 : 0));
  }
  EXPECT_EQ(File::Combine(u"/a", u"c"), WString(u"/a") + File::PreferredSeparator() + u"c");
  EXPECT_EQ(File::Combine(u"/", u"c"), u"/c");
}

TEST(FileName, TopLevelFoldersAndComparison) {
  const std::tuple<const char16_t*, bool, bool> kRows[] = {  // path, on POSIX, on Windows
      {u"/", true, true},       {u"C:\\", false, true},                {u"C:", false, true},
      {u"", false, false},      {u"\\\\srv\\share\\", false, true},      {u"\\\\srv\\share\\BDMV", false, false},
      {u"C:\\BDMV", false, false}, {u"\\\\\\share", false, false}};
  for (const auto& [path, posix, windows] : kRows) {
    EXPECT_EQ(File::IsTopLevelDir(path), kWindows ? windows : posix) << orxcore::UTF16toStdString(path);
  }
  EXPECT_EQ(File::CompareFileNames(u"STREAM", u"stream") == 0, kWindows);
  EXPECT_LT(File::CompareFileNames(u"STREAM", u"STREAMS"), 0);
  EXPECT_EQ(ZUM::PathUtils::Win::StripUNC(u"\\\\?\\C:\\clips\\a.mts"), u"C:\\clips\\a.mts");
  EXPECT_EQ(ZUM::PathUtils::Win::StripUNC(u"\\\\?\\UNC\\server\\share\\a.mts"), u"\\\\server\\share\\a.mts");
}

TEST(FileName, NonAsciiNamesReachTheFileSystem) {
  aurivox_test::TempDir dir;
  dir.WriteFile("\xC3\xBC" "ber/\xE4\xB8\xAD.mts", "x");
  EXPECT_TRUE(File::IsRegularFile(dir.WPath("\xC3\xBC" "ber/\xE4\xB8\xAD.mts")));
}

}  // namespace
