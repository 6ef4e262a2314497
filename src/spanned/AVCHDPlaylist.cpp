// Recognition of the files of an AVCHD recording and reading of its playlists.
#include <cstring>
#include <limits>
#include <vector>

#include "AVCHDLayout.h"
#include "AVCHDUtils.h"
#include "ZUM/File.h"
#include "orxcore/File.h"

namespace AVCHDUtils {
namespace {

using orxcore::WString;
namespace File = orxcore::File;

// Shortest file that holds the header and a playlist section.
constexpr std::uint32_t kMinimumPlaylistSize = 21;
constexpr char kTypeIndicator[] = "MPLS";
constexpr char kSupportedVersion[] = "0100";
constexpr std::uint32_t kVersionOffset = 4;
constexpr std::uint32_t kStartAddressOffset = 8;
// Within the playlist section.
constexpr std::uint32_t kItemCountOffset = 6;
constexpr std::uint32_t kFirstItemOffset = 10;

bool SameName(std::u16string_view a, std::u16string_view b) { return File::CompareFileNames(a, b) == 0; }

bool IsClipNumber(const WString& title) {
  if (title.size() != kClipNumberLength) return false;
  for (const char16_t c : title) {
    if (c < u'0' || c > u'9') return false;
  }
  return true;
}

std::uint32_t ReadBigEndian32(const std::uint8_t* p) {
  return std::uint32_t{p[0]} << 24 | std::uint32_t{p[1]} << 16 | std::uint32_t{p[2]} << 8 | p[3];
}

std::uint16_t ReadBigEndian16(const std::uint8_t* p) { return static_cast<std::uint16_t>(p[0] << 8 | p[1]); }

void VisitPlayItemsInBuffer(const std::uint8_t* data, std::uint32_t size, PlayItemVisitor& visitor) {
  if (size < kMinimumPlaylistSize) return;
  if (std::memcmp(data, kTypeIndicator, 4) != 0) return;
  if (std::memcmp(data + kVersionOffset, kSupportedVersion, 4) != 0) return;
  const std::uint32_t start = ReadBigEndian32(data + kStartAddressOffset);
  // Summed in 64 bits so that a start address near 4 GiB cannot wrap round.
  if (std::uint64_t{start} + kFirstItemOffset > size) return;
  const std::uint32_t sectionLength = ReadBigEndian32(data + start);
  const std::uint16_t itemCount = ReadBigEndian16(data + start + kItemCountOffset);
  if (itemCount == 0) return;
  // A plausibility test only, summed in 32 bits (a sum that wraps passes);
  // the items are bounded by the data read, not by this length.
  if (size < sectionLength + 4 + start) return;

  std::uint64_t item = std::uint64_t{start} + kFirstItemOffset;
  for (std::uint16_t i = 0; i < itemCount; ++i) {
    if (item + 2 > size) return;
    const std::uint64_t next = item + 2 + ReadBigEndian16(data + item);
    // An item counts only when two more bytes follow it, so a playlist that
    // ends right after its last item loses that item.
    if (next >= size - 1) return;
    // An item declared shorter than the fields visitors read may not reach
    // past the data.
    if (item + kPlayItemBytesRead > size) return;
    if (!visitor.Visit(data + item)) return;
    item = next;
  }
}

}  // namespace

bool IsSpannedClipFile(const WString& path) {
  if (!IsClipNumber(File::GetTitle(path))) return false;

  // Cameras write ".MTS", editors ".m2ts": the extension's case never
  // matters, even where file names compare exactly.
  const WString extension = orxcore::ToLowerCase(File::GetExtension(path, true));
  const char16_t* ownFolder;
  const char16_t* siblingFolder;
  if (extension == u".mts" || extension == u".m2ts") {
    ownFolder = kStreamFolder;
    siblingFolder = kClipInfoFolder;
  } else if (extension == u".cpi" || extension == u".clpi") {
    ownFolder = kClipInfoFolder;
    siblingFolder = kStreamFolder;
  } else {
    return false;
  }

  const WString folder = File::GetParent(path);
  if (File::IsTopLevelDir(folder) || !SameName(File::GetFileName(folder), ownFolder)) return false;
  const WString root = File::GetParent(folder);
  if (!SameName(File::GetFileName(root), kRecordingRootFolder)) return false;
  return File::IsDirectory(File::Combine(root, kPlaylistFolder)) &&
         File::IsDirectory(File::Combine(root, siblingFolder));
}

void VisitPlayItems(const WString& playlistPath, PlayItemVisitor& visitor) {
  ZUM::File file;
  if (ZUM::File::Open(playlistPath, ZUM::kAccessRead, file, true) < 0) return;
  std::uint64_t size = 0;
  ZUM::File::SizeOnDisk(playlistPath, size);
  // One read takes at most 4 GiB - 1; no playlist comes near that.
  if (size > std::numeric_limits<std::uint32_t>::max()) return;
  std::vector<std::uint8_t> buffer(static_cast<std::size_t>(size));
  std::uint32_t bytesRead = 0;
  const bool readOk = file.Read(buffer.data(), static_cast<std::uint32_t>(size), bytesRead) >= 0;
  file.Close();
  if (readOk) VisitPlayItemsInBuffer(buffer.data(), bytesRead, visitor);
}

}  // namespace AVCHDUtils
