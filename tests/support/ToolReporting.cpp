#include "ToolReporting.h"

namespace aurivox_tool {

std::string lastError;

int Fail(const std::string& message) {
  lastError = message;
  return kExitFailure;
}

int UsageError(const char* command, const std::string& message) {
  lastError = std::string(command) + ": " + message;
  return kExitUsage;
}

}  // namespace aurivox_tool
