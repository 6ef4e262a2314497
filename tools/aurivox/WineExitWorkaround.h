// Wine's GStreamer-backed media sources can leave threads running that crash
// the process while the platform shuts down or the libraries are torn down,
// after all work is done.
#pragma once

namespace aurivox_tool {

// Under Wine: flushes the standard streams and ends the process with
// `status` at once, without platform shutdown or library teardown. Elsewhere it returns and the
// process ends normally.
void EndProcessEarlyUnderWine(int status);

}  // namespace aurivox_tool
