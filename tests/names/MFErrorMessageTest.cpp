#include "MFErrorMessage.h"

#include <gtest/gtest.h>

#include <string>

#include "MFErrorTable.h"
#include "orxcore/Localizer.h"

namespace windowsmediafoundation {
namespace {

std::string Message(std::uint32_t code) {
  return orxcore::UTF16toStdString(MFErrorMessage(static_cast<std::int32_t>(code)));
}

TEST(MFErrorMessage, TellingCodesHaveThePlatformsTexts) {
  const struct {
    std::uint32_t code;
    const char* text;
  } kCases[] = {
      {0x00000000, "Operation successful"},
      {0x80004005, "Unspecified failure"},
      {0xC00D36E6, "The requested attribute was not found."},
      {0xC00DA7FD, "The hardware stream is not connected yet."},
  };
  for (const auto& c : kCases) EXPECT_EQ(Message(c.code), c.text) << std::hex << c.code;
}

TEST(MFErrorMessage, UnnamedCodesGetTheDefaultTextInUpperCaseHex) {
  EXPECT_EQ(Message(0x80004321), "Media Foundation returned error 0x80004321");
  EXPECT_EQ(Message(0xC00DABCD), "Media Foundation returned error 0xC00DABCD");
  EXPECT_EQ(Message(0x12), "Media Foundation returned error 0x12");
  EXPECT_EQ(Message(0x1), "Media Foundation returned error 0x1");  // S_FALSE has no name here
  EXPECT_EQ(Message(0xFFFFFFFF), "Media Foundation returned error 0xFFFFFFFF");
}

TEST(MFErrorMessage, OnlyExactValuesAreNamed) {
  // Gaps inside the Media Foundation ranges and near neighbours of named codes.
  EXPECT_EQ(Message(0xC00D36B8), "Media Foundation returned error 0xC00D36B8");
  EXPECT_EQ(Message(0x800D36E6), "Media Foundation returned error 0x800D36E6");
  EXPECT_EQ(Message(0x000D36E6), "Media Foundation returned error 0xD36E6");
  EXPECT_EQ(Message(0xC00D36E6), "The requested attribute was not found.");
}

TEST(MFErrorTable, EveryKeyHasAnEnglishTextAndEveryCodeIsFound) {
  for (const MFErrorEntry& entry : MFErrorEntries()) {
    SCOPED_TRACE(std::string(entry.key));
    const std::string_view text = entry.key.substr(entry.key.find('=') + 1);
    EXPECT_FALSE(text.empty());
    EXPECT_EQ(FindMFErrorEntry(entry.code), &entry);
    EXPECT_EQ(Message(entry.code), text);
  }
}

class TranslatedErrorMessages : public ::testing::Test {
 protected:
  void TearDown() override { orxcore::Localizer::Get().ClearTranslations(); }
};

TEST_F(TranslatedErrorMessages, NamedAndDefaultKeysUseTheTranslation) {
  orxcore::Localizer& localizer = orxcore::Localizer::Get();
  localizer.SetTranslation("$$$/windowsmediafoundation/Errors/MF_E_SHUTDOWN",
                           u"Shutdown() wurde bereits aufgerufen.");
  localizer.SetTranslation("$$$/windowsmediafoundation/Errors/DefaultError",
                           u"Erreur 0x@0 de Media Foundation");
  EXPECT_EQ(MFErrorMessage(static_cast<std::int32_t>(0xC00D3E85)),
            u"Shutdown() wurde bereits aufgerufen.");
  EXPECT_EQ(MFErrorMessage(static_cast<std::int32_t>(0x80004321)),
            u"Erreur 0x80004321 de Media Foundation");
  EXPECT_EQ(Message(0x80004005), "Unspecified failure");
}

class MFErrorTrace : public ::testing::Test {
 protected:
  void TearDown() override { orxcore::SetTraceConfiguration(""); }
};

TEST_F(MFErrorTrace, WritesTheMessageOnlyWhenTheSiteIsOn) {
  orxcore::TraceSite site("windowsmediafoundation.MFReader.Test", 5);
  orxcore::SetTraceConfiguration("windowsmediafoundation.*=7");
  testing::internal::CaptureStderr();
  TraceMFError(site, static_cast<std::int32_t>(0x80004005));
  TraceMFError(site, 0x12);
  orxcore::SetTraceConfiguration("windowsmediafoundation.*=4");
  TraceMFError(site, static_cast<std::int32_t>(0x80004003));
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Error: Unspecified failure\r\nError: Media Foundation returned error 0x12\r\n");
}

}  // namespace
}  // namespace windowsmediafoundation
