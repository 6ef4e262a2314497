// Ending the process on Windows when a bound runs out.
#include "Watchdog.h"

#include <windows.h>

#include <cstdio>

namespace aurivox_tool {

void Watchdog::EndProcess() {
  std::fflush(stdout);
  std::fflush(stderr);
  // ExitProcess would run the modules' detach code, which can wait on the
  // very thread that is stuck.
  TerminateProcess(GetCurrentProcess(), static_cast<UINT>(exitStatus_));
  for (;;) Sleep(INFINITE);
}

}  // namespace aurivox_tool
