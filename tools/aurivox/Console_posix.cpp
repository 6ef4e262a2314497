// The console on POSIX systems: arguments arrive as the bytes of the names,
// which are UTF-8 under the locales the tool is used with.
#include "Console.h"

#include <unistd.h>

namespace aurivox_tool {

std::vector<std::string> CommandLineArguments(int argc, char** argv) {
  return std::vector<std::string>(argv + 1, argv + argc);
}

// Terminals take UTF-8 output as it is.
void PrepareConsole() {}

bool StandardErrorIsTerminal() { return isatty(STDERR_FILENO) != 0; }

}  // namespace aurivox_tool
