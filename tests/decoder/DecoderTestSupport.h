// Helpers for driving the exported Decoder as a host does.
#pragma once

#include <cstdint>
#include <vector>

#include "PlaylistBuilder.h"
#include "aurivox/Decoder.h"

namespace aurivox_test {

using Bytes = std::vector<std::uint8_t>;

// Per-channel host buffers of 32-bit slots filled with 0xAB, with the
// pointer array the read record carries.
class HostBuffers {
 public:
  HostBuffers(std::uint32_t channels, std::uint32_t frames);
  float** pointers() { return pointers_.data(); }
  // The first `count` bytes of a channel.
  Bytes bytes(std::uint32_t channel, std::size_t count) const;
  const float* floats(std::uint32_t channel) const { return storage_[channel].data(); }
  void DropChannel(std::uint32_t channel) { pointers_[channel] = nullptr; }

 private:
  std::vector<std::vector<float>> storage_;
  std::vector<float*> pointers_;
};

// One ReadAudio call; returns its result code.
int ReadBlock(Aurivox::Decoder& decoder, HostBuffers& buffers, std::uint32_t frames, std::int64_t position = 0);

// Bytes a sample of the decoder's format takes.
std::uint32_t SampleWidth(const Aurivox::Decoder& decoder);

// Reads the decoder's whole reported duration in blocks and returns the
// samples interleaved; `result` gets the first failing code.
Bytes DecodeInterleaved(Aurivox::Decoder& decoder, int& result);

// Frames [first, first + count) of one channel of interleaved samples.
Bytes ChannelOf(const Bytes& interleaved, std::uint32_t channels, std::uint32_t width, std::uint32_t channel,
                std::uint32_t first, std::uint32_t count);

// Writes `source` split at `cuts` into segments 00011.. (one shot) after an
// unrelated shot 00010, and a playlist 00011 naming them all (playlists with
// numbers above a clip's are never searched).
void WriteSplitRecording(const RecordingTree& tree, const Bytes& source, const std::vector<std::size_t>& cuts);

}  // namespace aurivox_test
