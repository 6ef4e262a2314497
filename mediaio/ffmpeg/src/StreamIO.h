// FFmpeg's byte I/O over a StreamInterface, so that libavformat reads the
// joined segments of a split recording as one stream.
#pragma once

#include <memory>

#include "StreamInterface.h"

extern "C" {
#include <libavformat/avio.h>
}

namespace ffmpeg {

class StreamIO {
 public:
  // Null context() when FFmpeg's buffer cannot be had.
  explicit StreamIO(std::shared_ptr<windowsmediafoundation::StreamInterface> stream);
  ~StreamIO();
  StreamIO(const StreamIO&) = delete;
  StreamIO& operator=(const StreamIO&) = delete;

  AVIOContext* context() const { return context_; }

 private:
  static int Read(void* opaque, std::uint8_t* buffer, int size);
  static std::int64_t Seek(void* opaque, std::int64_t offset, int whence);

  std::shared_ptr<windowsmediafoundation::StreamInterface> stream_;
  AVIOContext* context_ = nullptr;
};

}  // namespace ffmpeg
