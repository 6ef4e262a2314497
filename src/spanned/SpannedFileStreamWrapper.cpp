#include "SpannedFileStreamWrapper.h"

#include <algorithm>
#include <limits>

namespace Aurivox {

SpannedFileStreamWrapper::SpannedFileStreamWrapper(const std::vector<orxcore::WString>& segments)
    : file_(segments) {}

SpannedFileStreamWrapper::~SpannedFileStreamWrapper() { Close(); }

std::uint32_t SpannedFileStreamWrapper::Open() {
  if (handle_ == 0) handle_ = file_.Open();
  return handle_;
}

std::uint64_t SpannedFileStreamWrapper::GetLength() { return static_cast<std::uint64_t>(file_.GetSize()); }

void SpannedFileStreamWrapper::SetPosition(std::uint64_t position) {
  file_.Seek(handle_, static_cast<std::int64_t>(position));
  position_ = position;
}

std::uint64_t SpannedFileStreamWrapper::GetPosition() { return position_; }

bool SpannedFileStreamWrapper::IsEndOfStream() { return position_ >= GetLength(); }

std::int64_t SpannedFileStreamWrapper::Read(void* buffer, std::uint32_t count) {
  // SpannedFile counts in signed 32 bits; a larger request is served short,
  // as any stream may be.
  const auto wanted = static_cast<std::int32_t>(
      std::min<std::uint32_t>(count, std::numeric_limits<std::int32_t>::max()));
  const std::int32_t n = file_.Read(handle_, buffer, wanted);
  if (n > 0) position_ += static_cast<std::uint64_t>(n);
  return n;
}

void SpannedFileStreamWrapper::Close() {
  if (handle_ == 0) return;
  file_.Close(handle_);
  handle_ = 0;
}

}  // namespace Aurivox
