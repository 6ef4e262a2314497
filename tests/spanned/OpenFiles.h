// Whether this process holds a file open, to see when segment files are
// opened and closed.
#pragma once

#include <filesystem>

namespace aurivox_test {

bool IsOpenInThisProcess(const std::filesystem::path& path);

}  // namespace aurivox_test
