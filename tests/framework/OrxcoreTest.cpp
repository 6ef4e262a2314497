// The host's core library stand-in: strings, GUIDs, the localiser and traces.
#include <gtest/gtest.h>

#include <tuple>

#include "orxcore/Guid.h"
#include "orxcore/Localizer.h"
#include "orxcore/String.h"
#include "orxcore/Trace.h"
#include "support/TempDir.h"

namespace orxcore {
namespace {

TEST(String, ConversionsReplaceBrokenSequencesAndKeepTheGivenLength) {
  EXPECT_EQ(UTF16toStdString(WString(1, char16_t(0xD800)) + u"a\U0001F600"), "\xEF\xBF\xBD" "a\xF0\x9F\x98\x80");
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
      {29.97002997, 1, 2, u"29.97"}, {25.0, 1, 2, u"25.0"}, {0.5, 4, 3, u"0.500"},
      {2.5, -1, 0, u"2"},            {100.0, 0, 1, u"100"}};
  for (const auto& [value, minDigits, maxDigits, text] : kTexts) {
    EXPECT_EQ(NumberToString(value, minDigits, maxDigits), text) << value;
  }
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
  const auto file =
      dir.WriteFile("de.txt", "# comment\r\n$$$/a/one=Fehlender Dolby-Decoder\r\n$$$/a/two=Zeile 1\\nZeile \xC3\xBC\n");
  Localizer& localizer = Localizer::Get();
  ASSERT_TRUE(localizer.LoadTranslations(file.u8string()));
  EXPECT_EQ(localizer.Localize("$$$/a/one=Missing Dolby audio decoder"), u"Fehlender Dolby-Decoder");
  EXPECT_EQ(localizer.Localize("$$$/a/two=Two"), u"Zeile 1\nZeile \u00FC");
  localizer.ClearTranslations();
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

}  // namespace
}  // namespace orxcore
