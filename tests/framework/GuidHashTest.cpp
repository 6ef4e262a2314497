#include <gtest/gtest.h>

#include "orxcore/Guid.h"
#include "orxcore/Hash.h"

namespace orxcore {
namespace {

TEST(Guid, BytesTextAndOrderFollowTheWindowsMemoryLayout) {
  const Guid g{0x01020304, 0x0506, 0x0708, {0x09, 0x0A, 0x0B, 0x0C, 0x0D, 0x0E, 0x0F, 0xA0}};
  const std::array<std::uint8_t, 16> bytes = {4, 3, 2, 1, 6, 5, 8, 7, 9, 10, 11, 12, 13, 14, 15, 0xA0};
  EXPECT_EQ(g.GuidToBytes(), bytes);
  EXPECT_EQ(Guid::FromBytes(bytes), g);
  EXPECT_EQ(g.AsString(), u"01020304-0506-0708-090A-0B0C0D0E0FA0");
  EXPECT_TRUE(Guid{}.IsNull());
  EXPECT_FALSE(g.IsNull());
  // Unsigned bytes, the first byte in memory first.
  const Guid low{0xFF000000, 0, 0, {}}, high{1, 0, 0, {}};
  EXPECT_TRUE(low < high);
  EXPECT_FALSE(high < low);
  EXPECT_FALSE(low < low);
}

Guid HashOf(const WString& path) {
  HashValueMixerState state;
  UpdateHashState(state, nullptr, 0);
  UpdateHashState(state, path.data(), path.size() * sizeof(char16_t));
  return GetHashResult(state);
}

TEST(Hash, LowerCasedPathsThatDifferInCaseShareAKey) {
  EXPECT_EQ(HashOf(ToLowerCase(u"C:\\A.MP4")), HashOf(ToLowerCase(u"c:\\a.mp4")));
  EXPECT_NE(HashOf(u"C:\\A.MP4"), HashOf(u"c:\\a.mp4"));
}

}  // namespace
}  // namespace orxcore
