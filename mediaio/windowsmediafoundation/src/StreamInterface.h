// An abstract, synchronous, seekable byte stream. Media Foundation reads one
// through MFByteStream; the spanned-recording wrapper is an implementation.
#pragma once

#include <cstdint>

namespace windowsmediafoundation {

class StreamInterface {
 public:
  virtual ~StreamInterface() = default;

  // Total length of the stream in bytes.
  virtual std::uint64_t GetLength() = 0;
  // Moves to an absolute byte position; positions past the end are allowed.
  virtual void SetPosition(std::uint64_t position) = 0;
  virtual std::uint64_t GetPosition() = 0;
  // True when the position is at or past the end.
  virtual bool IsEndOfStream() = 0;
  // Bytes delivered: 0 at the end, negative on failure.
  virtual std::int64_t Read(void* buffer, std::uint32_t count) = 0;
  virtual void Close() = 0;
};

}  // namespace windowsmediafoundation
