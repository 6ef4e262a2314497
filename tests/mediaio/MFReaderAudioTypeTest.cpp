// MFReader's client audio type: negotiation, the format read back, channel
// masks and the set-up trace, driven by a scripted source reader.
#include <mferror.h>

#include "FakeReaderTest.h"

namespace windowsmediafoundation {
namespace {

using aurivox_test::FakeAudioFormat;
using aurivox_test::FakeReaderTest;
using Microsoft::WRL::ComPtr;

std::vector<std::uint32_t> Labels(const orxmediatypes::AudioChannelLayout& layout) {
  std::vector<std::uint32_t> labels;
  for (const auto& channel : layout) labels.push_back(channel.GetLabel());
  return labels;
}

FakeAudioFormat Surround51Aac() {
  FakeAudioFormat format;
  format.subtype = MFAudioFormat_AAC;
  format.channels = 6;
  format.samplesPerSecond = 48000;
  format.bitsPerSample = 16;
  format.avgBytesPerSecond = 48000;
  format.channelMask = 0x3F;
  return format;
}

class MFReaderAudioTypeTest : public FakeReaderTest {
 protected:
  std::vector<std::string> AskedSubtypes() const {
    std::vector<std::string> names;
    for (const GUID& subtype : fake->askedSubtypes) {
      names.push_back(IsEqualGUID(subtype, MFAudioFormat_PCM)     ? "PCM"
                      : IsEqualGUID(subtype, MFAudioFormat_Float) ? "Float"
                                                                  : "other");
    }
    return names;
  }
};

// PCM sources are asked for PCM only; others for float first, then PCM.
TEST_F(MFReaderAudioTypeTest, NegotiationOfTheClientSubtype) {
  const struct {
    const char* name;
    bool compressed;
    std::vector<GUID> accepted;
    std::vector<std::string> asked;
    std::uint32_t bitsPerSample;  // 0: the open fails
  } kCases[] = {
      {"PCM source", false, {MFAudioFormat_Float, MFAudioFormat_PCM}, {"PCM"}, 16},
      {"PCM source refusing PCM", false, {MFAudioFormat_Float}, {"PCM"}, 0},
      {"compressed source", true, {MFAudioFormat_Float, MFAudioFormat_PCM}, {"Float"}, 32},
      {"compressed source refusing float", true, {MFAudioFormat_PCM}, {"Float", "PCM"}, 16},
      {"compressed source refusing both", true, {}, {"Float", "PCM"}, 0},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    fake = aurivox_test::FakeSourceReader::Create();
    if (c.compressed) fake->sourceAudio = Surround51Aac();
    fake->acceptedSubtypes = c.accepted;
    reader = std::make_unique<MFReader>();
    EXPECT_EQ(Open(), c.bitsPerSample != 0);
    EXPECT_EQ(AskedSubtypes(), c.asked);
    EXPECT_EQ(reader->bitsPerSample(), c.bitsPerSample);
    if (c.bitsPerSample == 0) EXPECT_EQ(status.hr, MF_E_INVALIDMEDIATYPE);
    reader.reset();
  }
}

TEST_F(MFReaderAudioTypeTest, TheClientFormatIsReadBack) {
  fake->sourceAudio = Surround51Aac();
  ASSERT_TRUE(Open());
  EXPECT_EQ(reader->channels(), 6u);
  EXPECT_EQ(reader->samplesPerSecond(), 48000u);
  EXPECT_EQ(reader->avgBytesPerSecond(), 48000u * 6 * 4);
}

TEST_F(MFReaderAudioTypeTest, TheProposalCarriesOnlyTypeSubtypeChannelsAndMask) {
  fake->sourceAudio = Surround51Aac();
  ASSERT_TRUE(Open());
  ASSERT_EQ(fake->proposedTypes.size(), 1u);
  IMFMediaType* proposed = fake->proposedTypes[0].Get();
  GUID major = GUID_NULL;
  ASSERT_EQ(proposed->GetGUID(MF_MT_MAJOR_TYPE, &major), S_OK);
  EXPECT_TRUE(IsEqualGUID(major, MFMediaType_Audio));
  UINT32 value = 0;
  ASSERT_EQ(proposed->GetUINT32(MF_MT_AUDIO_NUM_CHANNELS, &value), S_OK);
  EXPECT_EQ(value, 6u);
  ASSERT_EQ(proposed->GetUINT32(MF_MT_AUDIO_CHANNEL_MASK, &value), S_OK);
  EXPECT_EQ(value, 0x3Fu);
  UINT32 count = 0;
  ASSERT_EQ(proposed->GetCount(&count), S_OK);
  EXPECT_EQ(count, 4u) << "rate, width, alignment and byte rate are the decoder's";
}

TEST_F(MFReaderAudioTypeTest, AZeroOrMissingSourceMaskIsNotProposed) {
  fake->sourceAudio->channelMask = 0;
  ASSERT_TRUE(Open());
  UINT32 value = 0;
  EXPECT_EQ(fake->proposedTypes.at(0)->GetUINT32(MF_MT_AUDIO_CHANNEL_MASK, &value), MF_E_ATTRIBUTENOTFOUND);

  fake->sourceAudio->channelMask.reset();
  fake->sourceAudio->channels.reset();
  ASSERT_TRUE(Open());
  EXPECT_EQ(fake->proposedTypes.at(1)->GetUINT32(MF_MT_AUDIO_CHANNEL_MASK, &value), MF_E_ATTRIBUTENOTFOUND);
  EXPECT_EQ(fake->proposedTypes.at(1)->GetUINT32(MF_MT_AUDIO_NUM_CHANNELS, &value), MF_E_ATTRIBUTENOTFOUND);
}

TEST_F(MFReaderAudioTypeTest, AStereoClientTypeWithoutAMaskCountsAsFrontLeftAndRight) {
  ASSERT_TRUE(Open());
  EXPECT_EQ(reader->channelMask(), 3u);
  EXPECT_EQ(Labels(reader->channelLayout()), (std::vector<std::uint32_t>{100, 101}));
}

TEST_F(MFReaderAudioTypeTest, OnlyStereoGetsADefaultMask) {
  fake->sourceAudio->channels = 1;
  ASSERT_TRUE(Open());
  EXPECT_EQ(reader->channelMask(), 0u);
  EXPECT_EQ(Labels(reader->channelLayout()), std::vector<std::uint32_t>{0});
}

TEST_F(MFReaderAudioTypeTest, SetupAudioTracesTheSourceAndClientFormats) {
  fake->sourceAudio = Surround51Aac();
  CaptureTrace("windowsmediafoundation.MFReader.SetupAudio=6");
  ASSERT_TRUE(Open());
  EXPECT_EQ(CapturedTrace(),
            "Source MF_MT_AUDIO_NUM_CHANNELS:\t6\r\n"
            "Source MF_MT_AUDIO_SAMPLES_PER_SECOND:\t48000\r\n"
            "Source MF_MT_AUDIO_BITS_PER_SAMPLE:\t16\r\n"
            "Source MF_MT_AUDIO_AVG_BYTES_PER_SECOND:\t48000\r\n"
            "Source MF_MT_AUDIO_CHANNEL_MASK:\t0x3F\r\n"
            "Source Channel Layout:\tL, R, C, LFE, Ls, Rs\r\n"
            "Client MF_MT_AUDIO_NUM_CHANNELS:\t6\r\n"
            "Client MF_MT_AUDIO_SAMPLES_PER_SECOND:\t48000\r\n"
            "Client MF_MT_AUDIO_BITS_PER_SAMPLE:\t32\r\n"
            "Client MF_MT_AUDIO_AVG_BYTES_PER_SECOND:\t1152000\r\n"
            "Client MF_MT_AUDIO_CHANNEL_MASK:\t0x3F\r\n"
            "Client Channel Layout:\tL, R, C, LFE, Ls, Rs\r\n");
}

TEST_F(MFReaderAudioTypeTest, ConfigureClientAudioTypeReturnsTheTypeInForce) {
  fake->sourceAudio = Surround51Aac();
  ASSERT_TRUE(Open());
  ComPtr<IMFMediaType> client;
  ASSERT_EQ(reader->ConfigureClientAudioType(MFAudioFormat_PCM, &client), S_OK);
  GUID subtype = GUID_NULL;
  ASSERT_EQ(client->GetGUID(MF_MT_SUBTYPE, &subtype), S_OK);
  EXPECT_TRUE(IsEqualGUID(subtype, MFAudioFormat_PCM));
  UINT32 bits = 0;
  ASSERT_EQ(client->GetUINT32(MF_MT_AUDIO_BITS_PER_SAMPLE, &bits), S_OK);
  EXPECT_EQ(bits, 16u) << "the decoder's choice, not the proposal";

  CaptureTrace("windowsmediafoundation.MFReader.ConfigureClientAudioType=5");
  EXPECT_EQ(reader->ConfigureClientAudioType(MFAudioFormat_PCM, nullptr), E_POINTER);
  EXPECT_EQ(CapturedTrace(), ErrorLine(E_POINTER));
}

TEST_F(MFReaderAudioTypeTest, SetupAudioEmptiesPendingAudio) {
  fake->reads = {aurivox_test::SampleRead(aurivox_test::Pcm16({0, 0})),  // the priming read
                 aurivox_test::SampleRead(aurivox_test::Pcm16({1, 2, 3, 4, 5, 6}))};
  ASSERT_TRUE(Open());
  auto first = Read(1, 2, 2);
  ASSERT_TRUE(first.ok);
  ASSERT_EQ(first.count, 1);
  ASSERT_EQ(reader->SetupAudio(), S_OK);
  auto second = Read(2, 2, 2);
  ASSERT_TRUE(second.ok);
  EXPECT_EQ(second.count, 0) << "the two frames left over were dropped";
}

}  // namespace
}  // namespace windowsmediafoundation
