#include "ToolReporting.h"

#include <gtest/gtest.h>

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

std::pair<int, std::string> RunCaptured(int (*command)(const Arguments&), const Arguments& args) {
  lastError.clear();
  ::testing::internal::CaptureStdout();
  const int status = command(args);
  return {status, ::testing::internal::GetCapturedStdout()};
}

}  // namespace aurivox_tool
