// WAVE format descriptions (WAVEFORMATEX / WAVEFORMATEXTENSIBLE) for a host
// audio format, laid out as in a file so they need no Windows headers.
#pragma once

#include <cstdint>
#include <vector>

#include "orxcore/Guid.h"
#include "orxmediatypes/AudioFormat.h"

namespace audiofile {

constexpr std::uint16_t kWaveFormatPcm = 0x0001;
constexpr std::uint16_t kWaveFormatIeeeFloat = 0x0003;
constexpr std::uint16_t kWaveFormatExtensible = 0xFFFE;

struct WaveFormat {
  std::uint16_t formatTag = 0;
  std::uint16_t channels = 0;
  std::uint32_t samplesPerSecond = 0;
  std::uint32_t averageBytesPerSecond = 0;
  std::uint16_t blockAlign = 0;
  std::uint16_t bitsPerSample = 0;
  // The extensible part, present when formatTag is kWaveFormatExtensible.
  std::uint16_t validBitsPerSample = 0;
  std::uint32_t channelMask = 0;
  orxcore::Guid subFormat;

  bool IsExtensible() const { return formatTag == kWaveFormatExtensible; }
  // The bytes of a "fmt " chunk's body: 16 for plain PCM, 18 for plain float
  // (with a zero cbSize), 40 for the extensible form.
  std::vector<std::uint8_t> Serialize() const;
};

// The speaker mask of a layout: the WAVE speaker bit of each labelled
// channel. 0 (no speaker assignment) when a channel is unlabelled, a label
// repeats or the channels are not in the WAVE order of their bits, since a
// mask can only describe channels in that order.
std::uint32_t ChannelMaskFromLayout(const orxmediatypes::AudioChannelLayout& layout);

// The WAVE format for samples of `format` as the decoder delivers them:
// integer PCM of 8, 16, 24 or 32 bits, or 32-bit float for sample type 0.
// The plain form serves mono and stereo up to 16 bits; wider samples and
// more channels use the extensible form, as Windows expects. False for a
// sample type WAVE cannot hold or a format without channels or rate.
bool MakeWaveFormat(const orxmediatypes::AudioFormat& format, WaveFormat& out);

// Bytes a sample of `format` takes in the decoder's output (1 to 4).
std::uint32_t BytesPerSample(const orxmediatypes::AudioFormat& format);

}  // namespace audiofile
