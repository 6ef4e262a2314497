#include "DolbyWarning.h"

namespace Aurivox {

// Without Windows there are no media features to find.
bool MediaFeaturesPresent() { return false; }

}  // namespace Aurivox
