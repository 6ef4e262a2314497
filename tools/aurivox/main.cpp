// aurivox: probes, decodes and inspects media files through the Aurivox module.
#include <cstdio>
#include <string>
#include <vector>

#include "Commands.h"
#include "Console.h"
#include "WineExitWorkaround.h"
#include "aurivox/Aurivox.h"
#include "aurivox/Version.h"

namespace aurivox_tool {
namespace {

// Each command is defined in its own file; add it here to make it reachable.
const Command kCommands[] = {
    {"probe", "show the audio format, length and codec of a file", RunProbe},
    {"decode", "decode a file's audio to a WAVE file", RunDecode},
    {"segments", "list the segment files of a split camera recording", RunSegments},
    {"check", "open and read files to the end, and say how each one ended", RunCheck},
};

void PrintUsage(std::FILE* out) {
  std::fputs(
      "Usage: aurivox [--help] [--version] COMMAND [ARGS...]\n"
      "\n"
      "Reads media files through the Aurivox audio module, as a host would.\n"
      "\n"
      "Commands:\n",
      out);
  for (const Command& command : kCommands) {
    if (command.name) std::fprintf(out, "  %-10s %s\n", command.name, command.summary);
  }
  std::fputs(
      "\n"
      "Options:\n"
      "  -h, --help     show this help and exit\n"
      "  --version      show the module's version and exit\n"
      "\n"
      "Run 'aurivox COMMAND --help' for a command's own options.\n",
      out);
}

int Run(const Arguments& args) {
  if (args.empty()) {
    PrintUsage(stderr);
    return kExitUsage;
  }
  const std::string& first = args[0];
  if (first == "--help" || first == "-h" || first == "help") {
    PrintUsage(stdout);
    return kExitOk;
  }
  if (first == "--version") {
    std::printf("aurivox %s\n", AURIVOX_VERSION_STRING);
    return kExitOk;
  }
  for (const Command& command : kCommands) {
    if (command.name && first == command.name) {
      return command.run(Arguments(args.begin() + 1, args.end()));
    }
  }
  std::fprintf(stderr, "aurivox: unknown command or option '%s'\nTry 'aurivox --help'.\n",
               first.c_str());
  return kExitUsage;
}

}  // namespace

int Fail(const std::string& message) {
  std::fprintf(stderr, "aurivox: %s\n", message.c_str());
  return kExitFailure;
}

int UsageError(const char* command, const std::string& message) {
  std::fprintf(stderr, "aurivox %s: %s\nTry 'aurivox %s --help'.\n", command, message.c_str(), command);
  return kExitUsage;
}

}  // namespace aurivox_tool

int main(int argc, char** argv) {
  aurivox_tool::PrepareConsole();
  Aurivox::Initialize();
  const int status = aurivox_tool::Run(aurivox_tool::CommandLineArguments(argc, argv));
  aurivox_tool::EndProcessEarlyUnderWine(status);
  Aurivox::Terminate();
  return status;
}
