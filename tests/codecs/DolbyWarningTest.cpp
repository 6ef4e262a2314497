#include "DolbyWarning.h"

#include <gtest/gtest.h>

#include <thread>
#include <tuple>

#include "MediaFeaturesSwitch.h"
#include "RecordingErrorSuite.h"
#include "orxcore/Guid.h"
#include "orxcore/Localizer.h"

namespace Aurivox {
namespace {

// Every test uses paths of its own: the set of warned files lives as long
// as the process.
orxcore::WString UniquePath(const char16_t* extension) {
  return u"C:\\clips\\" + orxcore::Guid::CreateUnique().AsString() + extension;
}

const char16_t kCertain[] = u"The audio in this file requires the Dolby audio decoder";
const char16_t kMaybe[] = u"The audio in this file may require the Dolby audio decoder";

class DolbyWarningTest : public ::testing::Test {
 protected:
  void Warn(const orxcore::WString& path, std::uint32_t flags, DolbySuspect suspect = DolbySuspect::kCertain,
            bool withSuite = true) {
    WarnAboutMissingDolby(path, suspect, withSuite ? recorder_.suite() : nullptr, flags);
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
  Warn(unheard, 0, DolbySuspect::kCertain, /*withSuite=*/false);
  features_.Set(true);
  Warn(present, 0);
  features_.Set(false);
  Warn(UniquePath(u".mp4"), 0, DolbySuspect::kNone);
  EXPECT_TRUE(recorder_.events().empty());
  for (const auto& again : {path, orxcore::ToLowerCase(path), unheard, present}) Warn(again, 0);
  const auto events = recorder_.events();
  ASSERT_EQ(events.size(), 1u);
  EXPECT_EQ(events[0].title, u"Missing Dolby audio decoder");
  EXPECT_EQ(events[0].message.rfind(kCertain, 0), 0u);
  EXPECT_EQ(events[0].message.substr(events[0].message.size() - path.size() - 4), u". \"" + path + u"\"");
}

TEST_F(DolbyWarningTest, TextsComeFromTheirLocalisationKeys) {
  orxcore::Localizer& localizer = orxcore::Localizer::Get();
  localizer.SetTranslation("$$$/Kelvanto/Utilities/Aurivox/WinDecoder/MissingDolby", u"sicher @0");
  localizer.SetTranslation("$$$/Kelvanto/Utilities/Aurivox/WinDecoder/MissingDolbyMaybe", u"vielleicht @0");
  localizer.SetTranslation("$$$/Kelvanto/Utilities/Aurivox/WinDecoder/MissingDolbyEventTitle", u"Titel");
  const orxcore::WString path = UniquePath(u".mp4");
  Warn(path + u"1", 0);
  Warn(path + u"2", 0, DolbySuspect::kMaybe);
  localizer.ClearTranslations();
  const auto events = recorder_.events();
  ASSERT_EQ(events.size(), 2u);
  EXPECT_EQ(events[1].title, u"Titel");
  EXPECT_EQ(events[0].message + u"|" + events[1].message, u"sicher " + path + u"1|vielleicht " + path + u"2");
}

TEST_F(DolbyWarningTest, WordingAndEventTypeFollowTheFlagsAndAnAc3Extension) {
  const std::tuple<const char16_t*, std::uint32_t, const char16_t*, std::int32_t> kCases[] = {
      {u".mp4", 0, kMaybe, 0x402},   {u".mp4", 1, kCertain, 0x403}, {u".mp4", 5, kCertain, 0x402},
      {u".mp4", 4, kMaybe, 0x402},   {u".mp4", 8, kMaybe, 0x403},   {u".ac3", 0, kCertain, 0x403},
      {u".ac3", 4, kCertain, 0x403}, {u".AC3", 0, kMaybe, 0x402}};  // the extension is compared exactly
  for (const auto& [extension, flags, wording, eventType] : kCases) {
    const orxcore::WString path = UniquePath(extension);
    Warn(path, flags, DolbySuspect::kMaybe);
    const auto events = recorder_.EventsFor(path);
    ASSERT_EQ(events.size(), 1u) << "flags " << flags;
    EXPECT_EQ(events[0].message.rfind(wording, 0), 0u) << "flags " << flags;
    EXPECT_EQ(events[0].eventType, eventType) << "flags " << flags;
  }
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
