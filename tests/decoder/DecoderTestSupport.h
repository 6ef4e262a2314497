// Helpers for driving the exported Decoder as a host does.
#pragma once

#include <cstdint>
#include <vector>

#include "aurivox/Decoder.h"

namespace aurivox_test {

// Per-channel host buffers of 32-bit slots, with the pointer array the read
// record carries.
class HostBuffers {
 public:
  HostBuffers(std::uint32_t channels, std::uint32_t frames, std::uint8_t fill = 0xAB);
  float** pointers() { return pointers_.data(); }
  const std::uint8_t* bytes(std::uint32_t channel) const {
    return reinterpret_cast<const std::uint8_t*>(storage_[channel].data());
  }
  const float* floats(std::uint32_t channel) const { return storage_[channel].data(); }
  void DropChannel(std::uint32_t channel) { pointers_[channel] = nullptr; }

 private:
  std::vector<std::vector<float>> storage_;
  std::vector<float*> pointers_;
};

// One ReadAudio call; returns its result code.
int ReadBlock(Aurivox::Decoder& decoder, HostBuffers& buffers, std::uint32_t frames, std::int64_t position = 0);

// Reads the decoder's whole reported duration in blocks and returns the
// samples interleaved at `width` bytes; `result` gets the first failing code.
std::vector<std::uint8_t> DecodeInterleaved(Aurivox::Decoder& decoder, std::uint32_t channels,
                                            std::uint32_t width, std::uint32_t block, int& result);

// Bytes a sample of the decoder's format takes.
std::uint32_t SampleWidth(const Aurivox::Decoder& decoder);

}  // namespace aurivox_test
