// The tool's commands. Each lives in its own file and takes the arguments
// after its name; it returns the process exit status.
#pragma once

#include <string>
#include <vector>

namespace aurivox_tool {

using Arguments = std::vector<std::string>;

struct Command {
  const char* name;
  const char* summary;  // one line for the tool's --help
  int (*run)(const Arguments& args);
};

// Exit statuses shared by the commands.
constexpr int kExitOk = 0;
constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;

// Prints "aurivox: <message>" to standard error; returns kExitFailure.
int Fail(const std::string& message);
// Prints the message and a pointer to the command's --help; returns kExitUsage.
int UsageError(const char* command, const std::string& message);

// The commands, one file each.
int RunProbe(const Arguments& args);
int RunDecode(const Arguments& args);
int RunSegments(const Arguments& args);
int RunCheck(const Arguments& args);

}  // namespace aurivox_tool
