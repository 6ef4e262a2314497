#include "orxcore/String.h"

#include <gtest/gtest.h>

#include <tuple>

namespace orxcore {
namespace {

TEST(String, ConversionsReplaceBrokenSequencesAndKeepTheGivenLength) {
  EXPECT_EQ(UTF16toStdString(WString(1, char16_t(0xD800)) + u"a\U0001F600"), "\xEF\xBF\xBD" "a\xF0\x9F\x98\x80");
  EXPECT_EQ(UTF8to16("a\xFF" "b"), u"a\uFFFDb");
  EXPECT_EQ(AsciiToUTF16("ab\0\xE9", 4), WString(u"ab\0\u00E9", 4));
}

TEST(String, LowerCaseFoldsCapitalsAtTheEdgesOfTheirRuns) {
  const std::pair<const char16_t*, const char16_t*> kCases[] = {
      {u"@AZ[\u00BF\u00C0\u00D6\u00D7\u00D8\u00DE\u00DF", u"@az[\u00BF\u00E0\u00F6\u00D7\u00F8\u00FE\u00DF"},
      {u"\u0100\u0101\u0130\u0139\u0147\u0148\u0178", u"\u0101\u0101i\u013A\u0148\u0148\u00FF"},
      {u"\u0179\u017D\u017E\u017F\u0180\u0390\u0391\u03A2\u03AB\u03AC", u"\u017A\u017E\u017E\u017F\u0180\u0390\u03B1\u03A2\u03CB\u03AC"},
      {u"\u03FF\u0400\u040F\u0410\u042F\u0430\u4E2D", u"\u03FF\u0450\u045F\u0430\u044F\u0430\u4E2D"}};
  for (const auto& [text, lower] : kCases) EXPECT_EQ(ToLowerCase(text), lower) << UTF16toStdString(text);
}

TEST(String, ReplaceFillsPlaceholdersByNumberAndKeepsThoseWithNothingPutIn) {
  EXPECT_EQ(ReplaceInString(u"\"@0\" and @1, again @0", u"x.mp4", u"two"), u"\"x.mp4\" and two, again x.mp4");
  EXPECT_EQ(ReplaceInString(u"@9@8", u"", u"", u"", u"", u"", u"", u"", u"", u"eight", u"nine"), u"nineeight");
  EXPECT_EQ(ReplaceInString(u"0x@0 at @1@@0@:@/@", u"a"), u"0xa at @1@a@:@/@");
}

TEST(String, NumbersToTextAndBack) {
  EXPECT_EQ(NumberToString(std::int64_t{-42}), u"-42");
  const std::tuple<double, int, int, const char16_t*> kTexts[] = {
      {29.97002997, 1, 2, u"29.97"}, {25.0, 1, 2, u"25.0"}, {59.9, 1, 2, u"59.9"}, {25.0, 0, 2, u"25"},
      {0.5, 4, 3, u"0.500"},         {2.5, -1, 0, u"2"},    {100.0, 0, 1, u"100"}};
  for (const auto& [value, minDigits, maxDigits, text] : kTexts) {
    EXPECT_EQ(NumberToString(value, minDigits, maxDigits), text) << value;
  }
  const std::tuple<const char16_t*, bool, std::int32_t> kNumbers[] = {
      {u"00012", true, 12},         {u"+7", true, 7},           {u"-2147483648", true, INT32_MIN},
      {u"2147483647", true, INT32_MAX}, {u"2147483648", false, 99}, {u"-2147483649", false, 99},
      {u"0001a", false, 99},        {u"-", false, 99},          {u"/", false, 99}, {u":", false, 99}};
  for (const auto& [text, ok, expected] : kNumbers) {
    std::int32_t value = 99;
    EXPECT_EQ(StringToNumber(text, value), ok) << UTF16toStdString(text);
    EXPECT_EQ(value, expected) << UTF16toStdString(text);
  }
}

}  // namespace
}  // namespace orxcore
