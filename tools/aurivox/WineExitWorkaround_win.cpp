#include "WineExitWorkaround.h"

#include <windows.h>

#include <cstdio>

namespace aurivox_tool {
namespace {

bool RunningUnderWine() {
  const HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
  return ntdll && GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

}  // namespace

void EndProcessEarlyUnderWine(int status) {
  if (!RunningUnderWine()) return;
  // Every output file is closed. What is left is Media Foundation's shutdown
  // and the libraries' teardown, and under Wine both can crash now and then:
  // a GStreamer source, most often one that failed on a damaged file, keeps
  // threads that still call into the platform (a defect of Wine; the module
  // has released all it made). Nothing of ours is lost by skipping them.
  std::fflush(nullptr);
  TerminateProcess(GetCurrentProcess(), static_cast<UINT>(status));
}

}  // namespace aurivox_tool
