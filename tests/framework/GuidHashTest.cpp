#include <gtest/gtest.h>

#include <set>

#include "orxcore/Guid.h"
#include "orxcore/Hash.h"

namespace orxcore {
namespace {

// {00001610-0000-0010-8000-00AA00389B71}, the AAC subtype.
const Guid kAac{0x00001610, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71}};

TEST(Guid, BytesFollowTheWindowsMemoryLayout) {
  const Guid g{0x01020304, 0x0506, 0x0708, {0x09, 0x0A, 0x0B, 0x0C, 0x0D, 0x0E, 0x0F, 0x10}};
  const std::array<std::uint8_t, 16> expected = {0x04, 0x03, 0x02, 0x01, 0x06, 0x05, 0x08, 0x07,
                                                 0x09, 0x0A, 0x0B, 0x0C, 0x0D, 0x0E, 0x0F, 0x10};
  EXPECT_EQ(g.GuidToBytes(), expected);
  EXPECT_EQ(Guid::FromBytes(expected), g);
}

TEST(Guid, TextIsUpperCaseWithoutBraces) {
  EXPECT_EQ(kAac.AsString(), u"00001610-0000-0010-8000-00AA00389B71");
  EXPECT_EQ(Guid{}.AsString(), u"00000000-0000-0000-0000-000000000000");
}

TEST(Guid, OrdersByUnsignedBytesFirstByteFirst) {
  Guid low, high;
  low.data1 = 0xFF000000;  // first byte in memory is 0x00
  high.data1 = 0x00000001; // first byte in memory is 0x01
  EXPECT_TRUE(low < high);
  EXPECT_FALSE(high < low);
  EXPECT_TRUE(Guid{}.IsNull());
  EXPECT_FALSE(kAac.IsNull());
}

Guid HashOfPath(const WString& path) {
  HashValueMixerState state;
  UpdateHashState(state, nullptr, 0);
  UpdateHashState(state, path.data(), path.size() * sizeof(char16_t));
  return GetHashResult(state);
}

TEST(Hash, LowerCasedPathsThatDifferInCaseShareAKey) {
  EXPECT_EQ(HashOfPath(ToLowerCase(u"C:\\A.MP4")), HashOfPath(ToLowerCase(u"c:\\a.mp4")));
  EXPECT_NE(HashOfPath(u"C:\\A.MP4"), HashOfPath(u"c:\\a.mp4"));
  EXPECT_NE(HashOfPath(u"c:\\a.mp4"), HashOfPath(u"c:\\b.mp4"));
}

}  // namespace
}  // namespace orxcore
