#include <gtest/gtest.h>

#include <utility>

#include "AVCHDUtils.h"
#include "PlayItemVisitors.h"
#include "PlaylistBuilder.h"
#include "orxcore/File.h"

namespace AVCHDUtils {
namespace {

using aurivox_test::kNewShot;
using aurivox_test::kSameShot;
using aurivox_test::PlaylistBuilder;
using aurivox_test::RecordingTree;

const bool kWindows = orxcore::File::PreferredSeparator() == u'\\';

class ClipRecognition : public ::testing::Test {
 protected:
  bool Recognised(const std::string& relative) const { return IsSpannedClipFile(tree_.Path(relative)); }
  RecordingTree tree_;
};

TEST_F(ClipRecognition, FiveDigitTitlesWithTheExtensionOfTheirFolder) {
  tree_.dir().MakeDir("BDMV/STREAM/STREAM");
  const std::pair<const char*, bool> kCases[] = {
      {"STREAM/00012.mts", true},     {"STREAM/00012.m2ts", true},     {"CLIPINF/00012.clpi", true},
      {"CLIPINF/00012.cpi", true},    {"STREAM/99999.mts", true},      {"STREAM/0012.mts", false},
      {"STREAM/000123.mts", false},   {"STREAM/0001a.mts", false},     {"STREAM/-0001.mts", false},
      {"STREAM/00012.mts.mts", false}, {"CLIPINF/00012.mts", false},   {"STREAM/00012.clpi", false},
      {"00012.mts", false},           {"STREAM/STREAM/00012.mts", false},
      // Cameras write upper-case extensions, read on every platform's card reader.
      {"STREAM/00012.MTS", true},     {"STREAM/00012.M2ts", true},     {"CLIPINF/00012.CLPI", true},
  };
  for (const auto& [relative, recognised] : kCases) EXPECT_EQ(Recognised(relative), recognised) << relative;
}

TEST_F(ClipRecognition, RecordingRootMustBeNamedBDMV) {
  aurivox_test::TempDir other;
  for (const char* folder : {"AVCHD/STREAM", "AVCHD/CLIPINF", "AVCHD/PLAYLIST"}) other.MakeDir(folder);
  EXPECT_FALSE(IsSpannedClipFile(other.WPath("AVCHD/STREAM/00012.mts")));
}

TEST_F(ClipRecognition, PlaylistAndSiblingFoldersMustExist) {
  tree_.Remove("CLIPINF");
  EXPECT_FALSE(Recognised("STREAM/00012.mts"));
  EXPECT_TRUE(Recognised("CLIPINF/00012.clpi")) << "needs STREAM, not CLIPINF itself";
  tree_.Remove("STREAM");
  EXPECT_FALSE(Recognised("CLIPINF/00012.clpi"));

  RecordingTree withoutPlaylists;
  withoutPlaylists.Remove("PLAYLIST");
  EXPECT_FALSE(IsSpannedClipFile(withoutPlaylists.Path("STREAM/00012.mts")));
  // A file of that name is not the folder.
  withoutPlaylists.dir().WriteFile("BDMV/PLAYLIST", "not a folder");
  EXPECT_FALSE(IsSpannedClipFile(withoutPlaylists.Path("STREAM/00012.mts")));
}

TEST_F(ClipRecognition, FolderNamesFollowThePlatformsCaseRules) {
  // BDMV in lower case, the stream folder named in lower case in the path.
  std::u16string path = tree_.Path("stream/00012.mts");
  path.replace(path.rfind(u"BDMV"), 4, u"bdmv");
  if (kWindows) {
    EXPECT_TRUE(IsSpannedClipFile(path));
    // Forward slashes in place of backslashes.
    for (char16_t& c : path) {
      if (c == u'\\') c = u'/';
    }
    EXPECT_TRUE(IsSpannedClipFile(path));
  } else {
    // Names compare exactly here, even where the folders exist as named.
    tree_.dir().MakeDir("BDMV/stream");
    EXPECT_FALSE(IsSpannedClipFile(tree_.Path("stream/00012.mts")));
  }
}

// Records what VisitPlayItems hands over: clip number and condition byte.
class RecordingVisitor : public PlayItemVisitor {
 public:
  explicit RecordingVisitor(std::size_t stopAfter = SIZE_MAX) : stopAfter_(stopAfter) {}
  bool Visit(const std::uint8_t* item) override {
    items.emplace_back(ClipNumberOf(item), item[12]);
    return items.size() < stopAfter_;
  }
  std::vector<std::pair<std::string, int>> items;

