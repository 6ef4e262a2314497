#include "DecoderTestSupport.h"

#include <algorithm>
#include <cstring>

namespace aurivox_test {

HostBuffers::HostBuffers(std::uint32_t channels, std::uint32_t frames, std::uint8_t fill)
    : storage_(channels, std::vector<float>(frames)) {
  for (auto& channel : storage_) {
    std::memset(channel.data(), fill, channel.size() * sizeof(float));
    pointers_.push_back(channel.data());
  }
}

int ReadBlock(Aurivox::Decoder& decoder, HostBuffers& buffers, std::uint32_t frames, std::int64_t position) {
  imImportAudioRec7 request{};
  request.position = position;
  request.size = frames;
  request.buffer = buffers.pointers();
  return decoder.ReadAudio(&request);
}

std::vector<std::uint8_t> DecodeInterleaved(Aurivox::Decoder& decoder, std::uint32_t channels,
                                            std::uint32_t width, std::uint32_t block, int& result) {
  std::vector<std::uint8_t> out;
  result = Aurivox::kResultSuccess;
  HostBuffers buffers(channels, block);
  const std::int64_t total = decoder.GetDuration();
  for (std::int64_t done = 0; done < total;) {
    const auto frames = static_cast<std::uint32_t>(std::min<std::int64_t>(block, total - done));
    result = ReadBlock(decoder, buffers, frames, 0);  // the position is not used
    if (result != Aurivox::kResultSuccess) break;
    for (std::uint32_t f = 0; f < frames; ++f) {
      for (std::uint32_t c = 0; c < channels; ++c) {
        const std::uint8_t* sample = buffers.bytes(c) + std::size_t{f} * width;
        out.insert(out.end(), sample, sample + width);
      }
    }
    done += frames;
  }
  return out;
}

std::uint32_t SampleWidth(const Aurivox::Decoder& decoder) {
  orxmediatypes::AudioFormat format;
  decoder.GetAudioFormat(format);
  switch (format.GetSampleType()) {
    case 10: return 1;
    case 20: return 2;
    case 30: return 3;
    default: return 4;
  }
}

}  // namespace aurivox_test
