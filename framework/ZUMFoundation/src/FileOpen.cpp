#include "ZUM/File.h"

namespace ZUM {

std::int32_t File::Open(const WString& path, std::uint32_t access, File& file, bool mustExist) {
  const std::uint32_t disposition = (mustExist || !(access & kAccessWrite)) ? kOpenExisting : kOpenAlways;
  return file.Create(path, access, kShareRead, disposition, kAttributeNormal, 0);
}

}  // namespace ZUM
