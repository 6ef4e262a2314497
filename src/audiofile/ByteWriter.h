// Little-endian byte building for file headers.
#pragma once

#include <cstdint>
#include <cstring>
#include <vector>

namespace audiofile {

class ByteWriter {
 public:
  void U16(std::uint16_t v) { Little(v, 2); }
  void U32(std::uint32_t v) { Little(v, 4); }
  void U64(std::uint64_t v) { Little(v, 8); }
  void Tag(const char (&tag)[5]) { Bytes(tag, 4); }
  void Bytes(const void* data, std::size_t size) {
    const auto* p = static_cast<const std::uint8_t*>(data);
    bytes_.insert(bytes_.end(), p, p + size);
  }
  std::vector<std::uint8_t> Take() { return std::move(bytes_); }

 private:
  void Little(std::uint64_t v, int size) {
    for (int i = 0; i < size; ++i) bytes_.push_back(static_cast<std::uint8_t>(v >> (8 * i)));
  }
  std::vector<std::uint8_t> bytes_;
};

}  // namespace audiofile
