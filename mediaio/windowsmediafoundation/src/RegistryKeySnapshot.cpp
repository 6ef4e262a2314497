#include "RegistryKeySnapshot.h"

#include <algorithm>
#include <utility>

#include "orxcore/WideChar.h"

namespace windowsmediafoundation {
namespace {

// The registry's limit on the length of a key or value name, in characters.
constexpr DWORD kMaxNameLength = 16383;

}  // namespace

RegistryKeySnapshot::RegistryKeySnapshot(HKEY parent, orxcore::WString path)
    : parent_(parent), path_(std::move(path)) {}

RegistryKeySnapshot::~RegistryKeySnapshot() { CloseKey(); }

RegistryKeySnapshot::RegistryKeySnapshot(RegistryKeySnapshot&& other) noexcept
    : key_(std::exchange(other.key_, nullptr)),
      parent_(other.parent_),
      path_(std::move(other.path_)),
      children_(std::move(other.children_)),
      values_(std::move(other.values_)) {}

RegistryKeySnapshot& RegistryKeySnapshot::operator=(RegistryKeySnapshot&& other) noexcept {
  if (this != &other) {
    CloseKey();
    key_ = std::exchange(other.key_, nullptr);
    parent_ = other.parent_;
    path_ = std::move(other.path_);
    children_ = std::move(other.children_);
    values_ = std::move(other.values_);
  }
  return *this;
}

void RegistryKeySnapshot::CloseKey() {
  if (key_) RegCloseKey(key_);
  key_ = nullptr;
}

std::uint32_t RegistryKeySnapshot::ReadKeyTree() {
  children_.clear();
  values_.clear();
  CloseKey();

  LONG result = RegOpenKeyExW(parent_, orxcore::AsWide(path_), 0, KEY_READ, &key_);
  if (result != ERROR_SUCCESS) {
    key_ = nullptr;
    return static_cast<std::uint32_t>(result);
  }
  DWORD subKeyCount = 0;
  DWORD valueCount = 0;
  DWORD maxValueDataBytes = 0;
  result = RegQueryInfoKeyW(key_, nullptr, nullptr, nullptr, &subKeyCount, nullptr, nullptr, &valueCount,
                            nullptr, &maxValueDataBytes, nullptr, nullptr);
  if (result != ERROR_SUCCESS) return static_cast<std::uint32_t>(result);
  children_.reserve(subKeyCount);

  // The value enumeration runs last, so its result stands unless it made no call.
  const LONG subKeysResult = ReadSubKeys(subKeyCount);
  const LONG valuesResult = ReadValues(valueCount, maxValueDataBytes);
  return static_cast<std::uint32_t>(valueCount > 0 ? valuesResult : subKeysResult);
}

LONG RegistryKeySnapshot::ReadSubKeys(DWORD subKeyCount) {
  std::vector<wchar_t> name(kMaxNameLength + 1);
  LONG result = ERROR_SUCCESS;
  for (DWORD index = 0; index < subKeyCount; ++index) {
    DWORD length = static_cast<DWORD>(name.size());
    result = RegEnumKeyExW(key_, index, name.data(), &length, nullptr, nullptr, nullptr, nullptr);
    if (result != ERROR_SUCCESS) break;
    children_.emplace_back(key_, orxcore::FromWide(name.data(), length));
    children_.back().ReadKeyTree();
  }
  return result;
}

LONG RegistryKeySnapshot::ReadValues(DWORD valueCount, DWORD maxValueDataBytes) {
  std::vector<wchar_t> name(kMaxNameLength + 1);
  // Never an empty buffer: with no buffer at all the enumeration succeeds and
  // reports the size it would have written, however much the value grew.
  std::vector<BYTE> data(std::max<DWORD>(maxValueDataBytes, 1));
  LONG result = ERROR_SUCCESS;
  for (DWORD index = 0; index < valueCount; ++index) {
    DWORD length = static_cast<DWORD>(name.size());
    DWORD type = REG_NONE;
    DWORD dataBytes = static_cast<DWORD>(data.size());
    result = RegEnumValueW(key_, index, name.data(), &length, nullptr, &type, data.data(), &dataBytes);
    if (result != ERROR_SUCCESS) break;
    const DWORD kept = std::min<DWORD>(dataBytes, static_cast<DWORD>(data.size()));
    values_.push_back({orxcore::FromWide(name.data(), length), type,
                       std::vector<std::uint8_t>(data.begin(), data.begin() + kept)});
  }
  return result;
}

}  // namespace windowsmediafoundation
