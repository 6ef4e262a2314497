#include "ChannelMask.h"

#include <array>

namespace windowsmediafoundation {
namespace {

// Host label codes of the speaker bits SPEAKER_FRONT_LEFT (bit 0) to
// SPEAKER_TOP_BACK_RIGHT (bit 17). The host numbers its labels in its own
// order, so bits 6 to 8, 13 and 14, 16 and 17 do not map to ascending codes.
constexpr std::array<std::uint32_t, 18> kSpeakerLabels = {
    100, 101, 102, 103, 104, 105,  // FL, FR, FC, LFE, BL, BR
    107, 108, 106,                 // FLC, FRC, BC
    109, 110, 111,                 // SL, SR, TC
    112, 114, 113,                 // TFL, TFC, TFR
    115, 117, 116};                // TBL, TBC, TBR

constexpr std::uint32_t kUnlabelled = 0;

}  // namespace

void ChannelMaskToLayout(std::uint32_t mask, orxmediatypes::AudioChannelLayout& layout,
                         std::int32_t channelCount) {
  layout.clear();
  if (channelCount <= 0) return;
  const auto count = static_cast<std::size_t>(channelCount);
  layout.reserve(count);
  for (std::size_t bit = 0; bit < kSpeakerLabels.size() && layout.size() < count; ++bit) {
    if (mask & (std::uint32_t{1} << bit)) layout.emplace_back(kSpeakerLabels[bit]);
  }
  layout.resize(count, orxmediatypes::AudioChannelDescription(kUnlabelled));
}

orxmediatypes::AudioChannelLayout ChannelLayoutFromMask(std::uint32_t mask, std::int32_t channelCount) {
  orxmediatypes::AudioChannelLayout layout;
  ChannelMaskToLayout(mask, layout, channelCount);
  return layout;
}

}  // namespace windowsmediafoundation
