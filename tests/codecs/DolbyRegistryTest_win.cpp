// The media-features check reads the real registry (the test's own Wine
// prefix): with the key present nothing is sent, but the file is recorded.
#include <windows.h>

#include <gtest/gtest.h>

#include "DolbyWarning.h"
#include "RecordingErrorSuite.h"
#include "orxcore/Guid.h"

namespace Aurivox {
namespace {

constexpr char kMediaFeaturesKey[] =
    "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Setup\\WindowsFeatures\\WindowsMediaVersion";

class MediaFeaturesKey {
 public:
  MediaFeaturesKey() {
    HKEY key = nullptr;
    created_ = RegCreateKeyExA(HKEY_LOCAL_MACHINE, kMediaFeaturesKey, 0, nullptr, 0, KEY_WRITE, nullptr, &key,
                               nullptr) == ERROR_SUCCESS;
    if (created_) RegCloseKey(key);
  }
  ~MediaFeaturesKey() { RegDeleteKeyA(HKEY_LOCAL_MACHINE, kMediaFeaturesKey); }
  bool created() const { return created_; }

 private:
  bool created_ = false;
};

TEST(DolbyRegistry, KeyPresentMeansNothingSentButTheFileIsRecorded) {
  aurivox_test::RecordingErrorSuite recorder;
  const orxcore::WString path = u"C:\\clips\\" + orxcore::Guid::CreateUnique().AsString() + u".mp4";
  {
    MediaFeaturesKey key;
    ASSERT_TRUE(key.created());
    EXPECT_TRUE(MediaFeaturesPresent());
    WarnAboutMissingDolby(path, DolbySuspect::kCertain, recorder.suite(), 0);
    EXPECT_TRUE(recorder.events().empty());
  }
  EXPECT_FALSE(MediaFeaturesPresent());
  WarnAboutMissingDolby(path, DolbySuspect::kCertain, recorder.suite(), 0);
  EXPECT_TRUE(recorder.events().empty()) << "the file was recorded while the key was present";

  const orxcore::WString other = u"C:\\clips\\" + orxcore::Guid::CreateUnique().AsString() + u".mp4";
  WarnAboutMissingDolby(other, DolbySuspect::kCertain, recorder.suite(), 0);
  EXPECT_EQ(recorder.events().size(), 1u);
}

}  // namespace
}  // namespace Aurivox
