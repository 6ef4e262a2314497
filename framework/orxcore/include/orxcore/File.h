// Path and folder helpers of the host framework. Paths are wide strings; the
// separators and whether names ignore case follow the platform.
#pragma once

#include <string_view>

#include "orxcore/String.h"

namespace orxcore {
namespace File {

// True for the characters that separate folders: "\" and "/" on Windows,
// "/" elsewhere.
bool IsSeparator(char16_t c);

// The platform's preferred separator.
char16_t PreferredSeparator();

// The last component of the path (after the last separator).
WString GetFileName(std::u16string_view path);

// The file name's extension: from its last "." (included when `withDot`) to
// the end; empty when the name has no ".".
WString GetExtension(std::u16string_view path, bool withDot);

// The file name without its last extension: "a.b.mts" gives "a.b".
WString GetTitle(std::u16string_view path);

// The folder that holds `path`, without a trailing separator unless it is a
// root ("C:\", "/"). Empty when the path has no folder part.
WString GetParent(std::u16string_view path);

// `folder` and `name` joined by one separator.
WString Combine(std::u16string_view folder, std::u16string_view name);

// True for the root of a volume: "/", "C:\", "C:", "\\server\share".
bool IsTopLevelDir(std::u16string_view path);

// Compares two names as the platform's file system does: without regard to
// case on Windows, exactly elsewhere. Returns <0, 0 or >0.
int CompareFileNames(std::u16string_view a, std::u16string_view b);

bool Exists(const WString& path);
bool IsDirectory(const WString& path);
bool IsRegularFile(const WString& path);

}  // namespace File
}  // namespace orxcore
