#include "DolbyWarning.h"

#include <set>

#include "orxcore/File.h"
#include "orxcore/Hash.h"
#include "orxcore/Localizer.h"
#include "orxcore/RecursiveMutex.h"

namespace Aurivox {
namespace {

constexpr char kCertainMessage[] =
    "$$$/Kelvanto/Utilities/Aurivox/WinDecoder/MissingDolby=The audio in this file requires the Dolby "
    "audio decoder, which is not installed on your operating system. Try installing the Microsoft Media "
    "Feature Pack and reimporting the file. \"@0\"";
constexpr char kMaybeMessage[] =
    "$$$/Kelvanto/Utilities/Aurivox/WinDecoder/MissingDolbyMaybe=The audio in this file may require the "
    "Dolby audio decoder, which is not installed on your operating system. Try installing the Microsoft "
    "Media Feature Pack and reimporting the file. \"@0\"";
constexpr char kTitle[] =
    "$$$/Kelvanto/Utilities/Aurivox/WinDecoder/MissingDolbyEventTitle=Missing Dolby audio decoder";

constexpr std::int32_t kUnsupportedByteStreamType = static_cast<std::int32_t>(0xC00D36C4);
constexpr std::int32_t kAttributeNotFound = static_cast<std::int32_t>(0xC00D36E6);
constexpr std::int32_t kHostEventFlag = 0x400;

const orxcore::Guid kDolbySubtypes[] = {
    {0x61632D33, 0x767A, 0x494D, {0xB4, 0x78, 0xF2, 0x9D, 0x25, 0xDC, 0x90, 0x37}},  // MPEG-4 "ac-3"
    {0x65632D33, 0x767A, 0x494D, {0xB4, 0x78, 0xF2, 0x9D, 0x25, 0xDC, 0x90, 0x37}},  // MPEG-4 "ec-3"
    {0x00000092, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71}},  // AC-3 over S/PDIF
    {0xE06D802C, 0xDB46, 0x11CF, {0xB4, 0xD1, 0x00, 0x80, 0x5F, 0x6C, 0xBB, 0xEA}},  // Dolby AC-3
    {0xA7FB87AF, 0x2D02, 0x42FB, {0xA4, 0xD4, 0x05, 0xCD, 0x93, 0x84, 0x3B, 0xDD}},  // Dolby Digital Plus
};

// Files already examined in this process, keyed by the hash of their
// lower-cased path. Never emptied.
struct WarnedFiles {
  orxcore::RecursiveMutex mutex;
  std::set<orxcore::Guid> keys;
};

WarnedFiles& Warned() {
  static WarnedFiles* warned = new WarnedFiles;  // outlives static destruction
  return *warned;
}

orxcore::Guid FileKey(const orxcore::WString& path) {
  const orxcore::WString lower = orxcore::ToLowerCase(path);
  orxcore::HashValueMixerState state;
  orxcore::UpdateHashState(state, nullptr, 0);
  orxcore::UpdateHashState(state, lower.data(), lower.size() * sizeof(char16_t));
  return orxcore::GetHashResult(state);
}

// True the first time a file is seen.
bool RecordFile(const orxcore::WString& path) {
  WarnedFiles& warned = Warned();
  orxcore::ScopedRecursiveLock lock(warned.mutex, 60000);
  if (!lock.locked()) return false;  // stuck for a minute: stay quiet rather than race
  return warned.keys.insert(FileKey(path)).second;
}

}  // namespace

bool IsDolbySubtype(const orxcore::Guid& subtype) {
  for (const orxcore::Guid& dolby : kDolbySubtypes) {
    if (dolby == subtype) return true;
  }
  return false;
}

bool IsDolbySuspectResult(std::int32_t hr) { return hr == kUnsupportedByteStreamType || hr == kAttributeNotFound; }

void WarnAboutMissingDolby(const orxcore::WString& path, DolbySuspect suspect,
                           const QzSDKErrorSuite3* suite, std::uint32_t flags) {
  if (suspect == DolbySuspect::kNone || (flags & kDolbyWarningOff)) return;
  // Recorded before anything else is looked at: a file examined without a
  // suite, or while the features are present, is never warned about later.
  if (!RecordFile(path)) return;
  if (!suite || !suite->SendErrorEvent) return;

  const bool isAc3File = orxcore::File::GetExtension(path, true) == u".ac3";
  const bool certain = suspect == DolbySuspect::kCertain || (flags & kDolbyWarnMaybeAsCertain) || isAc3File;
  if (MediaFeaturesPresent()) return;

  const orxcore::WString message = orxcore::Localizer::Get().Localize(certain ? kCertainMessage : kMaybeMessage);
  std::int32_t eventType = 3;
  if (!isAc3File && (flags == 0 || (flags & kDolbyWarnEventType2))) eventType = 2;
  eventType |= kHostEventFlag;
  const orxcore::WString text = orxcore::ReplaceInString(message, path);
  const orxcore::WString title = orxcore::Localizer::Get().Localize(kTitle);
  suite->SendErrorEvent(eventType, title.c_str(), text.c_str());
}

}  // namespace Aurivox
