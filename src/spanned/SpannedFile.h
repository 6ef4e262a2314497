// Segment files joined end to end and read as one byte sequence, through
// numbered handles that each keep their own position.
#pragma once

#include <boost/shared_ptr.hpp>
#include <cstdint>
#include <map>
#include <vector>

#include "MCExternalCBBase.h"
#include "orxcore/RecursiveMutex.h"
#include "orxcore/String.h"

namespace Aurivox {

class SpannedFile : public MCExternalCBBase {
 public:
  // What Open returns when a segment file cannot be opened.
  static constexpr std::uint32_t kInvalidHandle = 0xFFFFFFFF;

  // `paths` in playing order. Sizes are taken now; a segment whose size
  // cannot be read, or that is empty, drops out.
  explicit SpannedFile(const std::vector<orxcore::WString>& paths);
  ~SpannedFile() override;
  SpannedFile(const SpannedFile&) = delete;
  SpannedFile& operator=(const SpannedFile&) = delete;

  std::int64_t GetSize() override;
  // The first handle opens every segment file; later ones share them.
  std::uint32_t Open() override;
  // Closing the last handle closes every segment file.
  void Close(std::uint32_t handle) override;
  // Any position is accepted; reads outside the segments deliver nothing.
  void Seek(std::uint32_t handle, std::int64_t position) override;
  // Continues across segment boundaries until `count` bytes or the end.
  std::int32_t Read(std::uint32_t handle, void* buffer, std::int32_t count) override;

 private:
  struct FileState;
  using Handles = std::map<std::int32_t, std::int64_t>;

  Handles::iterator FindHandle(std::uint32_t handle);
  bool OpenSegmentFiles();
  void CloseSegmentFiles();
  // Reads from the one segment that holds `offset`.
  std::int32_t ReadAt(std::int64_t offset, std::uint8_t* buffer, std::int32_t count);

  std::map<std::int64_t, boost::shared_ptr<FileState>> segments_;  // by start offset
  std::int64_t totalSize_ = 0;
  Handles handles_;  // handle to position
  std::uint32_t nextHandle_ = 1;  // only grows, so handles are never reused
  orxcore::RecursiveMutex mutex_;
};

}  // namespace Aurivox
