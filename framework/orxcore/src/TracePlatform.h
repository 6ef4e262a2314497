#pragma once

#include <string_view>

namespace orxcore {

// Hands a trace message to the platform's debugger channel, if it has one.
void WriteToDebugger(std::string_view message);

}  // namespace orxcore
