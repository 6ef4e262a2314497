#include <windows.h>

#include "ZUM/File.h"
#include "ZUM/PathUtils.h"
#include "orxcore/WideChar.h"

namespace ZUM {
namespace {

std::int32_t ErrorFromLastError() {
  switch (GetLastError()) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH: return kErrorNotFound;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION: return kErrorAccessDenied;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS: return kErrorExists;
    case ERROR_INVALID_PARAMETER:
    case ERROR_INVALID_NAME: return kErrorInvalidArgument;
    default: return kErrorGeneric;
  }
}

HANDLE AsHandle(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

DWORD Disposition(std::uint32_t disposition) {
  switch (disposition) {
    case kCreateNew: return CREATE_NEW;
    case kCreateAlways: return CREATE_ALWAYS;
    case kOpenAlways: return OPEN_ALWAYS;
    case kTruncateExisting: return TRUNCATE_EXISTING;
    default: return OPEN_EXISTING;
  }
}

}  // namespace

File::~File() { Close(); }

std::int32_t File::Create(const WString& path, std::uint32_t access, std::uint32_t shareMode,
                          std::uint32_t disposition, std::uint32_t /*attributes*/,
                          std::uint32_t /*flags*/) {
  Close();
  if (path.empty() || !(access & (kAccessRead | kAccessWrite))) return kErrorInvalidArgument;
  DWORD desired = 0;
  if (access & kAccessRead) desired |= GENERIC_READ;
  if (access & kAccessWrite) desired |= GENERIC_WRITE;
  DWORD share = 0;
  if (shareMode & kShareRead) share |= FILE_SHARE_READ;
  if (shareMode & kShareWrite) share |= FILE_SHARE_WRITE;
  if (shareMode & kShareDelete) share |= FILE_SHARE_DELETE;
  // A reader must not lock out a camera or an editor still writing the file.
  if (!(access & kAccessWrite)) share |= FILE_SHARE_READ | FILE_SHARE_WRITE;
  const HANDLE handle = CreateFileW(orxcore::AsWide(path), desired, share, nullptr,
                                    Disposition(disposition), FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return ErrorFromLastError();
  handle_ = reinterpret_cast<std::intptr_t>(handle);
  return kSuccess;
}

std::int32_t File::Read(void* buffer, std::uint32_t count, std::uint32_t& bytesRead) {
  bytesRead = 0;
  if (!IsOpen()) return kErrorNotOpen;
  DWORD n = 0;
  if (!ReadFile(AsHandle(handle_), buffer, count, &n, nullptr)) return ErrorFromLastError();
  bytesRead = n;
  return kSuccess;
}

std::int32_t File::Write(const void* data, std::uint32_t count, std::uint32_t& bytesWritten) {
  bytesWritten = 0;
  if (!IsOpen()) return kErrorNotOpen;
  DWORD n = 0;
  if (!WriteFile(AsHandle(handle_), data, count, &n, nullptr)) return ErrorFromLastError();
  bytesWritten = n;
  return kSuccess;
}

std::int32_t File::SetFilePointer(std::int64_t offset, SeekOrigin origin) {
  if (!IsOpen()) return kErrorNotOpen;
  LARGE_INTEGER distance;
  distance.QuadPart = offset;
  const DWORD method = origin == kFromCurrent ? FILE_CURRENT : origin == kFromEnd ? FILE_END : FILE_BEGIN;
  return SetFilePointerEx(AsHandle(handle_), distance, nullptr, method) ? kSuccess : ErrorFromLastError();
}

std::int32_t File::GetSize(std::uint64_t& size) const {
  if (!IsOpen()) return kErrorNotOpen;
  LARGE_INTEGER value;
  if (!GetFileSizeEx(AsHandle(handle_), &value)) return ErrorFromLastError();
  size = static_cast<std::uint64_t>(value.QuadPart);
  return kSuccess;
}

std::int32_t File::SizeOnDisk(const WString& path, std::uint64_t& size) {
  if (path.empty()) return kErrorInvalidArgument;
  WIN32_FILE_ATTRIBUTE_DATA data;
  if (!GetFileAttributesExW(orxcore::AsWide(path), GetFileExInfoStandard, &data)) {
    return ErrorFromLastError();
  }
  if (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) return kErrorAccessDenied;
  size = (static_cast<std::uint64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
  return kSuccess;
}

std::int32_t File::Delete(const WString& path) {
  if (path.empty()) return kErrorInvalidArgument;
  return DeleteFileW(orxcore::AsWide(path)) ? kSuccess : ErrorFromLastError();
}

void File::Close() {
  if (IsOpen()) CloseHandle(AsHandle(handle_));
  handle_ = -1;
}

bool File::IsOpen() const { return handle_ != -1; }

namespace PathUtils {
orxcore::WString GetTempDirectory() {
  wchar_t buffer[MAX_PATH + 1];
  const DWORD length = GetTempPathW(MAX_PATH + 1, buffer);
  orxcore::WString path = orxcore::FromWide(buffer, length <= MAX_PATH ? length : 0);
  while (path.size() > 3 && (path.back() == u'\\' || path.back() == u'/')) path.pop_back();
  return path;
}
}  // namespace PathUtils

}  // namespace ZUM
