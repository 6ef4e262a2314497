// aurivox: probes, decodes and inspects media files through the Aurivox module.
#include <cstdio>
#include <string>
#include <vector>

#include "Console.h"
#include "aurivox/Aurivox.h"
#include "aurivox/Version.h"

namespace aurivox_tool {
namespace {

constexpr char kUsage[] =
    "Usage: aurivox [--help] [--version] COMMAND [ARGS...]\n"
    "\n"
    "Reads media files through the Aurivox audio module, as a host would.\n"
    "\n"
    "Options:\n"
    "  -h, --help     show this help and exit\n"
    "  --version      show the module's version and exit\n";

int Run(const std::vector<std::string>& args) {
  if (args.empty()) {
    std::fputs(kUsage, stderr);
    return 2;
  }
  const std::string& first = args[0];
  if (first == "--help" || first == "-h" || first == "help") {
    std::fputs(kUsage, stdout);
    return 0;
  }
  if (first == "--version") {
    std::printf("aurivox %s\n", AURIVOX_VERSION_STRING);
    return 0;
  }
  std::fprintf(stderr, "aurivox: unknown command or option '%s'\nTry 'aurivox --help'.\n",
               first.c_str());
  return 2;
}

}  // namespace
}  // namespace aurivox_tool

int main(int argc, char** argv) {
  aurivox_tool::PrepareConsole();
  Aurivox::Initialize();
  const int status = aurivox_tool::Run(aurivox_tool::CommandLineArguments(argc, argv));
  Aurivox::Terminate();
  return status;
}
