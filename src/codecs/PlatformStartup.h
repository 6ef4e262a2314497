// Starting and stopping the platform's media libraries, once for the module.
#pragma once

namespace Aurivox {

bool StartPlatform();
bool StopPlatform();

}  // namespace Aurivox
