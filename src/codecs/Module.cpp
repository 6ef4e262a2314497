// Module start and stop: a plain counter starts the platform's media
// libraries at the first Initialize and stops them at the matching last
// Terminate.
#include "aurivox/Aurivox.h"

#include <cstdint>

#include "PlatformStartup.h"

namespace Aurivox {
namespace {

// Not atomic: the host initialises and terminates the module from one thread.
std::uint32_t gInitializeCount = 0;

}  // namespace

void Initialize() {
  if (gInitializeCount++ == 0) {
    // A failed start-up shows later, as failing opens; nothing to report here.
    StartPlatform();
  }
}

void Terminate() {
  if (--gInitializeCount == 0) StopPlatform();
}

}  // namespace Aurivox
