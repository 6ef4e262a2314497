// A platform half for the encoder that really encodes: it offers ".tst" and
// ".abc", and "encodes" by appending every byte twice to the temporary file.
// It lets the shared logic be tested end to end, and defines only what that
// logic calls.
#include "aurivox/Encoder.h"

namespace Aurivox {

bool Encoder::Initialize(const orxcore::WString& path, std::int32_t, std::int32_t, std::int32_t,
                         std::int32_t, std::int32_t, std::int32_t, std::int32_t) {
  ZUM::File file;
  return file.Create(path, ZUM::kAccessWrite, ZUM::kShareRead, ZUM::kCreateAlways, ZUM::kAttributeNormal, 0) >= 0;
}

bool Encoder::WriteSampleBytes(const std::uint8_t* data, std::uint32_t size) {
  ZUM::File file;
  std::vector<std::uint8_t> doubled;
  for (std::uint32_t i = 0; i < size; ++i) doubled.insert(doubled.end(), 2, data[i]);
  std::uint32_t written = 0;
  return file.Create(temporaryPath, ZUM::kAccessWrite, ZUM::kShareRead | ZUM::kShareWrite, ZUM::kOpenExisting,
                     ZUM::kAttributeNormal, 0) >= 0 &&
         file.SetFilePointer(0, ZUM::kFromEnd) >= 0 &&
         file.Write(doubled.data(), static_cast<std::uint32_t>(doubled.size()), written) >= 0;
}

std::set<std::string> Encoder::GetSupportedExtensions(std::int32_t format) {
  return format == 1 ? std::set<std::string>{"tst", "abc"} : std::set<std::string>{};
}

}  // namespace Aurivox
