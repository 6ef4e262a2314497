// Starts the module, asks a decoder to open a file that is not there, and
// shuts the module down: the opening must fail with a result code.
#include <cstdio>

#include "aurivox/Aurivox.h"
#include "aurivox/Decoder.h"
#include "aurivox/Version.h"

int main() {
  Aurivox::Initialize();
  // The decoder is gone before the module stops, as the host does it.
  const int result = Aurivox::Decoder().Open(orxcore::UTF8to16("no-such-file.wav"), nullptr);
  Aurivox::Terminate();
  std::printf("aurivox %s: opening a missing file gave result %d\n", AURIVOX_VERSION_STRING, result);
  return result == Aurivox::kResultSuccess ? 1 : 0;
}
