#include "TracePlatform.h"

#include <string>

#include <windows.h>

namespace orxcore {

void WriteToDebugger(std::string_view message) {
  OutputDebugStringA(std::string(message).c_str());
}

}  // namespace orxcore
