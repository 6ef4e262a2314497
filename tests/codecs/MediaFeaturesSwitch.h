// Puts the platform's media features (the Windows media feature key that
// says the Dolby decoder is installed; Wine's prefixes carry it) in a chosen
// state for a test and puts back the state it found.
#pragma once

#include "DolbyWarning.h"

namespace aurivox_test {

class MediaFeaturesSwitch {
 public:
  explicit MediaFeaturesSwitch(bool present) : hadFeatures_(Aurivox::MediaFeaturesPresent()) { Set(present); }
  ~MediaFeaturesSwitch() { Set(hadFeatures_); }

  // Switches again within the same test.
  void Set(bool present);

 private:
  const bool hadFeatures_;
};

}  // namespace aurivox_test
