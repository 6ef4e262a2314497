#include "MFErrorTable.h"

#include <algorithm>

#include "MFErrorTableRows.h"

namespace windowsmediafoundation {
namespace {

constexpr bool StrictlyAscending() {
  for (std::size_t i = 1; i < kMFErrorRows.size(); ++i) {
    if (kMFErrorRows[i - 1].code >= kMFErrorRows[i].code) return false;
  }
  return true;
}
static_assert(StrictlyAscending(), "FindMFErrorEntry searches the codes by value");

}  // namespace

const std::array<MFErrorEntry, kMFErrorEntryCount>& MFErrorEntries() { return kMFErrorRows; }

const MFErrorEntry* FindMFErrorEntry(std::uint32_t code) {
  const auto found = std::lower_bound(
      kMFErrorRows.begin(), kMFErrorRows.end(), code,
      [](const MFErrorEntry& entry, std::uint32_t value) { return entry.code < value; });
  return found != kMFErrorRows.end() && found->code == code ? &*found : nullptr;
}

}  // namespace windowsmediafoundation
