#include "TempDir.h"

#include <fstream>
#include <random>

namespace aurivox_test {

TempDir::TempDir() {
  std::random_device device;
  do {
    path_ = std::filesystem::temp_directory_path() / ("aurivox-test-" + std::to_string(device()));
  } while (!std::filesystem::create_directory(path_));
}

TempDir::~TempDir() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path TempDir::Path(const std::string& relative) const {
  return (path_ / std::filesystem::u8path(relative)).make_preferred();
}

orxcore::WString TempDir::WPath(const std::string& relative) const { return ToWString(Path(relative)); }

std::filesystem::path TempDir::WriteFile(const std::string& relative,
                                         const std::vector<std::uint8_t>& bytes) const {
  const auto file = Path(relative);
  std::filesystem::create_directories(file.parent_path());
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  return file;
}

std::filesystem::path TempDir::WriteFile(const std::string& relative, const std::string& text) const {
  return WriteFile(relative, std::vector<std::uint8_t>(text.begin(), text.end()));
}

std::filesystem::path TempDir::MakeDir(const std::string& relative) const {
  std::filesystem::create_directories(Path(relative));
  return Path(relative);
}

orxcore::WString ToWString(const std::filesystem::path& path) { return orxcore::UTF8to16(path.u8string()); }

std::vector<std::uint8_t> ReadFileBytes(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::vector<std::uint8_t>(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace aurivox_test
