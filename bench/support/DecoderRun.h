// The exported decoder read as a host reads it: from the start to the length
// it reports, in 4,096-frame blocks, a slice at a time.
#pragma once

#include <cstdint>
#include <vector>

#include "aurivox/Decoder.h"
#include "orxcore/String.h"

namespace bench {

class DecoderRun {
 public:
  static constexpr std::uint32_t kBlockFrames = 4096;
  // A turn when timed side by side with a reference: 22 s of 48 kHz audio,
  // some tens of milliseconds of decoding, long enough that taking turns
  // costs neither side more than the other.
  static constexpr std::int64_t kSliceFrames = 256 * std::int64_t{kBlockFrames};

  explicit DecoderRun(const orxcore::WString& path);

  // The result of the open, then of the last read.
  int result() const { return result_; }
  bool done() const { return result_ != Aurivox::kResultSuccess || frames_ >= length_; }
  // Reads the next `frames` (whole blocks, at most to the length); false
  // once finished or failed.
  bool Read(std::int64_t frames);

  std::int64_t frames() const { return frames_; }  // read so far
  std::uint32_t channels() const { return channels_; }
  std::uint32_t width() const { return width_; }   // bytes a sample
  std::uint32_t rate() const { return rate_; }

 private:
  Aurivox::Decoder decoder_;
  int result_;
  std::int64_t length_ = 0;
  std::int64_t frames_ = 0;
  std::uint32_t channels_ = 0;
  std::uint32_t width_ = 0;
  std::uint32_t rate_ = 0;
  std::vector<std::vector<float>> buffers_;
  std::vector<float*> pointers_;
};

}  // namespace bench
