// Reads the first audio stream of a file or a byte stream with FFmpeg's
// libraries, with the operations of the Media Foundation reader: open,
// format queries, and sequential reads handed out one buffer a channel.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "FFmpegHandles.h"
#include "StreamIO.h"
#include "StreamInterface.h"
#include "orxcore/Guid.h"
#include "orxcore/String.h"
#include "orxmediatypes/AudioFormat.h"

namespace ffmpeg {

// How an open went: class 0 fine (audio or none at all), 1 the file could
// not be opened or parsed; the FFmpeg error and its text.
struct OpenStatus {
  std::int32_t statusClass = 0;
  int error = 0;
  orxcore::WString message;
};
constexpr std::int32_t kOpenStatusFine = 0;
constexpr std::int32_t kOpenStatusReaderFailed = 1;

class FFReader {
 public:
  FFReader() = default;
  FFReader(const FFReader&) = delete;
  FFReader& operator=(const FFReader&) = delete;

  // True when the file has an audio stream, usable or not; false with a
  // fine status for a file without audio.
  bool OpenFromPath(const orxcore::WString& path, OpenStatus& status);
  bool OpenFromStream(const std::shared_ptr<windowsmediafoundation::StreamInterface>& stream,
                      OpenStatus& status);

  // True when the audio stream can be decoded.
  bool hasAudio() const { return decoder_ != nullptr; }
  std::uint32_t samplesPerSecond() const { return samplesPerSecond_; }
  std::uint32_t bitsPerSample() const { return bitsPerSample_; }
  std::uint32_t channels() const { return channels_; }
  std::uint32_t channelMask() const { return channelMask_; }
  orxmediatypes::AudioChannelLayout channelLayout() const;
  bool endOfStream() const { return endOfStream_; }

  // The subtype Windows would report for the file's own encoding.
  orxcore::Guid GetSubAudioFormatType() const { return subtype_; }
  orxcore::WString GetAudioFormatDescription() const;
  // The container's duration in frames, truncated; 0 when it is unknown.
  std::int64_t GetEstimatedAudioSampleCount() const { return estimatedFrames_; }

  // Reads up to `count` frames in sequence (`position` is not used) into one
  // buffer a channel at `bytesPerSample` bytes a sample; `count` becomes the
  // frames delivered, fewer only at the end. False when reading failed.
  bool ReadAudioSamples(std::int64_t position, std::int32_t& count, float** channelBuffers,
                        std::uint32_t bytesPerSample);

 private:
  bool Open(const char* url, OpenStatus& status);
  void Close();
  void SetUpAudio(const AVStream& stream);
  // Decodes until a frame is held or the stream ends; false on failure.
  bool DecodeMore();
  // Holds the frame just received; false when it cannot be delivered.
  bool KeepFrame();
  // Hands out held frames into the host's buffers from frame `done` up to
  // `end` or the last one held; returns where it stopped.
  std::size_t Deliver(std::size_t done, std::size_t end, float* const* channelBuffers);
  // Hands out up to `frames` of what a failed read had taken; returns how many.
  std::size_t DeliverCarried(std::size_t frames, float* const* channelBuffers);
  // Keeps the first `frames` frames of the host's buffers for the next read.
  void Carry(std::size_t frames, float* const* channelBuffers);

  std::unique_ptr<StreamIO> streamIO_;
  FormatContextPtr format_;
  CodecContextPtr decoder_;
  PacketPtr packet_;
  FramePtr frame_;
  int streamIndex_ = -1;
  bool draining_ = false;
  bool endOfStream_ = false;

  orxcore::Guid subtype_;
  std::uint32_t samplesPerSecond_ = 0;
  std::uint32_t bitsPerSample_ = 0;
  std::uint32_t channels_ = 0;
  std::uint32_t channelMask_ = 0;
  bool integerPcm_ = false;
  std::int64_t estimatedFrames_ = 0;
  // The last decoded frame, held by reference until it is handed out: each
  // sample is converted once, straight into the host's buffers.
  // `frontOffset_` of its frames are handed out; `heldFrames_` are left.
  std::size_t frontOffset_ = 0;
  std::size_t heldFrames_ = 0;
  // A failed read hands nothing out: what it had put in the host's buffers
  // comes first in the next read, one byte vector a channel.
  std::vector<std::vector<std::uint8_t>> carried_;
  std::size_t carriedFrames_ = 0;
  std::vector<float*> destinations_;
};

}  // namespace ffmpeg
