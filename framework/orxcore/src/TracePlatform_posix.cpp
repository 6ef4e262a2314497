#include "TracePlatform.h"

namespace orxcore {

// No debugger channel outside Windows: standard error carries the trace.
void WriteToDebugger(std::string_view) {}

}  // namespace orxcore
