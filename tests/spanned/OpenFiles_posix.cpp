#include <system_error>

#include "OpenFiles.h"

namespace aurivox_test {

bool IsOpenInThisProcess(const std::filesystem::path& path) {
  const auto wanted = std::filesystem::weakly_canonical(path);
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd", error)) {
    if (std::filesystem::read_symlink(entry.path(), error) == wanted) return true;
  }
  return false;
}

}  // namespace aurivox_test
