// File-name rules of Windows: "\" and "/" both separate, names compare
// without regard to case as NTFS does.
#include <windows.h>

#include "orxcore/File.h"
#include "orxcore/WideChar.h"

namespace orxcore {
namespace File {
namespace {

DWORD Attributes(const WString& path) {
  return path.empty() ? INVALID_FILE_ATTRIBUTES : GetFileAttributesW(AsWide(path));
}

}  // namespace

bool IsSeparator(char16_t c) { return c == u'\\' || c == u'/'; }

char16_t PreferredSeparator() { return u'\\'; }

int CompareFileNames(std::u16string_view a, std::u16string_view b) {
  const int result = CompareStringOrdinal(reinterpret_cast<const wchar_t*>(a.data()),
                                          static_cast<int>(a.size()),
                                          reinterpret_cast<const wchar_t*>(b.data()),
                                          static_cast<int>(b.size()), TRUE);
  return result == 0 ? a.compare(b) : result - CSTR_EQUAL;
}

bool Exists(const WString& path) { return Attributes(path) != INVALID_FILE_ATTRIBUTES; }

bool IsDirectory(const WString& path) {
  const DWORD attributes = Attributes(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool IsRegularFile(const WString& path) {
  const DWORD attributes = Attributes(path);
  return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

}  // namespace File
}  // namespace orxcore
