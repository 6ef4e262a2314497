// Descriptors open on chosen files, counted without a system call.
#pragma once

#include <string>

namespace aurivox_fuzz {

// Counts the descriptors open on the paths it tracks, files deleted since
// they were opened included. A target that uses it links with
// -Wl,--wrap=open,--wrap=close: every open and close of the code under test
// then passes through here, so a count, which runs after most operations of
// such a target, reads a number instead of listing /proc/self/fd.
// The process has one set of tracked paths; the code under test opens files
// from the fuzzing thread only.
class OpenFileCounter {
 public:
  static void Track(const std::string& path);
  static int Count();
};

}  // namespace aurivox_fuzz
