#include "WineExitWorkaround.h"

namespace aurivox_tool {

// No Wine here: the process ends normally.
void EndProcessEarlyUnderWine(int) {}

}  // namespace aurivox_tool
