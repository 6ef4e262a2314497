// The encoder's shared logic: temporary-file naming, read-back of what each
// write added, and clean-up. The platform operations are in EncoderPlatform.cpp.
#include "aurivox/Encoder.h"

#include <cstdint>

#include "ZUM/PathUtils.h"
#include "orxcore/Guid.h"

namespace Aurivox {

Encoder::Encoder() { OS_Init(); }

Encoder::~Encoder() { Terminate(); }

void Encoder::Terminate() {
  OS_Terminate();
  temporaryFile.Close();
  if (!temporaryPath.empty()) ZUM::File::Delete(temporaryPath);
}

void Encoder::OS_Init() {
  if (!platformState) platformState = std::make_unique<std::uint8_t>(0);
}

void Encoder::OS_Terminate() { platformState.reset(); }

bool Encoder::Initialize(std::int32_t format, std::int32_t a, std::int32_t b, std::int32_t c,
                         std::int32_t d, std::int32_t e, std::int32_t f) {
  initialised = true;
  if (!MakeTemporaryPath(format)) return false;
  return Initialize(temporaryPath, format, a, b, c, d, e, f);
}

bool Encoder::MakeTemporaryPath(std::int32_t format) {
  const std::set<std::string> extensions = GetSupportedExtensions(format);
  if (extensions.empty()) return false;
  orxcore::WString path = ZUM::PathUtils::GetTempDirectory();
  path += ZUM::PathUtils::GetPathSeparator();
  path += orxcore::Guid::CreateUnique().AsString();
  path += u".";
  path += orxcore::UTF8to16(*extensions.begin());
  temporaryPath = std::move(path);
  return true;
}

bool Encoder::GetEncodedBuffer(const std::uint8_t* data, std::uint32_t size, std::vector<std::uint8_t>& out) {
  if (!initialised) return false;
  if (!temporaryFile.IsOpen() && ZUM::File::Open(temporaryPath, ZUM::kAccessRead, temporaryFile, true) < 0) {
    return false;
  }
  std::uint64_t before = 0;
  ZUM::File::SizeOnDisk(temporaryPath, before);
  if (!WriteSampleBytes(data, size)) return false;

  std::uint64_t after = before;
  ZUM::File::SizeOnDisk(temporaryPath, after);
  // A file that shrank added nothing, and one read cannot hand back more
  // than 4 GiB: neither may wrap round to a huge size.
  if (after < before) after = before;
  if (after - before > UINT32_MAX) return false;
  out.resize(static_cast<std::size_t>(after - before));
  if (temporaryFile.SetFilePointer(static_cast<std::int64_t>(before), ZUM::kFromBeginning) < 0) return false;
  std::uint32_t read = 0;
  temporaryFile.Read(out.data(), static_cast<std::uint32_t>(out.size()), read);
  if (read < out.size()) out.resize(read);
  return true;
}

}  // namespace Aurivox
