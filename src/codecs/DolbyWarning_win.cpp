#include <windows.h>

#include "DolbyWarning.h"

namespace Aurivox {

bool MediaFeaturesPresent() {
  HKEY key = nullptr;
  if (RegOpenKeyA(HKEY_LOCAL_MACHINE,
                  "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Setup\\WindowsFeatures\\WindowsMediaVersion",
                  &key) != ERROR_SUCCESS) {
    return false;
  }
  RegCloseKey(key);
  return true;
}

}  // namespace Aurivox
