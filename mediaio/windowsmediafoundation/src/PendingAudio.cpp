#include "PendingAudio.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <stdexcept>

namespace windowsmediafoundation {
namespace {

template <std::size_t kWidth>
void DeinterleaveChannel(const std::uint8_t* source, std::size_t frames, std::size_t frameBytes,
                         std::uint8_t* destination) {
  for (std::size_t f = 0; f < frames; ++f) {
    std::memcpy(destination + f * kWidth, source + f * frameBytes, kWidth);
  }
}

template <std::size_t kWidth>
void DeinterleaveWidth(const std::uint8_t* interleaved, std::size_t frames, std::uint32_t channels,
                       float* const* channelBuffers) {
  const std::size_t frameBytes = std::size_t{channels} * kWidth;
  for (std::uint32_t n = 0; n < channels; ++n) {
    if (!channelBuffers[n]) continue;
    DeinterleaveChannel<kWidth>(interleaved + std::size_t{n} * kWidth, frames, frameBytes,
                                reinterpret_cast<std::uint8_t*>(channelBuffers[n]));
  }
}

}  // namespace

void DeinterleaveSamples(const std::uint8_t* interleaved, std::size_t frames, std::uint32_t channels,
                         std::uint32_t bytesPerSample, float* const* channelBuffers) {
  if (!interleaved || !channelBuffers || frames == 0) return;
  switch (bytesPerSample) {
    case 1: return DeinterleaveWidth<1>(interleaved, frames, channels, channelBuffers);
    case 2: return DeinterleaveWidth<2>(interleaved, frames, channels, channelBuffers);
    case 3: return DeinterleaveWidth<3>(interleaved, frames, channels, channelBuffers);
    case 4: return DeinterleaveWidth<4>(interleaved, frames, channels, channelBuffers);
    default: return;  // the client type never has another width
  }
}

bool PendingAudio::Reserve(std::int32_t frames, std::uint32_t channels, std::uint32_t bytesPerSample) {
  if (frames < 0) return false;
  // At most 2^31 x 2^32 x 2^32 bytes: checked against max_size before it can wrap.
  const std::uint64_t frameBytes = std::uint64_t{channels} * bytesPerSample;
  const std::uint64_t limit = bytes_.max_size() - bytes_.size();
  if (frameBytes != 0 && std::uint64_t(frames) > limit / frameBytes) return false;
  try {
    bytes_.reserve(bytes_.size() + static_cast<std::size_t>(frameBytes * std::uint64_t(frames)));
  } catch (const std::bad_alloc&) {
    return false;
  } catch (const std::length_error&) {
    return false;
  }
  return true;
}

bool PendingAudio::Append(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return true;
  if (!data) return false;
  try {
    bytes_.insert(bytes_.end(), data, data + size);
  } catch (const std::bad_alloc&) {
    return false;
  } catch (const std::length_error&) {
    return false;
  }
  return true;
}

std::size_t PendingAudio::AvailableFrames(std::uint32_t channels, std::uint32_t bytesPerSample) const {
  if (channels == 0 || bytesPerSample == 0) return 0;
  return bytes_.size() / bytesPerSample / channels;
}

std::size_t PendingAudio::Deliver(std::size_t frames, std::uint32_t channels, std::uint32_t bytesPerSample,
                                  float* const* channelBuffers) {
  frames = std::min(frames, AvailableFrames(channels, bytesPerSample));
  if (frames == 0) return 0;
  DeinterleaveSamples(bytes_.data(), frames, channels, bytesPerSample, channelBuffers);
  const std::size_t consumed = frames * channels * bytesPerSample;
  bytes_.erase(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(consumed));
  return frames;
}

}  // namespace windowsmediafoundation
