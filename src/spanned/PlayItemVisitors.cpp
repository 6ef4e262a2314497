#include "PlayItemVisitors.h"

#include "AVCHDLayout.h"

namespace AVCHDUtils {
namespace {

constexpr std::size_t kClipNumberOffset = 2;
constexpr std::size_t kConnectionConditionOffset = 12;
// Connection condition of an item that plays on from the previous one.
constexpr std::uint8_t kSeamlessConnection = 6;

}  // namespace

std::string ClipNumberOf(const std::uint8_t* item) {
  return std::string(reinterpret_cast<const char*>(item + kClipNumberOffset), kClipNumberLength);
}

bool ContinuesShot(const std::uint8_t* item) {
  return (item[kConnectionConditionOffset] & 0x0F) == kSeamlessConnection;
}

PlayItemClipFinder::PlayItemClipFinder(const char* targetClip, bool* found,
                                       std::vector<std::string>* clips)
    : target_(targetClip), found_(found), clips_(clips) {}

bool PlayItemClipFinder::Visit(const std::uint8_t* item) {
  if (!ContinuesShot(item)) {
    if (*found_) return false;  // the target's shot is complete
    clips_->clear();
  }
  clips_->push_back(ClipNumberOf(item));
  if (!*found_ && target_.size() >= kClipNumberLength) {
    *found_ = clips_->back().compare(0, kClipNumberLength, target_.data(), kClipNumberLength) == 0;
  }
  return true;
}

ShotHeadClipFinder::ShotHeadClipFinder(std::vector<std::string>* clips) : clips_(clips) {}

bool ShotHeadClipFinder::Visit(const std::uint8_t* item) {
  if (!ContinuesShot(item)) clips_->push_back(ClipNumberOf(item));
  return true;
}

}  // namespace AVCHDUtils
