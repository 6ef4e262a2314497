#include "Progress.h"

#include <cstdio>

#include "Console.h"

namespace aurivox_tool {

ProgressBar::ProgressBar(std::int64_t total) : total_(total), enabled_(StandardErrorIsTerminal()) {}

ProgressBar::~ProgressBar() {
  if (enabled_ && shownPercent_ >= 0) std::fputs("\n", stderr);
}

void ProgressBar::Update(std::int64_t done) {
  if (!enabled_ || total_ <= 0) return;
  const int percent = static_cast<int>(done >= total_ ? 100 : done * 100 / total_);
  if (percent == shownPercent_) return;
  shownPercent_ = percent;
  constexpr int kWidth = 40;
  char bar[kWidth + 1];
  for (int i = 0; i < kWidth; ++i) bar[i] = i < percent * kWidth / 100 ? '#' : '-';
  bar[kWidth] = '\0';
  std::fprintf(stderr, "\r[%s] %3d%%", bar, percent);
  std::fflush(stderr);
}

}  // namespace aurivox_tool
