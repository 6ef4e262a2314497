// The module's exported API: start-up and shut-down of the module.
#pragma once

#include "aurivox/Export.h"

namespace Aurivox {

// Called by the host before it creates any decoder. The first call of a
// balanced run starts Media Foundation.
AURIVOX_API void Initialize();

// Called by the host when it is done. The last call of a balanced run shuts
// Media Foundation down. Calls are not guarded: the host keeps them balanced.
AURIVOX_API void Terminate();

}  // namespace Aurivox
