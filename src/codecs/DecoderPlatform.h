// The platform object of a Decoder: the platform's reader and, for a split
// camera recording, the stream that joins its segment files.
#pragma once

#include <cstdint>
#include <memory>

#include "StreamInterface.h"

#ifdef _WIN32
#include "PlatformReader_win.h"
#else
#include "PlatformReader_ffmpeg.h"
#endif

namespace Aurivox {

class DecoderPlatform {
 public:
  PlatformReader reader;
  std::uint64_t reserved = 0;
  // Shared with the reader's byte stream; empty for a plain file.
  std::shared_ptr<windowsmediafoundation::StreamInterface> stream;
};

}  // namespace Aurivox
