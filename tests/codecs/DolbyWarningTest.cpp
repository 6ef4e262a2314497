#include "DolbyWarning.h"

#include <gtest/gtest.h>

#include <thread>

#include "MediaFeaturesSwitch.h"
#include "RecordingErrorSuite.h"
#include "orxcore/Guid.h"
#include "orxcore/Localizer.h"

namespace Aurivox {
namespace {

using aurivox_test::RecordingErrorSuite;

// Every test uses paths of its own: the set of warned files lives as long
// as the process.
orxcore::WString UniquePath(const char16_t* extension) {
  return u"C:\\clips\\" + orxcore::Guid::CreateUnique().AsString() + extension;
}

const char16_t kCertainStart[] = u"The audio in this file requires the Dolby audio decoder";
const char16_t kMaybeStart[] = u"The audio in this file may require the Dolby audio decoder";

bool StartsWith(const orxcore::WString& text, const char16_t* prefix) {
  return text.rfind(prefix, 0) == 0;
}

class DolbyWarningTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_FALSE(MediaFeaturesPresent()); }
  aurivox_test::MediaFeaturesSwitch featuresAbsent_{false};
  RecordingErrorSuite recorder_;
};

TEST(DolbySubtypes, AllFiveAndNothingElse) {
  const orxcore::Guid mpeg4Ac3{0x61632D33, 0x767A, 0x494D, {0xB4, 0x78, 0xF2, 0x9D, 0x25, 0xDC, 0x90, 0x37}};
  const orxcore::Guid mpeg4Ec3{0x65632D33, 0x767A, 0x494D, {0xB4, 0x78, 0xF2, 0x9D, 0x25, 0xDC, 0x90, 0x37}};
  const orxcore::Guid spdif{0x92, 0, 0x10, {0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71}};
  const orxcore::Guid ac3{0xE06D802C, 0xDB46, 0x11CF, {0xB4, 0xD1, 0x00, 0x80, 0x5F, 0x6C, 0xBB, 0xEA}};
  const orxcore::Guid eac3{0xA7FB87AF, 0x2D02, 0x42FB, {0xA4, 0xD4, 0x05, 0xCD, 0x93, 0x84, 0x3B, 0xDD}};
  for (const auto& g : {mpeg4Ac3, mpeg4Ec3, spdif, ac3, eac3}) EXPECT_TRUE(IsDolbySubtype(g));
  const orxcore::Guid aac{0x1610, 0, 0x10, {0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71}};
  EXPECT_FALSE(IsDolbySubtype(aac));
  EXPECT_FALSE(IsDolbySubtype(orxcore::Guid{}));
  EXPECT_TRUE(IsDolbySuspectResult(static_cast<std::int32_t>(0xC00D36C4)));
  EXPECT_TRUE(IsDolbySuspectResult(static_cast<std::int32_t>(0xC00D36E6)));
  EXPECT_FALSE(IsDolbySuspectResult(static_cast<std::int32_t>(0x80004005)));
}

TEST_F(DolbyWarningTest, WarnsOncePerFileWhateverTheCaseOfItsPath) {
  const orxcore::WString path = UniquePath(u".MP4");
  WarnAboutMissingDolby(path, DolbySuspect::kCertain, recorder_.suite(), 0);
  WarnAboutMissingDolby(orxcore::ToLowerCase(path), DolbySuspect::kCertain, recorder_.suite(), 0);
  WarnAboutMissingDolby(path, DolbySuspect::kMaybe, recorder_.suite(), 0);
  const auto events = recorder_.events();
  ASSERT_EQ(events.size(), 1u);
  EXPECT_EQ(events[0].title, u"Missing Dolby audio decoder");
  EXPECT_TRUE(StartsWith(events[0].message, kCertainStart));
  EXPECT_EQ(events[0].message.substr(events[0].message.size() - path.size() - 4), u". \"" + path + u"\"");
}

TEST_F(DolbyWarningTest, CheckSwitchedOffRecordsNothing) {
  const orxcore::WString path = UniquePath(u".mp4");
  WarnAboutMissingDolby(path, DolbySuspect::kCertain, recorder_.suite(), kDolbyWarningOff);
  WarnAboutMissingDolby(path, DolbySuspect::kCertain, recorder_.suite(), kDolbyWarningOff | 1);
  EXPECT_TRUE(recorder_.events().empty());
  WarnAboutMissingDolby(path, DolbySuspect::kCertain, recorder_.suite(), 0);
  EXPECT_EQ(recorder_.events().size(), 1u);
}

