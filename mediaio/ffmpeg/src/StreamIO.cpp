#include "StreamIO.h"

extern "C" {
#include <libavutil/error.h>
#include <libavutil/mem.h>
}

namespace ffmpeg {
namespace {

// Large enough that a 192-byte-packet transport stream is read in few calls.
constexpr int kBufferBytes = 64 * 1024;

}  // namespace

StreamIO::StreamIO(std::shared_ptr<windowsmediafoundation::StreamInterface> stream) : stream_(std::move(stream)) {
  auto* buffer = static_cast<unsigned char*>(av_malloc(kBufferBytes));
  if (!buffer) return;
  context_ = avio_alloc_context(buffer, kBufferBytes, /*write_flag=*/0, this, &StreamIO::Read, nullptr,
                                &StreamIO::Seek);
  if (!context_) av_free(buffer);
}

StreamIO::~StreamIO() {
  if (!context_) return;
  av_freep(&context_->buffer);
  avio_context_free(&context_);
}

int StreamIO::Read(void* opaque, std::uint8_t* buffer, int size) {
  auto* self = static_cast<StreamIO*>(opaque);
  if (size <= 0) return 0;
  const std::int64_t read = self->stream_->Read(buffer, static_cast<std::uint32_t>(size));
  if (read < 0) return AVERROR(EIO);
  if (read == 0) return AVERROR_EOF;
  return static_cast<int>(read);
}

std::int64_t StreamIO::Seek(void* opaque, std::int64_t offset, int whence) {
  auto& stream = *static_cast<StreamIO*>(opaque)->stream_;
  const std::int64_t length = static_cast<std::int64_t>(stream.GetLength());
  std::int64_t target = 0;
  switch (whence & ~AVSEEK_FORCE) {
    case AVSEEK_SIZE: return length;
    case SEEK_SET: target = offset; break;
    case SEEK_CUR: target = static_cast<std::int64_t>(stream.GetPosition()) + offset; break;
    case SEEK_END: target = length + offset; break;
    default: return AVERROR(EINVAL);
  }
  if (target < 0) return AVERROR(EINVAL);
  stream.SetPosition(static_cast<std::uint64_t>(target));
  return target;
}

}  // namespace ffmpeg
