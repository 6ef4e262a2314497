// Decoded audio that no caller has taken yet, and the de-interleaving that
// hands it out one buffer a channel.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace windowsmediafoundation {

// Copies `frames` interleaved frames of `channels` samples into one buffer a
// channel: sample (f x channels + n) goes to position f of buffer n. Samples
// keep their width of 1 to 4 bytes and their byte order (a 3-byte sample stays
// three packed bytes); the buffers are the host's float arrays, used as raw
// storage. Other widths copy nothing. Null buffers are skipped.
void DeinterleaveSamples(const std::uint8_t* interleaved, std::size_t frames, std::uint32_t channels,
                         std::uint32_t bytesPerSample, float* const* channelBuffers);

// The widest vector instructions DeinterleaveSamples uses: AVX2 where the
// CPU runs it. Tests narrow it to reach the SSE2 steps on such a CPU too.
enum class VectorInstructions { kSse2, kAvx2 };
void LimitDeinterleaveInstructions(VectorInstructions widest);

// Interleaved frames in the client format, appended as the decoder delivers
// them and consumed from the front. May end in a partial frame. Consumed
// bytes are skipped by an offset and dropped only now and then, so a large
// decoded buffer read in small requests is not moved once a request.
class PendingAudio {
 public:
  // Grows the capacity to the bytes held plus `frames` frames, so that the
  // appends of one request do not reallocate. False when that much memory
  // cannot be had or the request is negative.
  bool Reserve(std::int32_t frames, std::uint32_t channels, std::uint32_t bytesPerSample);

  // Appends decoded bytes; false, with nothing appended, when memory runs out.
  bool Append(const std::uint8_t* data, std::size_t size);

  // Whole frames held; 0 when the frame size is 0.
  std::size_t AvailableFrames(std::uint32_t channels, std::uint32_t bytesPerSample) const;

  // De-interleaves the first `frames` frames (at most the available ones)
  // into `channelBuffers` and removes them. Returns the frames removed.
  std::size_t Deliver(std::size_t frames, std::uint32_t channels, std::uint32_t bytesPerSample,
                      float* const* channelBuffers);

  void Clear();
  // Bytes held, not yet handed out.
  std::size_t size() const { return bytes_.size() - start_; }
  // Bytes that can be held without reallocating.
  std::size_t capacity() const { return bytes_.capacity() - start_; }

 private:
  // Drops the bytes already handed out.
  void Compact();

  std::vector<std::uint8_t> bytes_;
  std::size_t start_ = 0;  // the first byte not yet handed out
};

}  // namespace windowsmediafoundation