TEST_F(DolbyWarningTest, FileExaminedWithoutSuiteIsNeverWarnedAboutLater) {
  const orxcore::WString path = UniquePath(u".mp4");
  WarnAboutMissingDolby(path, DolbySuspect::kCertain, nullptr, 0);
  WarnAboutMissingDolby(path, DolbySuspect::kCertain, recorder_.suite(), 0);
  EXPECT_TRUE(recorder_.events().empty());
}

TEST_F(DolbyWarningTest, TextsComeFromTheirLocalisationKeys) {
  orxcore::Localizer& localizer = orxcore::Localizer::Get();
  localizer.SetTranslation("$$$/Kelvanto/Utilities/Aurivox/WinDecoder/MissingDolby", u"sicher \"@0\"");
  localizer.SetTranslation("$$$/Kelvanto/Utilities/Aurivox/WinDecoder/MissingDolbyMaybe", u"vielleicht \"@0\"");
  localizer.SetTranslation("$$$/Kelvanto/Utilities/Aurivox/WinDecoder/MissingDolbyEventTitle", u"Titel");
  const orxcore::WString certain = UniquePath(u".mp4"), maybe = UniquePath(u".mp4");
  WarnAboutMissingDolby(certain, DolbySuspect::kCertain, recorder_.suite(), 0);
  WarnAboutMissingDolby(maybe, DolbySuspect::kMaybe, recorder_.suite(), 0);
  localizer.ClearTranslations();
  const auto events = recorder_.events();
  ASSERT_EQ(events.size(), 2u);
  EXPECT_EQ(events[0].title, u"Titel");
  EXPECT_EQ(events[0].message, u"sicher \"" + certain + u"\"");
  EXPECT_EQ(events[1].title, u"Titel");
  EXPECT_EQ(events[1].message, u"vielleicht \"" + maybe + u"\"");
}

TEST_F(DolbyWarningTest, WordingAndEventTypeFollowTheFlags) {
  struct Case {
    std::uint32_t flags;
    const char16_t* wording;
    std::int32_t eventType;
  } const cases[] = {{0, kMaybeStart, 0x402}, {1, kCertainStart, 0x403}, {5, kCertainStart, 0x402},
                     {4, kMaybeStart, 0x402}, {8, kMaybeStart, 0x403}};
  for (const Case& c : cases) {
    const orxcore::WString path = UniquePath(u".mp4");
    WarnAboutMissingDolby(path, DolbySuspect::kMaybe, recorder_.suite(), c.flags);
    const auto events = recorder_.EventsFor(path);
    ASSERT_EQ(events.size(), 1u) << "flags " << c.flags;
    EXPECT_TRUE(StartsWith(events[0].message, c.wording)) << "flags " << c.flags;
    EXPECT_EQ(events[0].eventType, c.eventType) << "flags " << c.flags;
  }
}

TEST_F(DolbyWarningTest, Ac3FilesGetTheCertainWordingAndEventType3) {
  for (std::uint32_t flags : {0u, 4u, 5u}) {
    const orxcore::WString path = UniquePath(u".ac3");
    WarnAboutMissingDolby(path, DolbySuspect::kMaybe, recorder_.suite(), flags);
    const auto events = recorder_.EventsFor(path);
    ASSERT_EQ(events.size(), 1u);
    EXPECT_TRUE(StartsWith(events[0].message, kCertainStart));
    EXPECT_EQ(events[0].eventType, 0x403);
  }
  // The extension is compared exactly: ".AC3" is not ".ac3".
  const orxcore::WString upper = UniquePath(u".AC3");
  WarnAboutMissingDolby(upper, DolbySuspect::kMaybe, recorder_.suite(), 0);
  ASSERT_EQ(recorder_.EventsFor(upper).size(), 1u);
  EXPECT_EQ(recorder_.EventsFor(upper)[0].eventType, 0x402);
}

TEST_F(DolbyWarningTest, ManyThreadsOpeningTheSameFilesWarnOncePerFile) {
  std::vector<orxcore::WString> paths;
  for (int i = 0; i < 16; ++i) paths.push_back(UniquePath(u".m4a"));
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&paths, this, t] {
      for (int round = 0; round < 4; ++round) {
        for (std::size_t i = 0; i < paths.size(); ++i) {
          const auto& path = paths[(i + t) % paths.size()];
          WarnAboutMissingDolby(t % 2 ? path : orxcore::ToLowerCase(path), DolbySuspect::kCertain,
                                recorder_.suite(), 0);
        }
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(recorder_.events().size(), paths.size());
  for (const auto& path : paths) {
    EXPECT_EQ(recorder_.EventsFor(path).size() + recorder_.EventsFor(orxcore::ToLowerCase(path)).size(), 1u);
  }
}

}  // namespace
}  // namespace Aurivox
