// Ending the process on POSIX systems when a bound runs out.
#include "Watchdog.h"

#include <unistd.h>

#include <cstdio>

namespace aurivox_tool {

void Watchdog::EndProcess() {
  std::fflush(stdout);
  std::fflush(stderr);
  // exit() would run static destructors and atexit handlers, which can wait
  // on the very thread that is stuck; _exit ends every thread at once.
  _exit(exitStatus_);
}

}  // namespace aurivox_tool
