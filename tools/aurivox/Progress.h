// A one-line progress bar on standard error, shown only on a terminal.
#pragma once

#include <cstdint>

namespace aurivox_tool {

class ProgressBar {
 public:
  explicit ProgressBar(std::int64_t total);
  ~ProgressBar();
  void Update(std::int64_t done);

 private:
  std::int64_t total_;
  int shownPercent_ = -1;
  bool enabled_;
};

}  // namespace aurivox_tool
