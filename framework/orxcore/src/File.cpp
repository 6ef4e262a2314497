#include "orxcore/File.h"

namespace orxcore {
namespace File {
namespace {

std::size_t LastSeparator(std::u16string_view path) {
  for (std::size_t i = path.size(); i > 0; --i) {
    if (IsSeparator(path[i - 1])) return i - 1;
  }
  return std::u16string_view::npos;
}

// "C:" starts an absolute path only where the platform has drive letters.
bool HasDrivePrefix(std::u16string_view path) {
  if (PreferredSeparator() != u'\\' || path.size() < 2 || path[1] != u':') return false;
  return (path[0] >= u'A' && path[0] <= u'Z') || (path[0] >= u'a' && path[0] <= u'z');
}

}  // namespace

WString GetFileName(std::u16string_view path) {
  const std::size_t separator = LastSeparator(path);
  return WString(separator == std::u16string_view::npos ? path : path.substr(separator + 1));
}

WString GetExtension(std::u16string_view path, bool withDot) {
  const WString name = GetFileName(path);
  const std::size_t dot = name.rfind(u'.');
  if (dot == WString::npos) return {};
  return name.substr(withDot ? dot : dot + 1);
}

WString GetTitle(std::u16string_view path) {
  WString name = GetFileName(path);
  const std::size_t dot = name.rfind(u'.');
  if (dot != WString::npos) name.erase(dot);
  return name;
}

WString GetParent(std::u16string_view path) {
  std::size_t separator = LastSeparator(path);
  if (separator == std::u16string_view::npos) {
    // "C:name" lies in the drive's current folder.
    if (HasDrivePrefix(path)) return WString(path.substr(0, 2));
    return {};
  }
  std::u16string_view parent = path.substr(0, separator);
  // Drop doubled separators ("a//b") but keep the root's own separator.
  while (!parent.empty() && IsSeparator(parent.back())) parent.remove_suffix(1);
  if (parent.empty()) return WString(path.substr(0, 1));
  if (parent.size() == 2 && HasDrivePrefix(parent)) {
    return WString(path.substr(0, 3));
  }
  return WString(parent);
}

WString Combine(std::u16string_view folder, std::u16string_view name) {
  WString out(folder);
  if (!out.empty() && !IsSeparator(out.back())) out += PreferredSeparator();
  out += name;
  return out;
}

bool IsTopLevelDir(std::u16string_view path) {
  if (path.empty()) return false;
  if (path.size() == 1 && IsSeparator(path[0])) return true;
  if (HasDrivePrefix(path)) {
    return path.size() == 2 || (path.size() == 3 && IsSeparator(path[2]));
  }
  // "\\server\share" with an optional trailing separator.
  if (path.size() > 2 && IsSeparator(path[0]) && IsSeparator(path[1]) && PreferredSeparator() == u'\\') {
    std::u16string_view rest = path.substr(2);
    if (!rest.empty() && IsSeparator(rest.back())) rest.remove_suffix(1);
    std::size_t separators = 0;
    for (char16_t c : rest) separators += IsSeparator(c) ? 1 : 0;
    return separators == 1 && !IsSeparator(rest.front());
  }
  return false;
}

}  // namespace File
}  // namespace orxcore
