// The foundation library's file: a handle-based file with explicit result
// codes (0 success, negative failure) in place of exceptions.
#pragma once

#include <cstdint>

#include "orxcore/String.h"

namespace ZUM {

using orxcore::WString;

// Access flags.
constexpr std::uint32_t kAccessRead = 1;
constexpr std::uint32_t kAccessWrite = 2;
// Share modes: what other openers of the file may do meanwhile.
constexpr std::uint32_t kShareRead = 1;
constexpr std::uint32_t kShareWrite = 2;
constexpr std::uint32_t kShareDelete = 4;
// Creation dispositions.
constexpr std::uint32_t kCreateNew = 1;
constexpr std::uint32_t kCreateAlways = 2;
constexpr std::uint32_t kOpenAlways = 4;
constexpr std::uint32_t kOpenExisting = 8;
constexpr std::uint32_t kTruncateExisting = 16;
// Attributes.
constexpr std::uint32_t kAttributeNormal = 1;

// Result codes.
constexpr std::int32_t kSuccess = 0;
constexpr std::int32_t kErrorGeneric = -1;
constexpr std::int32_t kErrorNotFound = -2;
constexpr std::int32_t kErrorAccessDenied = -3;
constexpr std::int32_t kErrorInvalidArgument = -4;
constexpr std::int32_t kErrorNotOpen = -5;
constexpr std::int32_t kErrorExists = -6;

enum SeekOrigin : std::int32_t { kFromBeginning = 0, kFromCurrent = 1, kFromEnd = 2 };

class File {
 public:
  File() = default;
  ~File();
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  // Opens or creates `path`. A file opened without write access always lets
  // other processes go on reading and writing it, whatever `shareMode` says.
  std::int32_t Create(const WString& path, std::uint32_t access, std::uint32_t shareMode,
                      std::uint32_t disposition, std::uint32_t attributes, std::uint32_t flags);

  // Opens `path` into `file`: an existing file when `mustExist`, else creating
  // it when missing (with write access).
  static std::int32_t Open(const WString& path, std::uint32_t access, File& file, bool mustExist);

  // Reads up to `count` bytes; `bytesRead` tells how many came (0 at the end).
  std::int32_t Read(void* buffer, std::uint32_t count, std::uint32_t& bytesRead);
  std::int32_t Write(const void* data, std::uint32_t count, std::uint32_t& bytesWritten);
  std::int32_t SetFilePointer(std::int64_t offset, SeekOrigin origin);
  std::int32_t GetSize(std::uint64_t& size) const;

  // The size of the file at `path`; `size` is written only on success.
  static std::int32_t SizeOnDisk(const WString& path, std::uint64_t& size);
  static std::int32_t Delete(const WString& path);

  void Close();
  bool IsOpen() const;

 private:
  std::intptr_t handle_ = -1;  // a Windows HANDLE or a POSIX descriptor
};

}  // namespace ZUM
