// Speaker masks and channel counts converted to channel layouts, checked
// against the rule read straight off the speaker-bit table.
//
// Input: records of a U32 mask and a U32 channel count (brought into
// -64..64 so that a layout stays small), until the input runs out
// (at most kMaxRecordsPerInput).
#include <algorithm>
#include <cstdint>
#include <string>

#include "ChannelMask.h"
#include "FuzzSupport.h"

namespace {

using orxmediatypes::AudioChannelDescription;
using orxmediatypes::AudioChannelLayout;

// Host label of each WAVEFORMATEXTENSIBLE speaker bit, bit 0 first.
constexpr std::uint32_t kLabelOfBit[18] = {100, 101, 102, 103, 104, 105, 107, 108, 106,
                                           109, 110, 111, 112, 114, 113, 115, 117, 116};
constexpr std::uint32_t kKnownBits = (1u << 18) - 1;

int PopCount(std::uint32_t bits) {
  int count = 0;
  for (; bits != 0; bits &= bits - 1) ++count;
  return count;
}

void CheckLayout(std::uint32_t mask, std::int32_t channelCount, const AudioChannelLayout& layout) {
  if (channelCount <= 0) {
    FUZZ_CHECK(layout.empty());
    return;
  }
  FUZZ_CHECK(layout.size() == static_cast<std::size_t>(channelCount));
  // The labels of the lowest set bits in bit order, then unlabelled channels.
  const int labelled = std::min(PopCount(mask & kKnownBits), channelCount);
  std::uint32_t remaining = mask & kKnownBits;
  for (int i = 0; i < channelCount; ++i) {
    if (i < labelled) {
      int bit = 0;
      while (!(remaining & (1u << bit))) ++bit;
      remaining &= ~(1u << bit);
      FUZZ_CHECK(layout[i].GetLabel() == kLabelOfBit[bit]);
    } else {
      FUZZ_CHECK(layout[i].GetLabel() == 0);
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  aurivox_fuzz::ByteReader input(data, size);
  for (int record = 0; record < aurivox_fuzz::kMaxRecordsPerInput; ++record) {
    const std::uint32_t mask = input.U32();
    auto channelCount = static_cast<std::int32_t>(input.U32());
    if (channelCount > 64 || channelCount < -64) channelCount %= 65;

    // Whatever the vector held before is replaced.
    AudioChannelLayout layout(static_cast<std::size_t>(mask % 5), AudioChannelDescription(999));
    windowsmediafoundation::ChannelMaskToLayout(mask, layout, channelCount);
    CheckLayout(mask, channelCount, layout);
    FUZZ_CHECK(windowsmediafoundation::ChannelLayoutFromMask(mask, channelCount) == layout);
    // Bits 18 to 31 name no speaker.
    FUZZ_CHECK(windowsmediafoundation::ChannelLayoutFromMask(mask & kKnownBits, channelCount) == layout);

    // The readable form names every channel, joined by ", ".
    const std::string description = orxmediatypes::AudioChannelLayoutDescription(layout);
    std::size_t separators = 0;
    for (std::size_t at = description.find(", "); at != std::string::npos;
         at = description.find(", ", at + 2)) {
      ++separators;
    }
    FUZZ_CHECK(layout.empty() ? separators == 0 : separators == layout.size() - 1);
    if (input.empty()) break;
  }
  return 0;
}
