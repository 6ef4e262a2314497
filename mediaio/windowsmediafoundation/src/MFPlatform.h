// Start-up and shut-down of Media Foundation for the whole module.
#pragma once

namespace windowsmediafoundation {

// MFStartup with the SDK's MF_VERSION and full start-up; true on success.
bool StartupPlatform();

// MFShutdown; true on success.
bool ShutdownPlatform();

}  // namespace windowsmediafoundation
