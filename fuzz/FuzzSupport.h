// Shared pieces of the fuzz targets: a failing check that libFuzzer reports
// as a crash, big-endian fields, and a scratch folder removed at exit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "orxcore/String.h"

#define FUZZ_CHECK(condition) \
  ((condition) ? (void)0 : ::aurivox_fuzz::CheckFailed(#condition, __FILE__, __LINE__))

namespace aurivox_fuzz {

[[noreturn]] void CheckFailed(const char* condition, const char* file, int line);

std::uint32_t ReadBigEndian32(const std::uint8_t* p);
std::uint16_t ReadBigEndian16(const std::uint8_t* p);

// A fresh folder for this process, removed when it exits.
const std::filesystem::path& ScratchFolder();

void WriteFile(const std::filesystem::path& path, const std::uint8_t* data, std::size_t size);

orxcore::WString ToWString(const std::filesystem::path& path);

}  // namespace aurivox_fuzz
