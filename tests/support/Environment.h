// Setting environment variables from tests.
#pragma once

#include <string>

namespace aurivox_test {

// Sets `name` to `value` (UTF-8) for this process.
void SetEnvironment(const std::string& name, const std::string& value);

// Points the platform's temporary folder (TMP on Windows, TMPDIR elsewhere)
// at `folder` for the lifetime of the object.
class ScopedTemporaryFolder {
 public:
  explicit ScopedTemporaryFolder(const std::string& folder);
  ~ScopedTemporaryFolder();

 private:
  std::string variable_;
  std::string previous_;
};

}  // namespace aurivox_test
