#include "WaveFormat.h"

#include "ByteWriter.h"

namespace audiofile {
namespace {

// KSDATAFORMAT_SUBTYPE_PCM and _IEEE_FLOAT share the wave-format-tag base.
orxcore::Guid SubFormatForTag(std::uint16_t tag) {
  return {tag, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71}};
}

// The WAVE speaker bit of a host channel label, or -1.
int SpeakerBitForLabel(std::uint32_t label) {
  // Labels 100..117 in WAVE bit order of their speakers.
  static constexpr std::uint32_t kLabelOfBit[18] = {100, 101, 102, 103, 104, 105, 107, 108, 106,
                                                    109, 110, 111, 112, 114, 113, 115, 117, 116};
  for (int bit = 0; bit < 18; ++bit) {
    if (kLabelOfBit[bit] == label) return bit;
  }
  return -1;
}

}  // namespace

std::vector<std::uint8_t> WaveFormat::Serialize() const {
  ByteWriter out;
  out.U16(formatTag);
  out.U16(channels);
  out.U32(samplesPerSecond);
  out.U32(averageBytesPerSecond);
  out.U16(blockAlign);
  out.U16(bitsPerSample);
  if (formatTag == kWaveFormatPcm) return out.Take();
  if (!IsExtensible()) {
    out.U16(0);
    return out.Take();
  }
  out.U16(22);  // cbSize: the extensible part
  out.U16(validBitsPerSample);
  out.U32(channelMask);
  const auto guid = subFormat.GuidToBytes();
  out.Bytes(guid.data(), guid.size());
  return out.Take();
}

std::uint32_t ChannelMaskFromLayout(const orxmediatypes::AudioChannelLayout& layout) {
  std::uint32_t mask = 0;
  int previousBit = -1;
  for (const auto& channel : layout) {
    const int bit = SpeakerBitForLabel(channel.GetLabel());
    if (bit <= previousBit) return 0;  // unlabelled, repeated or out of WAVE order
    mask |= 1u << bit;
    previousBit = bit;
  }
  return mask;
}

std::uint32_t BytesPerSample(const orxmediatypes::AudioFormat& format) {
  switch (format.GetSampleType()) {
    case orxmediatypes::kSampleTypeInt8: return 1;
    case orxmediatypes::kSampleTypeInt16: return 2;
    case orxmediatypes::kSampleTypeInt24: return 3;
    case orxmediatypes::kSampleTypeInt32: return 4;
    case orxmediatypes::kSampleTypeOther: return 4;  // 32-bit float
    default: return 0;
  }
}

bool MakeWaveFormat(const orxmediatypes::AudioFormat& format, WaveFormat& out) {
  const std::uint32_t bytes = BytesPerSample(format);
  const std::uint32_t channels = format.GetChannelCount();
  if (bytes == 0 || channels == 0 || channels > 0xFFFF || format.GetSampleRate() == 0) return false;

  const bool isFloat = format.GetSampleType() == orxmediatypes::kSampleTypeOther;
  const std::uint16_t tag = isFloat ? kWaveFormatIeeeFloat : kWaveFormatPcm;
  WaveFormat wave;
  wave.channels = static_cast<std::uint16_t>(channels);
  wave.samplesPerSecond = format.GetSampleRate();
  wave.bitsPerSample = static_cast<std::uint16_t>(bytes * 8);
  wave.blockAlign = static_cast<std::uint16_t>(bytes * channels);
  wave.averageBytesPerSecond = wave.samplesPerSecond * wave.blockAlign;
  const bool extensible = channels > 2 || (!isFloat && wave.bitsPerSample > 16);
  if (extensible) {
    wave.formatTag = kWaveFormatExtensible;
    wave.validBitsPerSample = wave.bitsPerSample;
    wave.channelMask = ChannelMaskFromLayout(format.GetChannelLayout());
    wave.subFormat = SubFormatForTag(tag);
  } else {
    wave.formatTag = tag;
  }
  out = wave;
  return true;
}

}  // namespace audiofile
