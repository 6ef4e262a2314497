// Stand-ins for the tool's shared reporting (Fail, UsageError), which lives
// beside its main(); tests of single commands link these instead and read
// the last message back.
#pragma once

#include <utility>

#include "Commands.h"

namespace aurivox_tool {

extern std::string lastError;

// Runs one command's entry point with lastError cleared: its exit status and
// what it wrote to standard output.
std::pair<int, std::string> RunCaptured(int (*command)(const Arguments&), const Arguments& args);

}  // namespace aurivox_tool
