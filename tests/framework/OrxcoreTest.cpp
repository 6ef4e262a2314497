// The host's core library stand-in: strings, GUIDs, the localiser, traces and
// path rules (with ZUMFoundation's).
#include <gtest/gtest.h>

#include <array>
#include <tuple>

#include "ZUM/PathUtils.h"
#include "orxcore/File.h"
#include "orxcore/Guid.h"
#include "orxcore/Localizer.h"
#include "orxcore/String.h"
#include "orxcore/Trace.h"
#include "support/TempDir.h"

namespace orxcore {
namespace {

TEST(String, ConversionsReplaceBrokenSequencesAndKeepTheGivenLength) {
  EXPECT_EQ(UTF16toStdString(u"x" + WString(1, char16_t(0xD800)) + u"a\U0001F600"), "x\xEF\xBF\xBD" "a\xF0\x9F\x98\x80");
  EXPECT_EQ(UTF8to16("a\xFF" "b"), u"a\uFFFDb");
  EXPECT_EQ(AsciiToUTF16("ab\0\xE9", 4), WString(u"ab\0\u00E9", 4));
}

TEST(String, LowerCaseFoldsCapitalsAtTheEdgesOfTheirRuns) {
  EXPECT_EQ(ToLowerCase(u"@AZ[\u00BF\u00C0\u00D6\u00D7\u00D8\u00DE\u00DF\u0100\u0101\u0130\u0139\u0147\u0148\u0178"),
            u"@az[\u00BF\u00E0\u00F6\u00D7\u00F8\u00FE\u00DF\u0101\u0101i\u013A\u0148\u0148\u00FF");
  EXPECT_EQ(ToLowerCase(u"\u0179\u017E\u017F\u0180\u0390\u0391\u03A2\u03AB\u03AC\u03FF\u0400\u040F\u0410\u042F\u0430"),
            u"\u017A\u017E\u017F\u0180\u0390\u03B1\u03A2\u03CB\u03AC\u03FF\u0450\u045F\u0430\u044F\u0430");
}

TEST(String, ReplaceFillsPlaceholdersByNumberAndKeepsThoseWithNothingPutIn) {
  EXPECT_EQ(ReplaceInString(u"\"@0\" and @1, again @0", u"x.mp4", u"two"), u"\"x.mp4\" and two, again x.mp4");
  EXPECT_EQ(ReplaceInString(u"@9@8", u"", u"", u"", u"", u"", u"", u"", u"", u"eight", u"nine"), u"nineeight");
  EXPECT_EQ(ReplaceInString(u"0x@0 at @1@@0@:@/@", u"a"), u"0xa at @1@a@:@/@");
}

TEST(String, NumbersToTextAndBack) {
  const std::tuple<double, int, int, const char16_t*> kTexts[] = {
      {25.0, 1, 2, u"25.0"}, {0.5, 4, 3, u"0.500"}, {2.5, -1, 0, u"2"}, {100.0, 0, 1, u"100"}};
  for (const auto& [value, least, most, text] : kTexts) EXPECT_EQ(NumberToString(value, least, most), text) << value;
  const std::tuple<const char16_t*, bool, std::int32_t> kNumbers[] = {
      {u"+12", true, 12},        {u"-2147483648", true, INT32_MIN}, {u"2147483647", true, INT32_MAX},
      {u"2147483648", false, 9}, {u"-2147483649", false, 9},        {u"0001a", false, 9},
      {u"-", false, 9},          {u"/", false, 9},                  {u":", false, 9}};
  for (const auto& [text, ok, expected] : kNumbers) {
    std::int32_t value = 9;
    EXPECT_EQ(StringToNumber(text, value), ok) << UTF16toStdString(text);
    EXPECT_EQ(value, expected) << UTF16toStdString(text);
  }
}

TEST(Guid, BytesTextAndOrderFollowTheWindowsMemoryLayout) {
  const std::array<std::uint8_t, 16> bytes = {4, 3, 2, 1, 6, 5, 8, 7, 9, 10, 11, 12, 13, 14, 15, 0xA0};
  EXPECT_EQ(Guid::FromBytes(bytes).AsString(), u"01020304-0506-0708-090A-0B0C0D0E0FA0");
  EXPECT_EQ(Guid::FromBytes(bytes).GuidToBytes(), bytes);
  // Unsigned bytes, the first byte in memory first.
  EXPECT_TRUE((Guid{0xFF000000, 0, 0, {}} < Guid{1, 0, 0, {}}) && !(Guid{1, 0, 0, {}} < Guid{0xFF000000, 0, 0, {}}));
}

TEST(Localizer, LoadedTranslationWinsOverTheDefault) {
  aurivox_test::TempDir dir;
  const auto file = dir.WriteFile("de.txt", "# comment\r\n$$$/a/one=Eins\r\n$$$/a/two=Zeile 1\\nZeile \xC3\xBC\n");
  ASSERT_TRUE(Localizer::Get().LoadTranslations(file.u8string()));
  EXPECT_EQ(Localizer::Get().Localize("$$$/a/one=One"), u"Eins");
  EXPECT_EQ(Localizer::Get().Localize("$$$/a/two=Two"), u"Zeile 1\nZeile \u00FC");
  Localizer::Get().ClearTranslations();
}

TEST(Trace, LastMatchingRuleDecidesUpToItsLevel) {
  SetTraceConfiguration("*=7; a.*.c=5 , a.b.c=0;windowsmediafoundation.MFReader.*=6");
  const std::tuple<const char*, int, bool> kCases[] = {
      {"windowsmediafoundation.MFReader.Setup", 6, true}, {"windowsmediafoundation.MFReader.Seek", 7, false},
      {"windowsmediafoundation.MFByteStream", 7, true},   {"a.b.c", 0, true},
      {"a.b.c", 1, false}, {"a.q.c", 5, true}, {"a.q.c", 6, false}};
  for (const auto& [category, level, enabled] : kCases) EXPECT_EQ(TraceEnabled(category, level), enabled) << category;
  SetTraceConfiguration("");
}

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
    SCOPED_TRACE(UTF16toStdString(path));
    EXPECT_EQ(File::GetParent(path), parent);
    EXPECT_EQ(File::GetFileName(path), name);
    EXPECT_EQ(File::GetTitle(path), title);
    EXPECT_EQ(File::GetExtension(path, true), extension);
    EXPECT_EQ(File::GetExtension(path, false), WString(extension).substr(extension[0] ? 1 : 0));
  }
  // Joining below a folder other than the root is met by the split-recording search.
  EXPECT_EQ(File::Combine(u"/", u"c"), u"/c");
}

TEST(FileName, TopLevelFoldersAndComparison) {
  const std::tuple<const char16_t*, bool, bool> kRows[] = {  // path, on POSIX, on Windows
      {u"/", true, true},       {u"C:\\", false, true},                {u"C:", false, true},
      {u"", false, false},      {u"\\\\srv\\share\\", false, true},      {u"\\\\srv\\share\\BDMV", false, false},
      {u"C:\\BDMV", false, false}, {u"\\\\\\share", false, false}};
  for (const auto& [path, posix, windows] : kRows) {
    EXPECT_EQ(File::IsTopLevelDir(path), kWindows ? windows : posix) << UTF16toStdString(path);
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
}  // namespace orxcore
