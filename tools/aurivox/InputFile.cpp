#include "InputFile.h"

#include "ZUM/File.h"
#include "orxcore/File.h"

namespace aurivox_tool {

std::string InputFileProblem(const std::string& path) {
  const orxcore::WString widePath = orxcore::UTF8to16(path);
  if (orxcore::File::IsDirectory(widePath)) return "it is a folder, not a file";
  if (!orxcore::File::Exists(widePath)) return "no such file";
  ZUM::File file;
  if (ZUM::File::Open(widePath, ZUM::kAccessRead, file, true) != ZUM::kSuccess) {
    return "no permission to read the file";
  }
  std::uint64_t size = 0;
  if (file.GetSize(size) == ZUM::kSuccess && size == 0) return "the file is empty";
  return {};
}

}  // namespace aurivox_tool
