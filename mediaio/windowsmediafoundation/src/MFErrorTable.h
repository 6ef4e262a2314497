// The result codes that have a message of their own, each with its
// localisation key "$$$/windowsmediafoundation/Errors/<NAME>=<English text>".
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace windowsmediafoundation {

struct MFErrorEntry {
  std::uint32_t code;
  std::string_view key;
};

constexpr std::size_t kMFErrorEntryCount = 309;

// Every named code once, in ascending order of its 32-bit value.
const std::array<MFErrorEntry, kMFErrorEntryCount>& MFErrorEntries();

// The entry of exactly `code`, or null: no facility or severity rule applies.
const MFErrorEntry* FindMFErrorEntry(std::uint32_t code);

}  // namespace windowsmediafoundation
