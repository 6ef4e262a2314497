#include "MFPlatform.h"

#include <mfapi.h>

namespace windowsmediafoundation {

// The version the module is built against: SDK version 2, API version 0x70.
constexpr ULONG kMediaFoundationVersion = 0x20070;
static_assert(kMediaFoundationVersion == MF_VERSION, "the module targets MF_VERSION 0x20070");

bool StartupPlatform() { return SUCCEEDED(MFStartup(kMediaFoundationVersion, MFSTARTUP_FULL)); }

bool ShutdownPlatform() { return SUCCEEDED(MFShutdown()); }

}  // namespace windowsmediafoundation
