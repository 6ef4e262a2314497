#include "MediaFeaturesSwitch.h"

namespace aurivox_test {

// Outside Windows the features are never present and cannot be installed.
MediaFeaturesSwitch::MediaFeaturesSwitch(bool present) { Set(present); }
MediaFeaturesSwitch::~MediaFeaturesSwitch() = default;
void MediaFeaturesSwitch::Set(bool) {}

}  // namespace aurivox_test
