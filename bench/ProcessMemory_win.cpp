#include "ProcessMemory.h"

#include <windows.h>
#include <psapi.h>

#include <vector>

namespace bench {
namespace {

// Closes a handle when it goes out of scope.
class ScopedHandle {
 public:
  explicit ScopedHandle(HANDLE handle = nullptr) : handle_(handle) {}
  ~ScopedHandle() {
    if (handle_) CloseHandle(handle_);
  }
  ScopedHandle(const ScopedHandle&) = delete;
  ScopedHandle& operator=(const ScopedHandle&) = delete;
  HANDLE get() const { return handle_; }
  HANDLE* receive() { return &handle_; }
  void reset() {
    if (handle_) CloseHandle(handle_);
    handle_ = nullptr;
  }

 private:
  HANDLE handle_;
};

std::wstring OwnPath() {
  std::vector<wchar_t> path(MAX_PATH);
  for (;;) {
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length == 0) return {};
    if (length < path.size()) return std::wstring(path.data(), length);
    path.resize(path.size() * 2);
  }
}

}  // namespace

MemoryCounters SampleMemoryCounters() {
  MemoryCounters counters;
  PROCESS_MEMORY_COUNTERS memory{};
  memory.cb = sizeof memory;
  if (!GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory)) return counters;
  counters.workingSet = memory.WorkingSetSize;
  counters.peakWorkingSet = memory.PeakWorkingSetSize;
  counters.pagefileUsage = memory.PagefileUsage;
  counters.peakPagefileUsage = memory.PeakPagefileUsage;
  return counters;
}

bool RunSelf(const std::wstring& arguments, std::string& output) {
  SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
  ScopedHandle readEnd, writeEnd;
  if (!CreatePipe(readEnd.receive(), writeEnd.receive(), &inherit, 0)) return false;
  SetHandleInformation(readEnd.get(), HANDLE_FLAG_INHERIT, 0);

  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = writeEnd.get();
  startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
  startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
  std::wstring commandLine = L"\"" + OwnPath() + L"\" " + arguments;
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                      &process)) {
    return false;
  }
  ScopedHandle processHandle(process.hProcess), threadHandle(process.hThread);
  writeEnd.reset();  // the child holds the only write end now

  char buffer[4096];
  DWORD got = 0;
  while (ReadFile(readEnd.get(), buffer, sizeof buffer, &got, nullptr) && got > 0) output.append(buffer, got);
  WaitForSingleObject(processHandle.get(), INFINITE);
  DWORD status = 1;
  GetExitCodeProcess(processHandle.get(), &status);
  return status == 0;
}

}  // namespace bench
