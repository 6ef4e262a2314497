#include <windows.h>

#include "OpenFiles.h"

namespace aurivox_test {

// An exclusive open fails while anyone else holds the file.
bool IsOpenInThisProcess(const std::filesystem::path& path) {
  const HANDLE handle = CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return GetLastError() == ERROR_SHARING_VIOLATION;
  CloseHandle(handle);
  return false;
}

}  // namespace aurivox_test
