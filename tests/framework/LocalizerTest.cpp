#include "orxcore/Localizer.h"

#include <gtest/gtest.h>

#include "support/TempDir.h"

namespace orxcore {
namespace {

class LocalizerTest : public ::testing::Test {
 protected:
  void TearDown() override { Localizer::Get().ClearTranslations(); }
};

TEST_F(LocalizerTest, DefaultTextRunsToTheEndOfTheLiteral) {
  EXPECT_EQ(Localizer::Get().Localize("$$$/area/name=a = b, \"quoted\"\nnext line"),
            u"a = b, \"quoted\"\nnext line");
  EXPECT_EQ(Localizer::Get().Localize("$$$/area/empty="), u"");
}

TEST_F(LocalizerTest, SplitsKeyAtTheFirstEquals) {
  const auto [key, text] = Localizer::SplitKey("$$$/windowsmediafoundation/Errors/X=x=y");
  EXPECT_EQ(key, "$$$/windowsmediafoundation/Errors/X");
  EXPECT_EQ(text, "x=y");
}

TEST_F(LocalizerTest, LoadedTranslationWinsOverDefault) {
  aurivox_test::TempDir dir;
  const auto file = dir.WriteFile(
      "de.txt",
      "# comment\r\n$$$/area/title=Fehlender Dolby-Decoder\r\n$$$/area/two=Zeile 1\\nZeile \xC3\xBC\n");
  ASSERT_TRUE(Localizer::Get().LoadTranslations(file.u8string()));
  EXPECT_EQ(Localizer::Get().Localize("$$$/area/title=Missing Dolby audio decoder"),
            u"Fehlender Dolby-Decoder");
  EXPECT_EQ(Localizer::Get().Localize("$$$/area/two=Two"), u"Zeile 1\nZeile \u00FC");
  EXPECT_EQ(Localizer::Get().Localize("$$$/area/other=Untranslated"), u"Untranslated");
}

}  // namespace
}  // namespace orxcore
