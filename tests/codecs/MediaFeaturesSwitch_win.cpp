#include <windows.h>

#include "MediaFeaturesSwitch.h"

void aurivox_test::MediaFeaturesSwitch::Set(bool present) {
  constexpr wchar_t kKey[] =
      L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Setup\\WindowsFeatures\\WindowsMediaVersion";
  HKEY key = nullptr;
  if (!present) RegDeleteKeyW(HKEY_LOCAL_MACHINE, kKey);
  if (present && RegCreateKeyW(HKEY_LOCAL_MACHINE, kKey, &key) == ERROR_SUCCESS) RegCloseKey(key);
}
