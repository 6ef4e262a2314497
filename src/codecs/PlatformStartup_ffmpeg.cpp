#include "PlatformStartup.h"

extern "C" {
#include <libavutil/log.h>
}

namespace Aurivox {

// FFmpeg needs no start-up. Its log goes to the host's standard error unless
// told otherwise; a damaged file is the module's to report, not FFmpeg's.
bool StartPlatform() {
  av_log_set_level(AV_LOG_QUIET);
  return true;
}

bool StopPlatform() { return true; }

}  // namespace Aurivox
