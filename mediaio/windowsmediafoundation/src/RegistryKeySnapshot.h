// A snapshot of a registry key with all its sub-keys and values, read
// recursively. Each node keeps its opened key until it is destroyed.
#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

#include "orxcore/String.h"

namespace windowsmediafoundation {

struct RegistryValue {
  orxcore::WString name;
  std::uint32_t type = REG_NONE;
  std::vector<std::uint8_t> data;
};

class RegistryKeySnapshot {
 public:
  // A node for the key `path` below `parent` (a predefined root for the top).
  RegistryKeySnapshot(HKEY parent, orxcore::WString path);
  ~RegistryKeySnapshot();
  RegistryKeySnapshot(RegistryKeySnapshot&& other) noexcept;
  RegistryKeySnapshot& operator=(RegistryKeySnapshot&& other) noexcept;
  RegistryKeySnapshot(const RegistryKeySnapshot&) = delete;
  RegistryKeySnapshot& operator=(const RegistryKeySnapshot&) = delete;

  // Replaces any earlier snapshot by the key's tree, sub-keys and values in
  // enumeration order. Returns the Win32 error code of this node's last
  // registry call (ERROR_SUCCESS when everything was read); a key that cannot
  // be opened leaves the node empty. A failing sub-key stays an empty child.
  std::uint32_t ReadKeyTree();

  HKEY key() const { return key_; }
  HKEY parent() const { return parent_; }
  const orxcore::WString& path() const { return path_; }
  const std::vector<RegistryKeySnapshot>& children() const { return children_; }
  const std::vector<RegistryValue>& values() const { return values_; }

 private:
  void CloseKey();
  LONG ReadSubKeys(DWORD subKeyCount);
  LONG ReadValues(DWORD valueCount, DWORD maxValueDataBytes);

  HKEY key_ = nullptr;
  HKEY parent_;
  orxcore::WString path_;
  std::vector<RegistryKeySnapshot> children_;
  std::vector<RegistryValue> values_;
};

}  // namespace windowsmediafoundation
