// The channel-label stand-ins and the host records.
#include <gtest/gtest.h>

#include <cstring>

#include "Pellmark/ChannelLayout.h"
#include "aurivox/HostRecords.h"
#include "orxmediatypes/AudioFormat.h"

namespace {

TEST(ChannelLayout, DescriptionAndHostLabelsCoverEveryChannelAsked) {
  const std::vector<std::uint32_t> labelValues = {103, 0, 117, 118, 99};
  const orxmediatypes::AudioChannelLayout layout(labelValues.begin(), labelValues.end());
  EXPECT_EQ(orxmediatypes::AudioChannelLayoutDescription(layout), "LFE, Discrete, Tbc, Label 118, Label 99");
  QzAudioChannelLabel labels[3];
  std::fill(std::begin(labels), std::end(labels), static_cast<QzAudioChannelLabel>(-7));
  Pellmark::BEToSDKAudioChannelLayout(layout, 2, labels);
  EXPECT_EQ(labels[0], kQzAudioChannelLabel_LowFrequency);
  EXPECT_EQ(labels[1], kQzAudioChannelLabel_Discrete);
  EXPECT_EQ(labels[2], -7);  // beyond `count`
}

TEST(HostRecords, FieldsWriteTheDocumentedBytesAndNoOthers) {
  imFileInfoRec8 info;
  std::memset(&info, 0xAB, sizeof info);
  info.hasAudio = 1;
  info.numChannels = 6;
  info.sampleRate = 48000.0f;
  info.sampleType = 12;
  info.audioDuration = 0x0102030405060708;
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(&info);
  const std::pair<int, std::uint8_t> kBytes[] = {{0, 0xAB},   {1, 1},    {2, 0xAB},   {173, 0xAB}, {174, 6},   {177, 0},
                                                 {181, 0x47}, {182, 12}, {186, 0x08}, {193, 0x01}, {194, 0xAB}};
  for (const auto& [offset, value] : kBytes) EXPECT_EQ(bytes[offset], value) << offset;
}

}  // namespace
