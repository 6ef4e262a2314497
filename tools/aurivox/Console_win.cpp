// The console on Windows: arguments from the wide command line, UTF-8 output.
#include "Console.h"

#include <io.h>
#include <windows.h>
#include <shellapi.h>

#include <cstdio>

namespace aurivox_tool {
namespace {

std::string ToUtf8(const wchar_t* text) {
  const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
  if (size <= 1) return {};
  std::string out(static_cast<std::size_t>(size - 1), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text, -1, out.data(), size, nullptr, nullptr);
  return out;
}

}  // namespace

std::vector<std::string> CommandLineArguments(int, char**) {
  // argv is in the ANSI code page; the wide command line keeps every name.
  int count = 0;
  wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> out;
  for (int i = 1; arguments && i < count; ++i) out.push_back(ToUtf8(arguments[i]));
  LocalFree(arguments);
  return out;
}

void PrepareConsole() { SetConsoleOutputCP(CP_UTF8); }

bool StandardErrorIsTerminal() { return _isatty(_fileno(stderr)) != 0; }

}  // namespace aurivox_tool
