#include "ChannelMask.h"

#include <gtest/gtest.h>

#include <vector>

namespace windowsmediafoundation {
namespace {

std::vector<std::uint32_t> Labels(std::uint32_t mask, std::int32_t channels) {
  std::vector<std::uint32_t> labels;
  for (const auto& channel : ChannelLayoutFromMask(mask, channels)) labels.push_back(channel.GetLabel());
  return labels;
}

using Labels_ = std::vector<std::uint32_t>;

TEST(ChannelMask, FivePointOneInBitOrder) {
  EXPECT_EQ(Labels(0x3F, 6), (Labels_{100, 101, 102, 103, 104, 105}));
}

TEST(ChannelMask, StopsOnceEveryChannelHasALabel) {
  // Bits 9 and 10 (side left and right) come after the sixth channel.
  EXPECT_EQ(Labels(0x63F, 6), (Labels_{100, 101, 102, 103, 104, 105}));
  EXPECT_EQ(Labels(0x3FFFF, 1), (Labels_{100}));
}

TEST(ChannelMask, SideSpeakersFollowTheFrontFour) {
  EXPECT_EQ(Labels(0x60F, 6), (Labels_{100, 101, 102, 103, 109, 110}));
}

TEST(ChannelMask, HostLabelsOutOfBitOrderAreKept) {
  EXPECT_EQ(Labels(0x1C0, 3), (Labels_{107, 108, 106}));
  EXPECT_EQ(Labels(0x6000, 2), (Labels_{114, 113}));
  EXPECT_EQ(Labels(0x30000, 2), (Labels_{117, 116}));
  EXPECT_EQ(Labels(0x3FFFF, 18),
            (Labels_{100, 101, 102, 103, 104, 105, 107, 108, 106, 109, 110, 111, 112, 114, 113, 115, 117, 116}));
}

TEST(ChannelMask, MissingSpeakersBecomeUnlabelledChannels) {
  EXPECT_EQ(Labels(0, 2), (Labels_{0, 0}));
  EXPECT_EQ(Labels(0x3, 4), (Labels_{100, 101, 0, 0}));
}

TEST(ChannelMask, BitsAbove17AreIgnored) {
  EXPECT_EQ(Labels(0x80000000u | 0x40000 | 0x4, 2), (Labels_{102, 0}));
  EXPECT_EQ(Labels(0xFFFC0000u, 3), (Labels_{0, 0, 0}));
}

TEST(ChannelMask, NoChannelsGiveAnEmptyLayout) {
  EXPECT_TRUE(Labels(0x3F, 0).empty());
  EXPECT_TRUE(Labels(0x3F, -4).empty());
}

TEST(ChannelMask, ConversionReplacesWhatTheLayoutHeld) {
  orxmediatypes::AudioChannelLayout layout(5, orxmediatypes::AudioChannelDescription(999));
  ChannelMaskToLayout(0x3, layout, 2);
  ASSERT_EQ(layout.size(), 2u);
  EXPECT_EQ(layout[0].GetLabel(), 100u);
  EXPECT_EQ(layout[1].GetLabel(), 101u);
}

}  // namespace
}  // namespace windowsmediafoundation
