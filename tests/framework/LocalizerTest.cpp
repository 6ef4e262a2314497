#include "orxcore/Localizer.h"

#include <gtest/gtest.h>

#include "support/TempDir.h"

namespace orxcore {
namespace {

TEST(Localizer, LoadedTranslationWinsOverTheDefaultAfterTheFirstEquals) {
  aurivox_test::TempDir dir;
  const auto file = dir.WriteFile("de.txt", "# comment\r\n$$$/a/one=Fehlender Dolby-Decoder\r\n$$$/a/two=Zeile 1\\nZeile \xC3\xBC\n");
  Localizer& localizer = Localizer::Get();
  ASSERT_TRUE(localizer.LoadTranslations(file.u8string()));
  EXPECT_EQ(localizer.Localize("$$$/a/one=Missing Dolby audio decoder"), u"Fehlender Dolby-Decoder");
  EXPECT_EQ(localizer.Localize("$$$/a/two=Two"), u"Zeile 1\nZeile \u00FC");
  EXPECT_EQ(localizer.Localize("$$$/a/other=a = b, \"quoted\"\nnext"), u"a = b, \"quoted\"\nnext");
  EXPECT_EQ(localizer.Localize("$$$/a/empty="), u"");
  localizer.ClearTranslations();
  EXPECT_EQ(localizer.Localize("$$$/a/two=Two"), u"Two");
}

}  // namespace
}  // namespace orxcore
