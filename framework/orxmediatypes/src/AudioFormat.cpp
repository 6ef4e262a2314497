#include "orxmediatypes/AudioFormat.h"

#include <array>

namespace orxmediatypes {

std::string AudioChannelLabelName(std::uint32_t label) {
  // Labels 100 to 117, in label order.
  static constexpr std::array<const char*, 18> kNames = {
      "L",   "R",   "C",   "LFE", "Ls",  "Rs",  "Cs",  "Lc",  "Rc",
      "Lsd", "Rsd", "Tc",  "Tfl", "Tfr", "Tfc", "Tbl", "Tbr", "Tbc"};
  if (label == 0) return "Discrete";
  if (label >= 100 && label < 100 + kNames.size()) return kNames[label - 100];
  return "Label " + std::to_string(label);
}

std::string AudioChannelLayoutDescription(const AudioChannelLayout& layout) {
  std::string text;
  for (const AudioChannelDescription& channel : layout) {
    if (!text.empty()) text += ", ";
    text += AudioChannelLabelName(channel.GetLabel());
  }
  return text;
}

AudioFormat AudioFormat::CreateAudioFormat(const AudioChannelLayout& layout, std::uint32_t sampleRate) {
  AudioFormat format;
  format.SetChannelLayout(layout);
  format.SetSampleRate(sampleRate);
  return format;
}

}  // namespace orxmediatypes
