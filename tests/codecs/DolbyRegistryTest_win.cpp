// The media-features check reads the real registry (the test's own Wine
// prefix): with the key present nothing is sent, but the file is recorded.
#include <windows.h>

#include <gtest/gtest.h>

#include "DolbyWarning.h"
#include "MediaFeaturesSwitch.h"
#include "RecordingErrorSuite.h"
#include "orxcore/Guid.h"

namespace Aurivox {
namespace {

TEST(DolbyRegistry, KeyPresentMeansNothingSentButTheFileIsRecorded) {
  aurivox_test::RecordingErrorSuite recorder;
  const orxcore::WString path = u"C:\\clips\\" + orxcore::Guid::CreateUnique().AsString() + u".mp4";
  aurivox_test::MediaFeaturesSwitch features(true);
  ASSERT_TRUE(MediaFeaturesPresent());
  WarnAboutMissingDolby(path, DolbySuspect::kCertain, recorder.suite(), 0);
  features.Set(false);
  ASSERT_FALSE(MediaFeaturesPresent());
  WarnAboutMissingDolby(path, DolbySuspect::kCertain, recorder.suite(), 0);
  EXPECT_TRUE(recorder.events().empty()) << "the file was recorded while the key was present";
  WarnAboutMissingDolby(path + u"2", DolbySuspect::kCertain, recorder.suite(), 0);
  EXPECT_EQ(recorder.events().size(), 1u);
}

}  // namespace
}  // namespace Aurivox
