#include "MFPlatform.h"
#include "PlatformStartup.h"

namespace Aurivox {

bool StartPlatform() { return windowsmediafoundation::StartupPlatform(); }

bool StopPlatform() { return windowsmediafoundation::ShutdownPlatform(); }

}  // namespace Aurivox
