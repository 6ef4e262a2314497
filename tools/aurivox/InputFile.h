// What is wrong with a file named on the command line, found before the
// module is asked to open it, in words a person can act on.
#pragma once

#include <string>

namespace aurivox_tool {

// Empty when `path` (UTF-8) names a readable file that holds at least one
// byte; otherwise why it cannot be read: missing, a folder, not readable,
// or empty.
std::string InputFileProblem(const std::string& path);

}  // namespace aurivox_tool
