// The platform object of a Decoder: the Media Foundation reader and, for a
// split camera recording, the stream that joins its segment files.
#pragma once

#include <cstdint>
#include <memory>

#include "MFReader.h"
#include "StreamInterface.h"

namespace Aurivox {

class DecoderPlatform {
 public:
  windowsmediafoundation::MFReader reader;
  std::uint64_t reserved = 0;
  // Shared with the reader's byte stream; empty for a plain file.
  std::shared_ptr<windowsmediafoundation::StreamInterface> stream;
};

}  // namespace Aurivox
