#include "OpenFileCounter.h"

#include <fcntl.h>

#include <cstdarg>
#include <set>

extern "C" int __real_open(const char* path, int flags, ...);
extern "C" int __real_close(int fd);

namespace aurivox_fuzz {
namespace {

// Never destroyed: files may still be closed by exit handlers.
std::set<std::string>& TrackedPaths() {
  static auto* paths = new std::set<std::string>;
  return *paths;
}

std::set<int>& OpenDescriptors() {
  static auto* descriptors = new std::set<int>;
  return *descriptors;
}

}  // namespace

void OpenFileCounter::Track(const std::string& path) { TrackedPaths().insert(path); }

int OpenFileCounter::Count() { return static_cast<int>(OpenDescriptors().size()); }

}  // namespace aurivox_fuzz

extern "C" int __wrap_open(const char* path, int flags, ...) {
  mode_t mode = 0;
  if ((flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE) {
    va_list arguments;
    va_start(arguments, flags);
    mode = static_cast<mode_t>(va_arg(arguments, int));
    va_end(arguments);
  }
  const int fd = __real_open(path, flags, mode);
  if (fd >= 0 && aurivox_fuzz::TrackedPaths().count(path) != 0) aurivox_fuzz::OpenDescriptors().insert(fd);
  return fd;
}

extern "C" int __wrap_close(int fd) {
  aurivox_fuzz::OpenDescriptors().erase(fd);
  return __real_close(fd);
}
