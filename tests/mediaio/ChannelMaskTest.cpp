#include "ChannelMask.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

namespace windowsmediafoundation {
namespace {

using Labels = std::vector<std::uint32_t>;

TEST(ChannelMask, LayoutsFromMasks) {
  // Mask and channel count: labels.
  const std::tuple<std::uint32_t, std::int32_t, Labels> kCases[] = {
      // Bits past the last channel are not looked at.
      {0x63F, 6, {100, 101, 102, 103, 104, 105}},
      // The host's label codes are not in bit order everywhere.
      {0x3FFFF, 18, {100, 101, 102, 103, 104, 105, 107, 108, 106, 109, 110, 111, 112, 114, 113, 115, 117, 116}},
      // Bits above 17 name no speaker; channels without one are unlabelled.
      {0x80040014u, 3, {102, 104, 0}},
      {0x3F, 0, {}}, {0x3F, -4, {}},
  };
  for (const auto& [mask, channels, labels] : kCases) {
    orxmediatypes::AudioChannelLayout layout(5, orxmediatypes::AudioChannelDescription(999));
    ChannelMaskToLayout(mask, layout, channels);
    Labels got;
    for (const auto& channel : layout) got.push_back(channel.GetLabel());
    EXPECT_EQ(got, labels) << std::hex << mask << " with " << channels;
    EXPECT_EQ(ChannelLayoutFromMask(mask, channels).size(), labels.size());
  }
}

}  // namespace
}  // namespace windowsmediafoundation
