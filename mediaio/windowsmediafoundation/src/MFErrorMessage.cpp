#include "MFErrorMessage.h"

#include <cstdio>

#include "orxcore/Localizer.h"

namespace windowsmediafoundation {

orxcore::WString MFErrorMessage(std::int32_t hr) {
  char hex[16];
  std::snprintf(hex, sizeof hex, "%X", static_cast<unsigned>(hr));
  return orxcore::ReplaceInString(
      orxcore::Localizer::Get().Localize(
          "$$$/windowsmediafoundation/Errors/DefaultError=Media Foundation returned error 0x@0"),
      orxcore::UTF8to16(hex));
}

}  // namespace windowsmediafoundation
