#include "MFPlatform.h"

#include <mfapi.h>

#include <chrono>

#include "WineSourceReaderWorkarounds.h"

namespace windowsmediafoundation {

// The version the module is built against: SDK version 2, API version 0x70.
constexpr ULONG kMediaFoundationVersion = 0x20070;
static_assert(kMediaFoundationVersion == MF_VERSION, "the module targets MF_VERSION 0x20070");

bool StartupPlatform() { return SUCCEEDED(MFStartup(kMediaFoundationVersion, MFSTARTUP_FULL)); }

bool ShutdownPlatform() {
  // A reader creation still running inside Media Foundation would crash if
  // the platform went away under it: give it a moment, else leave the
  // platform running, which the process's end cleans up.
  if (!WaitForAbandonedCreations(std::chrono::seconds(5))) return false;
  return SUCCEEDED(MFShutdown());
}

}  // namespace windowsmediafoundation