 private:
  std::size_t stopAfter_;
};

using Items = std::vector<std::pair<std::string, int>>;

class PlaylistReading : public ::testing::Test {
 protected:
  Items Visited(const std::vector<std::uint8_t>& bytes) {
    RecordingVisitor visitor;
    VisitPlayItems(aurivox_test::ToWString(tree_.dir().WriteFile("BDMV/PLAYLIST/00001.mpls", bytes)), visitor);
    return visitor.items;
  }
  Items Visited(const PlaylistBuilder& playlist) { return Visited(playlist.Build()); }

  RecordingTree tree_;
  PlaylistBuilder threeItems_ = PlaylistBuilder().Item("00001", 1).Item("00002", 6).Item("00003", 0x16);
};

TEST_F(PlaylistReading, VisitsEveryItemInFileOrder) {
  EXPECT_EQ(Visited(threeItems_), (Items{{"00001", 1}, {"00002", 6}, {"00003", 0x16}}));
}

TEST_F(PlaylistReading, OnlyVersion0100IsRead) {
  for (const char* version : {"0200", "0300", "0101", "0100"}) {
    PlaylistBuilder playlist = threeItems_;
    EXPECT_EQ(Visited(playlist.Version(version)).size(), std::string(version) == "0100" ? 3u : 0u)
        << version;
  }
  PlaylistBuilder wrongType = threeItems_;
  EXPECT_TRUE(Visited(wrongType.Type("MPLX")).empty());
}

TEST_F(PlaylistReading, FilesTooShortForTheHeaderAreNotRead) {
  // Eleven bytes end inside the start address; reading it would overrun.
  std::vector<std::uint8_t> bytes = threeItems_.Build();
  bytes.resize(11);
  EXPECT_TRUE(Visited(bytes).empty());
}

TEST_F(PlaylistReading, ItemCountDecidesHowManyAreRead) {
  PlaylistBuilder none = threeItems_, two = threeItems_;
  EXPECT_TRUE(Visited(none.ItemCount(0)).empty());
  EXPECT_EQ(Visited(two.ItemCount(2)).size(), 2u);
}

TEST_F(PlaylistReading, SectionMustFitInTheFile) {
  const std::size_t size = threeItems_.Build().size();
  PlaylistBuilder pastEnd = threeItems_, wrapping = threeItems_, tooLong = threeItems_;
  EXPECT_TRUE(Visited(pastEnd.StartAddress(static_cast<std::uint32_t>(size - 9))).empty());
  // A start address near 4 GiB must not wrap round to the file's start.
  EXPECT_TRUE(Visited(wrapping.StartAddress(0xFFFFFFF8)).empty());
  EXPECT_TRUE(Visited(tooLong.SectionLength(static_cast<std::uint32_t>(size))).empty());
}

TEST_F(PlaylistReading, SectionLengthIsCheckedIn32Bits) {
  const std::vector<std::uint8_t> bytes = threeItems_.Build();
  const std::uint32_t start = std::uint32_t{bytes[8]} << 24 | bytes[9] << 16 | bytes[10] << 8 | bytes[11];
  PlaylistBuilder wrapsToZero = threeItems_, oneShort = threeItems_;
  // length + 4 + start reaches 2^32 and wraps round to 0, which passes.
  EXPECT_EQ(Visited(wrapsToZero.SectionLength(0u - 4u - start)).size(), 3u);
  EXPECT_TRUE(Visited(oneShort.SectionLength(0u - 5u - start)).empty());
}

TEST_F(PlaylistReading, ItemRunningPastTheEndStopsTheVisiting) {
  PlaylistBuilder playlist = threeItems_;
  playlist.Item("00004", 1).LastItemLength(200).Item("00005", 6);
  EXPECT_EQ(Visited(playlist.SectionLength(0)).size(), 3u);
}

TEST_F(PlaylistReading, LastItemCountsOnlyWhenTwoMoreBytesFollow) {
  for (std::size_t trailing : {0, 1, 2, 6}) {
    PlaylistBuilder playlist = threeItems_;
    EXPECT_EQ(Visited(playlist.TrailingBytes(trailing)).size(), trailing >= 2 ? 3u : 2u) << trailing;
  }
}

TEST_F(PlaylistReading, ItemTooShortForItsFieldsIsNotReadPastTheData) {
  // Declared 2 bytes long with 4 bytes after it: the fields visitors read
  // would reach past the end of the file.
  PlaylistBuilder playlist = threeItems_;
  std::vector<std::uint8_t> bytes = playlist.SectionLength(0).Build();
  const std::size_t third = PlaylistBuilder::kFirstItemOffset + 2 * PlaylistBuilder::kItemSize;
  bytes.resize(third + 2 + 2 + 4);
  bytes[third] = 0;
  bytes[third + 1] = 2;
  EXPECT_EQ(Visited(bytes).size(), 2u);
}

}  // namespace
}  // namespace AVCHDUtils
