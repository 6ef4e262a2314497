#include "orxcore/File.h"

#include <gtest/gtest.h>

#include "support/TempDir.h"

namespace orxcore {
namespace {

const bool kWindows = File::PreferredSeparator() == u'\\';

TEST(FileName, TitleAndExtensionOfNamesWithSeveralDots) {
  EXPECT_EQ(File::GetExtension(u"/clips/take.2.final.MTS", true), u".MTS");
  EXPECT_EQ(File::GetExtension(u"/clips/take.2.final.MTS", false), u"MTS");
  EXPECT_EQ(File::GetTitle(u"/clips/take.2.final.MTS"), u"take.2.final");
  EXPECT_EQ(File::GetTitle(u"/clips/00001.m2ts"), u"00001");
  EXPECT_EQ(File::GetExtension(u"/clips.d/README", true), u"");
  EXPECT_EQ(File::GetTitle(u"/clips.d/README"), u"README");
  EXPECT_EQ(File::GetExtension(u"/clips/.hidden", true), u".hidden");
  EXPECT_EQ(File::GetTitle(u"/clips/.hidden"), u"");
}

TEST(FileName, ParentAndFileName) {
  EXPECT_EQ(File::GetParent(u"/a/BDMV/STREAM/00001.MTS"), u"/a/BDMV/STREAM");
  EXPECT_EQ(File::GetParent(u"/a//b"), u"/a");
  EXPECT_EQ(File::GetParent(u"/a"), u"/");
  EXPECT_EQ(File::GetParent(u"name"), u"");
  EXPECT_EQ(File::GetFileName(u"/a/BDMV/STREAM/00001.MTS"), u"00001.MTS");
  EXPECT_EQ(File::Combine(u"/a/b", u"c.mts"), WString(u"/a/b") + File::PreferredSeparator() + u"c.mts");
  EXPECT_EQ(File::Combine(u"/", u"c"), u"/c");
}

TEST(FileName, TopLevelFolders) {
  EXPECT_TRUE(File::IsTopLevelDir(u"/"));
  EXPECT_EQ(File::IsTopLevelDir(u"C:\\"), kWindows);
  EXPECT_EQ(File::IsTopLevelDir(u"C:"), kWindows);
  EXPECT_FALSE(File::IsTopLevelDir(u"/BDMV"));
  EXPECT_FALSE(File::IsTopLevelDir(u"C:\\BDMV"));
  EXPECT_FALSE(File::IsTopLevelDir(u""));
  EXPECT_FALSE(File::IsTopLevelDir(u"x/y/z"));
  EXPECT_EQ(File::IsTopLevelDir(u"\\\\server\\share"), kWindows);
  EXPECT_FALSE(File::IsTopLevelDir(u"\\\\server\\share\\BDMV"));
  // A name after a drive lies in that drive's current folder.
  EXPECT_EQ(File::GetParent(u"C:name"), kWindows ? u"C:" : u"");
}

TEST(FileName, BackslashSeparatesOnlyOnWindows) {
  EXPECT_EQ(File::GetFileName(u"C:/BDMV/STREAM/00001.MTS"), u"00001.MTS");
  if (kWindows) {
    EXPECT_EQ(File::GetParent(u"C:\\BDMV/STREAM\\00001.MTS"), u"C:\\BDMV/STREAM");
    EXPECT_EQ(File::GetParent(u"C:\\BDMV"), u"C:\\");
    EXPECT_EQ(File::GetFileName(u"C:\\BDMV\\00001.MTS"), u"00001.MTS");
  } else {
    // A backslash is an ordinary character of a POSIX name.
    EXPECT_EQ(File::GetParent(u"/a/b\\c.mts"), u"/a");
    EXPECT_EQ(File::GetFileName(u"/a/b\\c.mts"), u"b\\c.mts");
  }
}

TEST(FileName, ComparisonFollowsThePlatformsCaseRules) {
  EXPECT_EQ(File::CompareFileNames(u"STREAM", u"STREAM"), 0);
  EXPECT_EQ(File::CompareFileNames(u"STREAM", u"stream") == 0, kWindows);
  EXPECT_NE(File::CompareFileNames(u"STREAM", u"STREAMS"), 0);
  EXPECT_LT(File::CompareFileNames(u"A", u"B"), 0);
}

TEST(FileName, NonAsciiNamesReachTheFileSystem) {
  aurivox_test::TempDir dir;
  dir.WriteFile("\xC3\xBC" "ber/\xE4\xB8\xAD.mts", "x");
  EXPECT_TRUE(File::IsRegularFile(dir.WPath("\xC3\xBC" "ber/\xE4\xB8\xAD.mts")));
}

}  // namespace
}  // namespace orxcore
