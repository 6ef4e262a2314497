// A fresh folder for one test, removed with everything in it afterwards.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "orxcore/String.h"

namespace aurivox_test {

class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::filesystem::path& path() const { return path_; }

  // `relative` below the folder, as a native path and as a framework string.
  std::filesystem::path Path(const std::string& relative) const;
  orxcore::WString WPath(const std::string& relative) const;

  // Writes `bytes` to `relative`, creating the folders on the way.
  std::filesystem::path WriteFile(const std::string& relative, const std::vector<std::uint8_t>& bytes) const;
  std::filesystem::path WriteFile(const std::string& relative, const std::string& text) const;
  std::filesystem::path MakeDir(const std::string& relative) const;

 private:
  std::filesystem::path path_;
};

// The framework string for a native path.
orxcore::WString ToWString(const std::filesystem::path& path);

// Reads a whole file; empty when it cannot be read.
std::vector<std::uint8_t> ReadFileBytes(const std::filesystem::path& path);

}  // namespace aurivox_test
