// Conversions between the Windows GUID and orxcore::Guid, field by field.
#pragma once

#include <guiddef.h>

#include <algorithm>
#include <iterator>

#include "orxcore/Guid.h"

namespace windowsmediafoundation {

inline orxcore::Guid ToOrxGuid(const GUID& guid) {
  orxcore::Guid result;
  result.data1 = guid.Data1;
  result.data2 = guid.Data2;
  result.data3 = guid.Data3;
  std::copy(std::begin(guid.Data4), std::end(guid.Data4), result.data4.begin());
  return result;
}

inline GUID ToWindowsGuid(const orxcore::Guid& guid) {
  GUID result;
  result.Data1 = guid.data1;
  result.Data2 = guid.data2;
  result.Data3 = guid.data3;
  std::copy(guid.data4.begin(), guid.data4.end(), std::begin(result.Data4));
  return result;
}

}  // namespace windowsmediafoundation
