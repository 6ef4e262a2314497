#include "Pellmark/ChannelLayout.h"

namespace Pellmark {

void BEToSDKAudioChannelLayout(const orxmediatypes::AudioChannelLayout& layout, std::uint32_t count,
                               QzAudioChannelLabel* labels) {
  if (!labels) return;
  for (std::uint32_t i = 0; i < count && i < layout.size(); ++i) {
    labels[i] = static_cast<QzAudioChannelLabel>(layout[i].GetLabel());
  }
}

}  // namespace Pellmark
