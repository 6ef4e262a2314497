#include <errno.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

#include "ZUM/File.h"
#include "ZUM/PathUtils.h"

namespace ZUM {
namespace {

std::int32_t ErrorFromErrno() {
  switch (errno) {
    case ENOENT:
    case ENOTDIR: return kErrorNotFound;
    case EACCES:
    case EPERM:
    case EISDIR: return kErrorAccessDenied;
    case EEXIST: return kErrorExists;
    case EINVAL: return kErrorInvalidArgument;
    default: return kErrorGeneric;
  }
}

int OpenFlags(std::uint32_t access, std::uint32_t disposition) {
  int flags = O_CLOEXEC;
  const bool read = access & kAccessRead, write = access & kAccessWrite;
  flags |= (read && write) ? O_RDWR : write ? O_WRONLY : O_RDONLY;
  switch (disposition) {
    case kCreateNew: flags |= O_CREAT | O_EXCL; break;
    case kCreateAlways: flags |= O_CREAT | O_TRUNC; break;
    case kOpenAlways: flags |= O_CREAT; break;
    case kTruncateExisting: flags |= O_TRUNC; break;
    default: break;
  }
  return flags;
}

}  // namespace

File::~File() { Close(); }

std::int32_t File::Create(const WString& path, std::uint32_t access, std::uint32_t /*shareMode*/,
                          std::uint32_t disposition, std::uint32_t /*attributes*/,
                          std::uint32_t /*flags*/) {
  Close();
  if (path.empty() || !(access & (kAccessRead | kAccessWrite))) return kErrorInvalidArgument;
  const int fd = ::open(orxcore::UTF16toStdString(path).c_str(), OpenFlags(access, disposition), 0644);
  if (fd < 0) return ErrorFromErrno();
  struct stat info;
  if (::fstat(fd, &info) == 0 && S_ISDIR(info.st_mode)) {
    ::close(fd);
    return kErrorAccessDenied;  // as Windows refuses to open a folder as a file
  }
  handle_ = fd;
  return kSuccess;
}

std::int32_t File::Read(void* buffer, std::uint32_t count, std::uint32_t& bytesRead) {
  bytesRead = 0;
  if (!IsOpen()) return kErrorNotOpen;
  auto* out = static_cast<unsigned char*>(buffer);
  while (bytesRead < count) {
    const ssize_t n = ::read(static_cast<int>(handle_), out + bytesRead, count - bytesRead);
    if (n < 0) {
      if (errno == EINTR) continue;
      return ErrorFromErrno();
    }
    if (n == 0) break;
    bytesRead += static_cast<std::uint32_t>(n);
  }
  return kSuccess;
}

std::int32_t File::Write(const void* data, std::uint32_t count, std::uint32_t& bytesWritten) {
  bytesWritten = 0;
  if (!IsOpen()) return kErrorNotOpen;
  const auto* in = static_cast<const unsigned char*>(data);
  while (bytesWritten < count) {
    const ssize_t n = ::write(static_cast<int>(handle_), in + bytesWritten, count - bytesWritten);
    if (n < 0) {
      if (errno == EINTR) continue;
      return ErrorFromErrno();
    }
    bytesWritten += static_cast<std::uint32_t>(n);
  }
  return kSuccess;
}

std::int32_t File::SetFilePointer(std::int64_t offset, SeekOrigin origin) {
  if (!IsOpen()) return kErrorNotOpen;
  const int whence = origin == kFromCurrent ? SEEK_CUR : origin == kFromEnd ? SEEK_END : SEEK_SET;
  return ::lseek(static_cast<int>(handle_), static_cast<off_t>(offset), whence) < 0 ? ErrorFromErrno()
                                                                                    : kSuccess;
}

std::int32_t File::GetSize(std::uint64_t& size) const {
  if (!IsOpen()) return kErrorNotOpen;
  struct stat info;
  if (::fstat(static_cast<int>(handle_), &info) != 0) return ErrorFromErrno();
  size = static_cast<std::uint64_t>(info.st_size);
  return kSuccess;
}

std::int32_t File::SizeOnDisk(const WString& path, std::uint64_t& size) {
  struct stat info;
  if (path.empty()) return kErrorInvalidArgument;
  if (::stat(orxcore::UTF16toStdString(path).c_str(), &info) != 0) return ErrorFromErrno();
  if (S_ISDIR(info.st_mode)) return kErrorAccessDenied;
  size = static_cast<std::uint64_t>(info.st_size);
  return kSuccess;
}

std::int32_t File::Delete(const WString& path) {
  if (path.empty()) return kErrorInvalidArgument;
  return ::unlink(orxcore::UTF16toStdString(path).c_str()) == 0 ? kSuccess : ErrorFromErrno();
}

void File::Close() {
  if (IsOpen()) ::close(static_cast<int>(handle_));
  handle_ = -1;
}

bool File::IsOpen() const { return handle_ >= 0; }

namespace PathUtils {
orxcore::WString GetTempDirectory() {
  const char* dir = std::getenv("TMPDIR");
  std::string path = (dir && *dir) ? dir : "/tmp";
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return orxcore::UTF8to16(path);
}
}  // namespace PathUtils

}  // namespace ZUM
