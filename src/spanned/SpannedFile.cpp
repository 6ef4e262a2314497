#include "SpannedFile.h"

#include <boost/make_shared.hpp>
#include <memory>

#include "ZUM/File.h"

namespace Aurivox {
namespace {

constexpr std::int32_t kLockTimeoutMs = 60000;

}  // namespace

struct SpannedFile::FileState {
  orxcore::WString path;
  std::uint64_t size = 0;
  std::unique_ptr<ZUM::File> file;  // null while the segment is closed
  // Where the file pointer stands, when known: a read that continues where
  // the last one ended needs no seek.
  std::int64_t filePointer = -1;
};

SpannedFile::SpannedFile(const std::vector<orxcore::WString>& paths) {
  for (const orxcore::WString& path : paths) {
    auto state = boost::make_shared<FileState>();
    state->path = path;
    ZUM::File::SizeOnDisk(path, state->size);  // stays 0 when the size cannot be read
    // An empty segment starts where the next one does, which replaces it.
    segments_[totalSize_] = state;
    totalSize_ += static_cast<std::int64_t>(state->size);
  }
}

SpannedFile::~SpannedFile() {
  orxcore::ScopedRecursiveLock lock(mutex_, kLockTimeoutMs);
  CloseSegmentFiles();
}

std::int64_t SpannedFile::GetSize() { return totalSize_; }

std::uint32_t SpannedFile::Open() {
  orxcore::ScopedRecursiveLock lock(mutex_, kLockTimeoutMs);
  if (!lock.locked()) return kInvalidHandle;
  if (handles_.empty() && !OpenSegmentFiles()) return kInvalidHandle;
  const std::uint32_t handle = nextHandle_++;
  handles_[static_cast<std::int32_t>(handle)] = 0;
  return handle;
}

void SpannedFile::Close(std::uint32_t handle) {
  orxcore::ScopedRecursiveLock lock(mutex_, kLockTimeoutMs);
  if (!lock.locked()) return;
  handles_.erase(static_cast<std::int32_t>(handle));
  if (handles_.empty()) CloseSegmentFiles();
}

void SpannedFile::Seek(std::uint32_t handle, std::int64_t position) {
  orxcore::ScopedRecursiveLock lock(mutex_, kLockTimeoutMs);
  if (!lock.locked()) return;
  const auto entry = FindHandle(handle);
  if (entry != handles_.end()) entry->second = position;
}

std::int32_t SpannedFile::Read(std::uint32_t handle, void* buffer, std::int32_t count) {
  orxcore::ScopedRecursiveLock lock(mutex_, kLockTimeoutMs);
  if (!lock.locked()) return 0;
  const auto entry = FindHandle(handle);
  if (entry == handles_.end() || !buffer || count < 1) return 0;

  auto* out = static_cast<std::uint8_t*>(buffer);
  std::int32_t total = 0;
  std::int32_t remaining = count;
  std::int32_t n;
  do {
    n = ReadAt(entry->second, out, remaining);
    total += n;
    out += n;
    remaining -= n;
    entry->second += n;
  } while (n >= 1 && remaining >= 1);
  return total;
}

SpannedFile::Handles::iterator SpannedFile::FindHandle(std::uint32_t handle) {
  const auto key = static_cast<std::int32_t>(handle);
  return key > 0 ? handles_.find(key) : handles_.end();
}

bool SpannedFile::OpenSegmentFiles() {
  for (auto& [offset, state] : segments_) {
    auto file = std::make_unique<ZUM::File>();
    // Read-only, and shared so that a camera or editor may go on writing.
    if (file->Create(state->path, ZUM::kAccessRead, ZUM::kShareRead, ZUM::kOpenExisting,
                     ZUM::kAttributeNormal, 0) < 0) {
      CloseSegmentFiles();
      return false;
    }
    state->file = std::move(file);
    state->filePointer = 0;
  }
  return true;
}

void SpannedFile::CloseSegmentFiles() {
  for (auto& [offset, state] : segments_) {
    if (!state->file) continue;
    state->file->Close();
    state->file.reset();
  }
}

std::int32_t SpannedFile::ReadAt(std::int64_t offset, std::uint8_t* buffer, std::int32_t count) {
  if (segments_.empty()) return 0;
  // The last segment that starts at or before the offset; the first one for
  // an offset before every segment.
  auto segment = segments_.upper_bound(offset);
  if (segment != segments_.begin()) --segment;
  const boost::shared_ptr<FileState> state = segment->second;  // held for the read
  const std::int64_t local = offset - segment->first;
  if (!state->file || local < 0 || static_cast<std::uint64_t>(local) >= state->size) return 0;
  if (state->filePointer != local) {
    state->filePointer = -1;
    if (state->file->SetFilePointer(local, ZUM::kFromBeginning) < 0) return 0;
  }
  std::uint32_t bytesRead = 0;
  if (state->file->Read(buffer, static_cast<std::uint32_t>(count), bytesRead) < 0) {
    state->filePointer = -1;
    return 0;
  }
  state->filePointer = local + bytesRead;
  return static_cast<std::int32_t>(bytesRead);
}

}  // namespace Aurivox
