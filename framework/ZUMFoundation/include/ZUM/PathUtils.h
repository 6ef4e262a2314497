// Path utilities of the foundation library.
#pragma once

#include "orxcore/String.h"

namespace ZUM {
namespace PathUtils {

namespace Win {
// Removes the long-path prefixes: "\\?\C:\x" gives "C:\x" and
// "\\?\UNC\server\share\x" gives "\\server\share\x". Other paths are kept.
orxcore::WString StripUNC(const orxcore::WString& path);
}  // namespace Win

// The folder for temporary files, without a trailing separator.
orxcore::WString GetTempDirectory();

// The platform's path separator as a one-character string.
orxcore::WString GetPathSeparator();

}  // namespace PathUtils
}  // namespace ZUM
