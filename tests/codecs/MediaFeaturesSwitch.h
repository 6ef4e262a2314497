// Puts the platform's media features (the Windows media feature key that
// says the Dolby decoder is installed; Wine's prefixes carry it) in a chosen
// state for a test and puts back the state it found.
#pragma once

namespace aurivox_test {

class MediaFeaturesSwitch {
 public:
  explicit MediaFeaturesSwitch(bool present);
  ~MediaFeaturesSwitch() { Set(hadFeatures_); }

  // Switches again within the same test.
  void Set(bool present);

 private:
  bool hadFeatures_ = false;
};

}  // namespace aurivox_test
