#include "ChannelMask.h"

#include <gtest/gtest.h>

#include <vector>

namespace windowsmediafoundation {
namespace {

using Labels = std::vector<std::uint32_t>;

TEST(ChannelMask, LayoutsFromMasks) {
  const struct {
    std::uint32_t mask;
    std::int32_t channels;
    Labels labels;
  } kCases[] = {
      // Bits past the last channel are not looked at.
      {0x63F, 6, {100, 101, 102, 103, 104, 105}},
      // The host's label codes are not in bit order everywhere.
      {0x3FFFF, 18, {100, 101, 102, 103, 104, 105, 107, 108, 106, 109, 110, 111, 112, 114, 113, 115, 117, 116}},
      // Bits above 17 name no speaker; channels without one are unlabelled.
      {0x80040014u, 3, {102, 104, 0}},
      {0x3F, 0, {}},
      {0x3F, -4, {}},
  };
  for (const auto& c : kCases) {
    orxmediatypes::AudioChannelLayout layout(5, orxmediatypes::AudioChannelDescription(999));
    ChannelMaskToLayout(c.mask, layout, c.channels);
    Labels labels;
    for (const auto& channel : layout) labels.push_back(channel.GetLabel());
    EXPECT_EQ(labels, c.labels) << std::hex << c.mask << " with " << c.channels;
    EXPECT_EQ(ChannelLayoutFromMask(c.mask, c.channels).size(), c.labels.size());
  }
}

}  // namespace
}  // namespace windowsmediafoundation
