// Stand-ins for the tool's shared reporting (Fail, UsageError), which lives
// beside its main(); tests of single commands link these instead and read
// the last message back.
#pragma once

#include <string>

#include "Commands.h"

namespace aurivox_tool {

extern std::string lastError;

}  // namespace aurivox_tool
