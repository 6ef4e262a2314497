#include "ZUM/PathUtils.h"

#include "orxcore/File.h"

namespace ZUM {
namespace PathUtils {

namespace Win {
orxcore::WString StripUNC(const orxcore::WString& path) {
  static const std::u16string_view kUncPrefix = u"\\\\?\\UNC\\";
  static const std::u16string_view kLongPrefix = u"\\\\?\\";
  const std::u16string_view view(path);
  if (view.substr(0, kUncPrefix.size()) == kUncPrefix) {
    return u"\\\\" + orxcore::WString(view.substr(kUncPrefix.size()));
  }
  if (view.substr(0, kLongPrefix.size()) == kLongPrefix) {
    return orxcore::WString(view.substr(kLongPrefix.size()));
  }
  return path;
}
}  // namespace Win

orxcore::WString GetPathSeparator() {
  return orxcore::WString(1, orxcore::File::PreferredSeparator());
}

}  // namespace PathUtils
}  // namespace ZUM
