// Puts the platform's media features (the Windows media feature key that
// says the Dolby decoder is installed) in a chosen state for a test and
// restores what was there afterwards. Wine's prefixes carry the key.
#pragma once

namespace aurivox_test {

class MediaFeaturesSwitch {
 public:
  explicit MediaFeaturesSwitch(bool present);
  ~MediaFeaturesSwitch();
  MediaFeaturesSwitch(const MediaFeaturesSwitch&) = delete;
  MediaFeaturesSwitch& operator=(const MediaFeaturesSwitch&) = delete;

  // Switches again within the same test.
  void Set(bool present);

 private:
  bool hadKey_ = false;
  bool hadValue_ = false;
  wchar_t value_[64] = {};
};

}  // namespace aurivox_test
