#include <gtest/gtest.h>

#include <functional>
#include <tuple>

#include "AVCHDUtils.h"
#include "PlayItemVisitors.h"
#include "PlaylistBuilder.h"

namespace AVCHDUtils {
namespace {

using aurivox_test::kSectionStart;
using aurivox_test::PlayItems;
using aurivox_test::PutBigEndian;
using Bytes = std::vector<std::uint8_t>;

TEST(ClipRecognition, FiveDigitTitlesInTheirFolderBesideTheOthersOfABDMVTree) {
  aurivox_test::TempDir dir;
  // a, b and c each lack one of the folders; AVCHD is not the root's name.
  for (const char* folder : {"BDMV/STREAM", "BDMV/CLIPINF", "BDMV/PLAYLIST", "AVCHD/STREAM", "AVCHD/CLIPINF",
                             "AVCHD/PLAYLIST", "a/BDMV/STREAM", "a/BDMV/PLAYLIST", "b/BDMV/CLIPINF",
                             "b/BDMV/PLAYLIST", "c/BDMV/STREAM", "c/BDMV/CLIPINF"}) {
    dir.MakeDir(folder);
  }
  // Cameras write upper-case extensions, editors lower-case ones.
  const std::pair<const char*, bool> kCases[] = {
      {"BDMV/STREAM/00012.MTS", true},    {"BDMV/STREAM/00012.m2ts", true},     {"BDMV/CLIPINF/00012.clpi", true},
      {"BDMV/CLIPINF/00012.cpi", true},   {"BDMV/STREAM/99999.mts", true},      {"BDMV/STREAM/0012.mts", false},
      {"BDMV/STREAM/000123.mts", false},  {"BDMV/STREAM/0001a.mts", false},     {"BDMV/STREAM/-0001.mts", false},
      {"BDMV/CLIPINF/00012.mts", false},  {"BDMV/STREAM/00012.clpi", false},    {"BDMV/00012.mts", false},
      {"AVCHD/STREAM/00012.mts", false},  {"a/BDMV/STREAM/00012.mts", false},   {"a/BDMV/CLIPINF/00012.clpi", true},
      {"b/BDMV/CLIPINF/00012.clpi", false}, {"c/BDMV/STREAM/00012.mts", false},
  };
  for (const auto& [relative, recognised] : kCases) {
    EXPECT_EQ(IsSpannedClipFile(dir.WPath(relative)), recognised) << relative;
  }
}

// Keeps what VisitPlayItems hands over: clip number and condition byte.
struct RecordingVisitor : PlayItemVisitor {
  bool Visit(const std::uint8_t* item) override {
    items.emplace_back(ClipNumberOf(item), item[12]);
    return true;
  }
  PlayItems items;
};

// Every damage leaves a prefix of the items readable, and never a read past
// the data.
TEST(PlaylistReading, ItemsAreReadOnlyWhereTheHeaderAndLengthsHoldThem) {
  const PlayItems three = {{"00001", 1}, {"00002", 6}, {"00003", 0x16}};
  const Bytes intact = aurivox_test::MakePlaylist(three);
  const auto size = static_cast<std::uint32_t>(intact.size());
  const std::size_t third = aurivox_test::kFirstItemOffset + 2 * aurivox_test::kItemSize;
  const std::tuple<const char*, std::function<void(Bytes&)>, std::size_t> kCases[] = {
      {"intact", [](Bytes&) {}, 3},
      {"version 0101", [](Bytes& b) { b[7] = '1'; }, 0},
      {"type MPLX", [](Bytes& b) { b[3] = 'X'; }, 0},
      {"no items", [](Bytes& b) { PutBigEndian(b, kSectionStart + 6, 0, 2); }, 0},
      {"two items", [](Bytes& b) { PutBigEndian(b, kSectionStart + 6, 2, 2); }, 2},
      {"section 9 bytes before the end", [&](Bytes& b) { PutBigEndian(b, 8, size - 9, 4); }, 0},
      // Must not wrap round to the file's start.
      {"section start near 4 GiB", [](Bytes& b) { PutBigEndian(b, 8, 0xFFFFFFF8, 4); }, 0},
      // length + 4 + start is summed in 32 bits: reaching 2^32 wraps round to
      // 0, which passes.
      {"length wraps to 0", [](Bytes& b) { PutBigEndian(b, kSectionStart, 0u - 4 - kSectionStart, 4); }, 3},
      {"length one short", [](Bytes& b) { PutBigEndian(b, kSectionStart, 0u - 5 - kSectionStart, 4); }, 0},
      {"third item running past the end", [&](Bytes& b) { PutBigEndian(b, third, 200, 2); }, 2},
      // The last item counts only when two more bytes follow it.
      {"one byte after the items", [&](Bytes& b) { b.resize(size - 5); }, 2},
      {"two bytes after the items", [&](Bytes& b) { b.resize(size - 4); }, 3},
      // Declared 2 bytes long with 4 bytes after it: the fields visitors read
      // would reach past the end of the file.
      {"third item too short for its fields",
       [&](Bytes& b) {
         b.resize(third + 8);
         PutBigEndian(b, third, 2, 2);
         PutBigEndian(b, kSectionStart, 0, 4);
       },
       2},
  };
  aurivox_test::TempDir dir;
  for (const auto& [what, damage, items] : kCases) {
    Bytes bytes = intact;
    damage(bytes);
    RecordingVisitor visitor;
    VisitPlayItems(aurivox_test::ToWString(dir.WriteFile("00001.mpls", bytes)), visitor);
    EXPECT_EQ(visitor.items, PlayItems(three.begin(), three.begin() + items)) << what;
  }
}

}  // namespace
}  // namespace AVCHDUtils
