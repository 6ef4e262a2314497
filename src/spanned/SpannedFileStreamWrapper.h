// Presents a SpannedFile as a StreamInterface, so that a recording split into
// several segment files reaches Media Foundation as one stream.
#pragma once

#include <cstdint>
#include <vector>

#include "SpannedFile.h"
#include "StreamInterface.h"
#include "orxcore/String.h"

namespace Aurivox {

class SpannedFileStreamWrapper : public windowsmediafoundation::StreamInterface {
 public:
  // `segments` in playing order; no file is opened until Open.
  explicit SpannedFileStreamWrapper(const std::vector<orxcore::WString>& segments);
  // Closes the handle if Close has not.
  ~SpannedFileStreamWrapper() override;
  SpannedFileStreamWrapper(const SpannedFileStreamWrapper&) = delete;
  SpannedFileStreamWrapper& operator=(const SpannedFileStreamWrapper&) = delete;

  // Takes the handle that reads go through and returns it. When a segment
  // cannot be opened that is SpannedFile::kInvalidHandle, and reads deliver
  // nothing. While a handle is held, a further call returns the same one.
  std::uint32_t Open();

  std::uint64_t GetLength() override;
  void SetPosition(std::uint64_t position) override;
  std::uint64_t GetPosition() override;
  bool IsEndOfStream() override;
  std::int64_t Read(void* buffer, std::uint32_t count) override;
  // Lets go of the handle; the length stays known. A second call does nothing.
  void Close() override;

 private:
  std::uint32_t handle_ = 0;  // 0 while none is held
  SpannedFile file_;
  std::uint64_t position_ = 0;
};

}  // namespace Aurivox
