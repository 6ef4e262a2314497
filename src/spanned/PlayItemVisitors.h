// The play-item visitors behind segment discovery: one collects the shot
// that holds a given clip, the other the first clip of every shot.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "AVCHDUtils.h"

namespace AVCHDUtils {

// The five-digit clip number that a play item plays.
std::string ClipNumberOf(const std::uint8_t* item);

// True when the item continues the previous one seamlessly (same shot).
bool ContinuesShot(const std::uint8_t* item);

// Collects the clip numbers of the shot that contains `targetClip` into
// `clips`, setting `*found` once the target has been seen; stops at the
// first item of the following shot.
class PlayItemClipFinder : public PlayItemVisitor {
 public:
  PlayItemClipFinder(const char* targetClip, bool* found, std::vector<std::string>* clips);
  bool Visit(const std::uint8_t* item) override;

 private:
  std::string_view target_;
  bool* found_;
  std::vector<std::string>* clips_;
};

// Collects the clip number of the first item of every shot into `clips`.
class ShotHeadClipFinder : public PlayItemVisitor {
 public:
  explicit ShotHeadClipFinder(std::vector<std::string>* clips);
  bool Visit(const std::uint8_t* item) override;

 private:
  std::vector<std::string>* clips_;
};

}  // namespace AVCHDUtils
