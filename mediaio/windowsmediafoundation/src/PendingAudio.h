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

// The widest vector instructions DeinterleaveSamples uses: the widest the
// CPU runs. Tests narrow it to reach the narrower steps on such a CPU too.
enum class VectorInstructions { kSse2, kAvx2, kAvx512Vbmi };
void LimitDeinterleaveInstructions(VectorInstructions widest);

// One read request's destination: a buffer a channel, filled from the front.
struct AudioRequest {
  float* const* buffers;
  std::uint32_t channels;
  std::uint32_t bytesPerSample;
  std::size_t wanted;      // frames asked for
  std::size_t filled = 0;  // frames handed out so far

  std::size_t room() const { return wanted - filled; }
};

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

  // De-interleaves as many frames as the request has room for and removes
  // them.
  void Deliver(AudioRequest& request);

  // Hands out the frames held and then those of `data`, as far as the request
  // has room, and keeps the rest of `data`. Whole frames that follow no
  // partial one go straight from `data` to the request, without a copy.
  // False, with nothing of `data` handed out or kept, when memory runs out.
  bool Take(const std::uint8_t* data, std::size_t size, AudioRequest& request);

  // Puts the frames handed out to a failed request back at the front, read
  // back from its buffers, so that the next request starts with them.
  void PutBack(AudioRequest& request);
  // Whether PutBack can restore what a request was handed: it needs every
  // buffer, and samples of a width that is copied.
  static bool CanPutBack(const AudioRequest& request);

  void Clear();
  // Bytes held, not yet handed out.
  std::size_t size() const { return bytes_.size() - start_; }
  // Bytes that can be held without reallocating.
  std::size_t capacity() const { return bytes_.capacity() - start_; }

 private:
  // Drops the bytes already handed out.
  void Compact();
  // The request's buffers from its first unfilled frame on, or null when
  // there is no memory for them.
  float* const* Unfilled(const AudioRequest& request);

  std::vector<std::uint8_t> bytes_;
  std::size_t start_ = 0;  // the first byte not yet handed out
  std::vector<float*> unfilled_;
};

}  // namespace windowsmediafoundation
