// A handle-based source of bytes outside the host's own file layer. Every
// operation does nothing by default; implementations override what they serve.
#pragma once

#include <cstdint>

namespace Aurivox {

class MCExternalCBBase {
 public:
  virtual ~MCExternalCBBase() = default;

  // Total size in bytes.
  virtual std::int64_t GetSize() { return 0; }
  // A new handle, or 0xFFFFFFFF when the source cannot be opened.
  virtual std::uint32_t Open() { return 0; }
  virtual void Close(std::uint32_t handle) {}
  // Moves the handle to an absolute byte position.
  virtual void Seek(std::uint32_t handle, std::int64_t position) {}
  // Reads up to `count` bytes at the handle's position; returns the count read.
  virtual std::int32_t Read(std::uint32_t handle, void* buffer, std::int32_t count) { return 0; }
};

}  // namespace Aurivox
