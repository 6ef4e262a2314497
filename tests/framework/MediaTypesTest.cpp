#include <gtest/gtest.h>

#include <cstring>

#include "Pellmark/ChannelLayout.h"
#include "aurivox/HostRecords.h"
#include "orxaccelerate/Utility.h"
#include "orxmediatypes/AudioFormat.h"

namespace {

using orxmediatypes::AudioChannelDescription;
using orxmediatypes::AudioChannelLayout;

AudioChannelLayout Layout(std::initializer_list<std::uint32_t> labels) {
  AudioChannelLayout layout;
  for (std::uint32_t label : labels) layout.emplace_back(label);
  return layout;
}

TEST(ChannelLayout, DescriptionNamesEveryChannel) {
  EXPECT_EQ(orxmediatypes::AudioChannelLayoutDescription(Layout({100, 101, 102, 103, 104, 105})),
            "L, R, C, LFE, Ls, Rs");
  EXPECT_EQ(orxmediatypes::AudioChannelLayoutDescription(Layout({107, 108, 106, 0})), "Lc, Rc, Cs, Discrete");
  EXPECT_EQ(orxmediatypes::AudioChannelLayoutDescription(Layout({117, 99})), "Tbc, Label 99");
  EXPECT_EQ(orxmediatypes::AudioChannelLayoutDescription({}), "");
}

TEST(AudioFormat, CreateKeepsLayoutAndRateAndCountsChannels) {
  auto format = orxmediatypes::AudioFormat::CreateAudioFormat(Layout({100, 101}), 48000);
  EXPECT_EQ(format.GetSampleRate(), 48000u);
  EXPECT_EQ(format.GetChannelCount(), 2u);
  EXPECT_EQ(format.GetSampleType(), orxmediatypes::kSampleTypeOther);
  format.SetSampleType(orxmediatypes::kSampleTypeInt24);
  EXPECT_EQ(format.GetSampleType(), 30);
}

TEST(Pellmark, WritesOneLabelPerChannelAndLeavesTheRest) {
  QzAudioChannelLabel labels[4];
  std::fill(std::begin(labels), std::end(labels), static_cast<QzAudioChannelLabel>(-7));
  Pellmark::BEToSDKAudioChannelLayout(Layout({100, 0}), 4, labels);
  EXPECT_EQ(labels[0], kQzAudioChannelLabel_FrontLeft);
  EXPECT_EQ(labels[1], kQzAudioChannelLabel_Discrete);
  EXPECT_EQ(labels[2], -7);

  Pellmark::BEToSDKAudioChannelLayout(Layout({102, 103, 104}), 2, labels);
  EXPECT_EQ(labels[1], kQzAudioChannelLabel_LowFrequency);
  EXPECT_EQ(labels[2], -7);  // beyond `count`
}

TEST(Accelerate, ZeroClearsExactlyTheFloatsAsked) {
  float buffer[8];
  std::fill(std::begin(buffer), std::end(buffer), 1.5f);
  orxaccelerate::utility::Zero(3, buffer + 4);
  EXPECT_EQ(buffer[3], 1.5f);
  EXPECT_EQ(buffer[4], 0.0f);
  EXPECT_EQ(buffer[6], 0.0f);
  EXPECT_EQ(buffer[7], 1.5f);
}

TEST(Accelerate, CopyAndSwapBytes) {
  std::uint32_t values[2] = {0x11223344u, 0xA0B0C0D0u};
  orxaccelerate::utility::SwapBytes(2, values);
  EXPECT_EQ(values[0], 0x44332211u);
  EXPECT_EQ(values[1], 0xD0C0B0A0u);
  std::uint16_t shorts[1] = {0x1234};
  orxaccelerate::utility::SwapBytes(1, shorts);
  EXPECT_EQ(shorts[0], 0x3412);
  const float source[3] = {1, 2, 3};
  float target[3] = {};
  orxaccelerate::utility::Copy(3, source, target);
  EXPECT_EQ(std::memcmp(source, target, sizeof source), 0);
}

TEST(HostRecords, FieldsWriteTheDocumentedBytes) {
  imFileInfoRec8 info;
  std::memset(&info, 0xAB, sizeof info);
  info.hasAudio = 1;
  info.numChannels = 6;
  info.sampleRate = 48000.0f;
  info.sampleType = 12;
  info.audioDuration = 0x0102030405060708;
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(&info);
  EXPECT_EQ(bytes[0], 0xAB);
  EXPECT_EQ(bytes[1], 1);
  EXPECT_EQ(bytes[2], 0xAB);
  EXPECT_EQ(bytes[173], 0xAB);
  EXPECT_EQ(bytes[174], 6);
  EXPECT_EQ(bytes[182], 12);
  EXPECT_EQ(bytes[186], 0x08);
  EXPECT_EQ(bytes[193], 0x01);
  EXPECT_EQ(bytes[194], 0xAB);
  float rate;
  std::memcpy(&rate, bytes + 178, sizeof rate);
  EXPECT_EQ(rate, 48000.0f);

  imImportAudioRec7 request;
  float* buffers[1] = {nullptr};
  request.buffer = buffers;
  float** stored;
  std::memcpy(&stored, reinterpret_cast<const std::uint8_t*>(&request) + 12, sizeof stored);
  EXPECT_EQ(stored, buffers);
}

}  // namespace
