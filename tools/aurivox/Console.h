// The process's arguments and standard streams as UTF-8 text.
#pragma once

#include <string>
#include <vector>

namespace aurivox_tool {

// The command-line arguments after the program name, in UTF-8.
std::vector<std::string> CommandLineArguments(int argc, char** argv);

// Makes the console show UTF-8 output as such.
void PrepareConsole();

// True when standard error is an interactive terminal (for progress bars).
bool StandardErrorIsTerminal();

}  // namespace aurivox_tool
