#include "MediaFeaturesSwitch.h"

// Outside Windows the features check belongs to the platform half (FFmpeg's
// decoders); the warning logic's tests put this switchable one in its place.
namespace {
bool g_featuresPresent = false;
}  // namespace

bool Aurivox::MediaFeaturesPresent() { return g_featuresPresent; }

void aurivox_test::MediaFeaturesSwitch::Set(bool present) { g_featuresPresent = present; }
