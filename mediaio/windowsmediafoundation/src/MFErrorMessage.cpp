#include "MFErrorMessage.h"

#include <cstdio>

#include "MFErrorTable.h"
#include "orxcore/Localizer.h"

namespace windowsmediafoundation {
namespace {

constexpr char kDefaultErrorKey[] =
    "$$$/windowsmediafoundation/Errors/DefaultError=Media Foundation returned error 0x@0";

// Upper-case hexadecimal without leading zeros; the "0x" is in the text.
orxcore::WString Hexadecimal(std::uint32_t code) {
  char hex[9];
  const int length = std::snprintf(hex, sizeof hex, "%X", static_cast<unsigned>(code));
  return orxcore::AsciiToUTF16(hex, static_cast<std::size_t>(length));
}

}  // namespace

orxcore::WString MFErrorMessage(std::int32_t hr) {
  const auto code = static_cast<std::uint32_t>(hr);
  const orxcore::Localizer& localizer = orxcore::Localizer::Get();
  if (const MFErrorEntry* entry = FindMFErrorEntry(code)) return localizer.Localize(entry->key);
  return orxcore::ReplaceInString(localizer.Localize(kDefaultErrorKey), Hexadecimal(code));
}

void TraceMFError(orxcore::TraceSite& site, std::int32_t hr) {
  if (!site.Enabled()) return;
  site.WriteLine("Error: " + orxcore::UTF16toStdString(MFErrorMessage(hr)));
}

}  // namespace windowsmediafoundation
