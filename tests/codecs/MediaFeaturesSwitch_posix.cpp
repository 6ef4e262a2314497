#include "DolbyWarning.h"
#include "MediaFeaturesSwitch.h"

// Outside Windows the features check belongs to the platform half (FFmpeg's
// decoders); the warning logic's tests put this switchable one in its place.
namespace {
bool g_featuresPresent = false;
}  // namespace

namespace Aurivox {
bool MediaFeaturesPresent() { return g_featuresPresent; }
}  // namespace Aurivox

namespace aurivox_test {

MediaFeaturesSwitch::MediaFeaturesSwitch(bool present) : hadFeatures_(g_featuresPresent) { Set(present); }
void MediaFeaturesSwitch::Set(bool present) { g_featuresPresent = present; }

}  // namespace aurivox_test
