// File-name rules of POSIX systems: "/" separates, names compare exactly.
#include <sys/stat.h>

#include "orxcore/File.h"

namespace orxcore {
namespace File {
namespace {

bool Stat(const WString& path, struct stat& info) {
  return !path.empty() && ::stat(UTF16toStdString(path).c_str(), &info) == 0;
}

}  // namespace

bool IsSeparator(char16_t c) { return c == u'/'; }

char16_t PreferredSeparator() { return u'/'; }

int CompareFileNames(std::u16string_view a, std::u16string_view b) { return a.compare(b); }

bool Exists(const WString& path) {
  struct stat info;
  return Stat(path, info);
}

bool IsDirectory(const WString& path) {
  struct stat info;
  return Stat(path, info) && S_ISDIR(info.st_mode);
}

bool IsRegularFile(const WString& path) {
  struct stat info;
  return Stat(path, info) && S_ISREG(info.st_mode);
}

}  // namespace File
}  // namespace orxcore
