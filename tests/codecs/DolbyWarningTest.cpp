#include "DolbyWarning.h"

#include <gtest/gtest.h>

#include <thread>
#include <tuple>

#include "MediaFeaturesSwitch.h"
#include "RecordingErrorSuite.h"
#include "orxcore/Localizer.h"

namespace Aurivox {
namespace {

using aurivox_test::UniquePath;

class DolbyWarningTest : public ::testing::Test {
 protected:
  void Warn(const orxcore::WString& path, std::uint32_t flags, DolbySuspect suspect = DolbySuspect::kCertain) {
    WarnAboutMissingDolby(path, suspect, recorder_.suite(), flags);
  }

  aurivox_test::MediaFeaturesSwitch features_{false};
  aurivox_test::RecordingErrorSuite recorder_;
};

TEST(DolbySubtypes, AreRecognisedByTheirGuid) {
  EXPECT_TRUE(IsDolbySubtype({0xA7FB87AF, 0x2D02, 0x42FB, {0xA4, 0xD4, 0x05, 0xCD, 0x93, 0x84, 0x3B, 0xDD}}));
  EXPECT_FALSE(IsDolbySubtype({0x1610, 0, 0x10, {0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71}}));
}

// A file examined while switched off is not recorded; one examined without a
// suite or while the features are present is, and is never warned about.
TEST_F(DolbyWarningTest, WarnsOncePerFileWhateverTheCaseOfItsPathAndNeverWhenOffWithoutSuiteOrWithTheFeatures) {
  const orxcore::WString path = UniquePath(u".MP4"), unheard = UniquePath(u".mp4"), present = UniquePath(u".mp4");
  Warn(path, kDolbyWarningOff | kDolbyWarnMaybeAsCertain);
  WarnAboutMissingDolby(unheard, DolbySuspect::kCertain, /*suite=*/nullptr, 0);
  features_.Set(true);
  Warn(present, 0);
  features_.Set(false);
  Warn(UniquePath(u".mp4"), 0, DolbySuspect::kNone);
  EXPECT_TRUE(recorder_.events().empty());
  for (const auto& again : {path, orxcore::ToLowerCase(path), unheard, present}) Warn(again, 0);
  const auto events = recorder_.events();
  ASSERT_EQ(events.size(), 1u);
  EXPECT_EQ(events[0].title, u"Missing Dolby audio decoder");
  EXPECT_EQ(events[0].message.rfind(u"The audio in this file requires the Dolby audio decoder", 0), 0u);
  EXPECT_EQ(events[0].message.substr(events[0].message.size() - path.size() - 4), u". \"" + path + u"\"");
}

// Translations show the key each text was looked up under.
TEST_F(DolbyWarningTest, WordingFromItsLocalisationKeyAndEventTypeFollowTheFlagsAndAnAc3Extension) {
  orxcore::Localizer& localizer = orxcore::Localizer::Get();
  localizer.SetTranslation("$$$/Kelvanto/Utilities/Aurivox/WinDecoder/MissingDolby", u"sicher @0");
  localizer.SetTranslation("$$$/Kelvanto/Utilities/Aurivox/WinDecoder/MissingDolbyMaybe", u"vielleicht @0");
  localizer.SetTranslation("$$$/Kelvanto/Utilities/Aurivox/WinDecoder/MissingDolbyEventTitle", u"Titel");
  const std::tuple<const char16_t*, std::uint32_t, const char16_t*, std::int32_t> kCases[] = {
      {u".mp4", 0, u"vielleicht ", 0x402}, {u".mp4", 1, u"sicher ", 0x403}, {u".mp4", 5, u"sicher ", 0x402},
      {u".mp4", 4, u"vielleicht ", 0x402}, {u".mp4", 8, u"vielleicht ", 0x403}, {u".ac3", 0, u"sicher ", 0x403},
      {u".ac3", 4, u"sicher ", 0x403},     {u".AC3", 0, u"vielleicht ", 0x402}};  // the extension is compared exactly
  for (const auto& [extension, flags, wording, eventType] : kCases) {
    const orxcore::WString path = UniquePath(extension);
    Warn(path, flags, DolbySuspect::kMaybe);
    const auto events = recorder_.events();
    ASSERT_FALSE(events.empty());
    EXPECT_EQ(events.back().title + u"|" + events.back().message, u"Titel|" + (wording + path)) << "flags " << flags;
    EXPECT_EQ(events.back().eventType, eventType) << "flags " << flags;
  }
  localizer.ClearTranslations();
}

TEST_F(DolbyWarningTest, ManyThreadsOpeningTheSameFilesWarnOncePerFile) {
  std::vector<orxcore::WString> paths(16);
  for (auto& path : paths) path = UniquePath(u".m4a");
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&paths, this, t] {
      for (int i = 0; i < 64; ++i) Warn(t % 2 ? paths[(i + t) % 16] : orxcore::ToLowerCase(paths[(i + t) % 16]), 0);
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(recorder_.events().size(), paths.size());
}

}  // namespace
}  // namespace Aurivox
