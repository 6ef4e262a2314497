#include <windows.h>

#include "MediaFeaturesSwitch.h"

namespace aurivox_test {
namespace {

constexpr wchar_t kKey[] =
    L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Setup\\WindowsFeatures\\WindowsMediaVersion";

}  // namespace

MediaFeaturesSwitch::MediaFeaturesSwitch(bool present) {
  HKEY key = nullptr;
  hadFeatures_ = RegOpenKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, KEY_READ, &key) == ERROR_SUCCESS;
  if (hadFeatures_) RegCloseKey(key);
  Set(present);
}

void MediaFeaturesSwitch::Set(bool present) {
  HKEY key = nullptr;
  if (!present) RegDeleteKeyW(HKEY_LOCAL_MACHINE, kKey);
  if (present &&
      RegCreateKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr) == ERROR_SUCCESS) {
    RegCloseKey(key);
  }
}

}  // namespace aurivox_test
