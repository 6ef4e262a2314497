#include "DecoderTestSupport.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace aurivox_test {

HostBuffers::HostBuffers(std::uint32_t channels, std::uint32_t frames)
    : storage_(channels, std::vector<float>(frames)) {
  for (auto& channel : storage_) {
    std::memset(channel.data(), 0xAB, channel.size() * sizeof(float));
    pointers_.push_back(channel.data());
  }
}

Bytes HostBuffers::bytes(std::uint32_t channel, std::size_t count) const {
  const auto* first = reinterpret_cast<const std::uint8_t*>(storage_[channel].data());
  return Bytes(first, first + count);
}

int ReadBlock(Aurivox::Decoder& decoder, HostBuffers& buffers, std::uint32_t frames, std::int64_t position) {
  imImportAudioRec7 request{};
  request.position = position;
  request.size = frames;
  request.buffer = buffers.pointers();
  return decoder.ReadAudio(&request);
}

std::uint32_t SampleWidth(const Aurivox::Decoder& decoder) {
  orxmediatypes::AudioFormat format;
  decoder.GetAudioFormat(format);
  // Sample types 10, 20 and 30 are 8, 16 and 24-bit integers; the rest take 4 bytes.
  const std::int32_t type = format.GetSampleType();
  return type >= 10 && type <= 30 ? static_cast<std::uint32_t>(type / 10) : 4;
}

Bytes DecodeInterleaved(Aurivox::Decoder& decoder, int& result) {
  constexpr std::uint32_t kBlock = 4096;
  const std::uint32_t width = SampleWidth(decoder);
  orxmediatypes::AudioFormat format;
  decoder.GetAudioFormat(format);
  const std::uint32_t channels = format.GetChannelCount();
  HostBuffers buffers(channels, kBlock);
  const std::int64_t total = decoder.GetDuration();
  Bytes out;
  result = Aurivox::kResultSuccess;
  for (std::int64_t done = 0; done < total; done += kBlock) {
    const auto frames = static_cast<std::uint32_t>(std::min<std::int64_t>(kBlock, total - done));
    result = ReadBlock(decoder, buffers, frames);
    if (result != Aurivox::kResultSuccess) break;
    for (std::uint32_t f = 0; f < frames; ++f) {
      for (std::uint32_t c = 0; c < channels; ++c) {
        const auto* sample = reinterpret_cast<const std::uint8_t*>(buffers.floats(c)) + std::size_t{f} * width;
        out.insert(out.end(), sample, sample + width);
      }
    }
  }
  return out;
}

Bytes ChannelOf(const Bytes& interleaved, std::uint32_t channels, std::uint32_t width, std::uint32_t channel,
                std::uint32_t first, std::uint32_t count) {
  Bytes out;
  for (std::uint32_t f = first; f < first + count; ++f) {
    const auto at = interleaved.begin() + static_cast<std::ptrdiff_t>((std::size_t{f} * channels + channel) * width);
    out.insert(out.end(), at, at + width);
  }
  return out;
}

void WriteSplitRecording(const RecordingTree& tree, const Bytes& source, const std::vector<std::size_t>& cuts) {
  std::size_t begin = 0;
  for (std::size_t i = 0; i <= cuts.size(); ++i) {
    const std::size_t end = i < cuts.size() ? cuts[i] : source.size();
    tree.dir().WriteFile("BDMV/STREAM/0001" + std::to_string(i + 1) + ".MTS",
                         Bytes(source.begin() + static_cast<std::ptrdiff_t>(begin),
                               source.begin() + static_cast<std::ptrdiff_t>(end)));
    begin = end;
  }
  tree.dir().WriteFile("BDMV/STREAM/00010.MTS", "another shot");
  tree.WritePlaylist("00011.MPL",
                     {{"00010", kNewShot}, {"00011", kNewShot}, {"00012", kSameShot}, {"00013", kSameShot}});
}

}  // namespace aurivox_test
