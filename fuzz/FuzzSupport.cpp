#include "FuzzSupport.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

namespace aurivox_fuzz {

void CheckFailed(const char* condition, const char* file, int line) {
  std::fprintf(stderr, "%s:%d: check failed: %s\n", file, line, condition);
  std::abort();
}

std::uint32_t ReadBigEndian32(const std::uint8_t* p) {
  return std::uint32_t{p[0]} << 24 | std::uint32_t{p[1]} << 16 | std::uint32_t{p[2]} << 8 | p[3];
}

std::uint16_t ReadBigEndian16(const std::uint8_t* p) { return static_cast<std::uint16_t>(p[0] << 8 | p[1]); }

const std::filesystem::path& ScratchFolder() {
  // Never destroyed, so that the exit handler still finds it.
  static const auto* folder = [] {
    // Every input is written to files here, so a RAM-backed folder keeps the
    // rate up; the temp folder serves where there is none.
    std::error_code noShm;
    const std::filesystem::path base = std::filesystem::is_directory("/dev/shm", noShm)
                                           ? std::filesystem::path("/dev/shm")
                                           : std::filesystem::temp_directory_path();
    auto* path = new std::filesystem::path(base / ("aurivox-fuzz-" + std::to_string(::getpid())));
    std::filesystem::create_directories(*path);
    std::atexit([] {
      std::error_code ignored;
      std::filesystem::remove_all(ScratchFolder(), ignored);
    });
    return path;
  }();
  return *folder;
}

void WriteFile(const std::filesystem::path& path, const std::uint8_t* data, std::size_t size) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  FUZZ_CHECK(out.good());
}

orxcore::WString ToWString(const std::filesystem::path& path) { return orxcore::UTF8to16(path.u8string()); }

std::uint16_t ByteReader::U16() {
  const std::uint16_t low = Byte();
  return static_cast<std::uint16_t>(low | Byte() << 8);
}

std::uint32_t ByteReader::U32() {
  const std::uint32_t low = U16();
  return low | std::uint32_t{U16()} << 16;
}

std::uint64_t ByteReader::U64() {
  const std::uint64_t low = U32();
  return low | std::uint64_t{U32()} << 32;
}

}  // namespace aurivox_fuzz
