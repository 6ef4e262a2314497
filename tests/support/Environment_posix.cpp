#include <stdlib.h>

#include "Environment.h"

namespace aurivox_test {

void SetEnvironment(const std::string& name, const std::string& value) { setenv(name.c_str(), value.c_str(), 1); }

ScopedTemporaryFolder::ScopedTemporaryFolder(const std::string& folder) : variable_("TMPDIR") {
  if (const char* old = getenv("TMPDIR")) previous_ = old;
  SetEnvironment(variable_, folder);
}

ScopedTemporaryFolder::~ScopedTemporaryFolder() { SetEnvironment(variable_, previous_); }

}  // namespace aurivox_test
