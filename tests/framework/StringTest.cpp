#include "orxcore/String.h"

#include <gtest/gtest.h>

namespace orxcore {
namespace {

TEST(StringConversion, ReplacesBrokenSequencesInsteadOfFailing) {
  EXPECT_EQ(UTF16toStdString(std::u16string(1, char16_t(0xD800)) + u"a"), "\xEF\xBF\xBD" "a");
  EXPECT_EQ(UTF8to16("a\xFF" "b"), u"a\uFFFDb");
}

TEST(StringConversion, AsciiWideningKeepsTheGivenLengthIncludingNul) {
  const char text[] = "ab\0c";
  EXPECT_EQ(AsciiToUTF16(text, 4), WString(u"ab\0c", 4));
  EXPECT_EQ(AsciiToUTF16("'HEVC' = x"), u"'HEVC' = x");
}

TEST(LowerCase, FoldsLatinGreekAndCyrillicCapitals) {
  EXPECT_EQ(ToLowerCase(u"C:\\A.MP4"), u"c:\\a.mp4");
  EXPECT_EQ(ToLowerCase(u"\u00C9T\u00C9 \u00D7"), u"\u00E9t\u00E9 \u00D7");
  EXPECT_EQ(ToLowerCase(u"\u0141\u00D3D\u0179"), u"\u0142\u00F3d\u017A");
  // The small letter that ends the odd-capital run stays as it is.
  EXPECT_EQ(ToLowerCase(u"\u0147\u0148"), u"\u0148\u0148");
  EXPECT_EQ(ToLowerCase(u"\u0391\u0392\u0393 \u0416\u0401"), u"\u03B1\u03B2\u03B3 \u0436\u0451");
  EXPECT_EQ(ToLowerCase(u"\u4E2D 123"), u"\u4E2D 123");
}

TEST(ReplaceInString, FillsPlaceholdersByNumber) {
  EXPECT_EQ(ReplaceInString(u"\"@0\" and @1, again @0", u"x.mp4", u"two"),
            u"\"x.mp4\" and two, again x.mp4");
  EXPECT_EQ(ReplaceInString(u"@9@8", u"", u"", u"", u"", u"", u"", u"", u"", u"eight", u"nine"),
            u"nineeight");
}

TEST(ReplaceInString, KeepsPlaceholdersWithNothingPutIn) {
  EXPECT_EQ(ReplaceInString(u"error 0x@0 at @1", u""), u"error 0x@0 at @1");
  EXPECT_EQ(ReplaceInString(u"@", u"a"), u"@");
  EXPECT_EQ(ReplaceInString(u"@@0", u"a"), u"@a");
}

TEST(NumberToString, FormatsIntegersAndFixedPrecision) {
  EXPECT_EQ(NumberToString(std::int64_t{-42}), u"-42");
  EXPECT_EQ(NumberToString(29.97002997, 1, 2), u"29.97");
  EXPECT_EQ(NumberToString(25.0, 1, 2), u"25.0");
  EXPECT_EQ(NumberToString(23.976, 1, 2), u"23.98");
  EXPECT_EQ(NumberToString(59.9, 1, 2), u"59.9");
  EXPECT_EQ(NumberToString(25.0, 0, 2), u"25");
  EXPECT_EQ(NumberToString(0.5, 3, 3), u"0.500");
}

TEST(StringToNumber, AcceptsOnlyWholeDecimalNumbers) {
  std::int32_t value = -1;
  EXPECT_TRUE(StringToNumber(u"00012", value));
  EXPECT_EQ(value, 12);
  EXPECT_TRUE(StringToNumber(u"-2147483648", value));
  EXPECT_EQ(value, INT32_MIN);
  value = 7;
  EXPECT_FALSE(StringToNumber(u"0001a", value));
  EXPECT_FALSE(StringToNumber(u"", value));
  EXPECT_FALSE(StringToNumber(u"2147483648", value));
  EXPECT_EQ(value, 7);
}

}  // namespace
}  // namespace orxcore
