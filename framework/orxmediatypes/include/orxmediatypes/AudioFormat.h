// Audio format of the host's media-types library: sample rate, sample type
// and channel layout.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace orxmediatypes {

// One channel of a layout, identified by its host label code: 100 to 117 for
// the speaker positions, 0 for an unlabelled (discrete) channel.
class AudioChannelDescription {
 public:
  AudioChannelDescription() = default;
  explicit AudioChannelDescription(std::uint32_t label) : label_(label) {}

  std::uint32_t GetLabel() const { return label_; }

  friend bool operator==(const AudioChannelDescription& a, const AudioChannelDescription& b) {
    return a.label_ == b.label_;
  }
  friend bool operator!=(const AudioChannelDescription& a, const AudioChannelDescription& b) {
    return !(a == b);
  }

 private:
  std::uint32_t label_ = 0;
};

using AudioChannelLayout = std::vector<AudioChannelDescription>;

// Readable text for a layout, one short name a channel joined by ", ":
// "L, R, C, LFE, Ls, Rs" for 5.1; "Discrete" for label 0.
std::string AudioChannelLayoutDescription(const AudioChannelLayout& layout);

// The short name of one label code ("L", "LFE", "Discrete", or "Label N").
std::string AudioChannelLabelName(std::uint32_t label);

// Sample types: 0 for anything but integer PCM (floating point included).
constexpr std::int32_t kSampleTypeOther = 0;
constexpr std::int32_t kSampleTypeInt8 = 10;
constexpr std::int32_t kSampleTypeInt16 = 20;
constexpr std::int32_t kSampleTypeInt24 = 30;
constexpr std::int32_t kSampleTypeInt32 = 40;

class AudioFormat {
 public:
  AudioFormat() = default;

  static AudioFormat CreateAudioFormat(const AudioChannelLayout& layout, std::uint32_t sampleRate);

  void SetSampleRate(std::uint32_t rate) { sampleRate_ = rate; }
  void SetSampleType(std::int32_t type) { sampleType_ = type; }
  void SetChannelLayout(AudioChannelLayout layout) { layout_ = std::move(layout); }

  std::uint32_t GetSampleRate() const { return sampleRate_; }
  std::int32_t GetSampleType() const { return sampleType_; }
  const AudioChannelLayout& GetChannelLayout() const { return layout_; }
  std::uint32_t GetChannelCount() const { return static_cast<std::uint32_t>(layout_.size()); }

 private:
  std::uint32_t sampleRate_ = 0;
  std::int32_t sampleType_ = kSampleTypeOther;
  AudioChannelLayout layout_;
};

}  // namespace orxmediatypes
