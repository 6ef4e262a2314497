#include <windows.h>

#include "MediaFeaturesSwitch.h"

namespace aurivox_test {
namespace {

constexpr wchar_t kKey[] =
    L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Setup\\WindowsFeatures\\WindowsMediaVersion";

bool KeyExists() {
  HKEY key = nullptr;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
  RegCloseKey(key);
  return true;
}

void CreateKey(const wchar_t* value) {
  HKEY key = nullptr;
  if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr) != ERROR_SUCCESS) {
    return;
  }
  if (value) {
    RegSetValueExW(key, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(value),
                   static_cast<DWORD>((wcslen(value) + 1) * sizeof(wchar_t)));
  }
  RegCloseKey(key);
}

}  // namespace

MediaFeaturesSwitch::MediaFeaturesSwitch(bool present) {
  hadKey_ = KeyExists();
  DWORD size = sizeof value_ - sizeof(wchar_t);
  hadValue_ = hadKey_ && RegGetValueW(HKEY_LOCAL_MACHINE, kKey, nullptr, RRF_RT_REG_SZ, nullptr, value_,
                                      &size) == ERROR_SUCCESS;
  Set(present);
}

MediaFeaturesSwitch::~MediaFeaturesSwitch() {
  RegDeleteKeyW(HKEY_LOCAL_MACHINE, kKey);
  if (hadKey_) CreateKey(hadValue_ ? value_ : nullptr);
}

void MediaFeaturesSwitch::Set(bool present) {
  if (present) {
    CreateKey(nullptr);
  } else {
    RegDeleteKeyW(HKEY_LOCAL_MACHINE, kKey);
  }
}

}  // namespace aurivox_test
