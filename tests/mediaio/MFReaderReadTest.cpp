// MFReader's sample reading, seeking and length estimate, driven by a
// scripted source reader.
#include <mferror.h>

#include "FakeReaderTest.h"

namespace windowsmediafoundation {
namespace {

using aurivox_test::FakeRead;
using aurivox_test::FakeReaderTest;
using aurivox_test::FlagsRead;
using aurivox_test::Pcm16;
using aurivox_test::SampleRead;
using aurivox_test::TickRead;

using Bytes = std::vector<std::uint8_t>;

FakeRead FailedRead(HRESULT hr) {
  FakeRead read;
  read.hr = hr;
  return read;
}

class MFReaderReadTest : public FakeReaderTest {
 protected:
  // Opens a stereo 16-bit PCM source whose decoder answers `reads` after the
  // priming read.
  void OpenWith(std::vector<FakeRead> reads) {
    fake->reads = {SampleRead(Pcm16({-1, -1}))};  // primed, then dropped by the rewind
    fake->reads.insert(fake->reads.end(), reads.begin(), reads.end());
    ASSERT_TRUE(Open());
  }
};

TEST_F(MFReaderReadTest, SamplesAreJoinedAndSplitIntoChannels) {
  OpenWith({SampleRead(Pcm16({1, 2, 3, 4})), SampleRead(Pcm16({5, 6, 7, 8, 9, 10}))});
  auto result = Read(4, 2, 2);
  ASSERT_TRUE(result.ok);
  EXPECT_EQ(result.count, 4);
  EXPECT_EQ(result.channels[0], Pcm16({1, 3, 5, 7}));
  EXPECT_EQ(result.channels[1], Pcm16({2, 4, 6, 8}));
  EXPECT_EQ(reader->samplesDelivered(), 4);

  // The frame left over comes first in the next request.
  result = Read(1, 2, 2);
  ASSERT_TRUE(result.ok);
  EXPECT_EQ(result.channels[0], Pcm16({9}));
  EXPECT_EQ(result.channels[1], Pcm16({10}));
  EXPECT_EQ(reader->samplesDelivered(), 5);
  EXPECT_FALSE(reader->endOfStream());
}

TEST_F(MFReaderReadTest, AReadAsksOnlyForWhatItNeeds) {
  OpenWith({SampleRead(Pcm16({1, 2, 3, 4})), SampleRead(Pcm16({5, 6}))});
  const int readsAfterOpen = fake->readCalls;
  ASSERT_TRUE(Read(2, 2, 2).ok);
  EXPECT_EQ(fake->readCalls, readsAfterOpen + 1);
}

TEST_F(MFReaderReadTest, SamplesInSeveralBuffersAreMadeContiguous) {
  FakeRead split = SampleRead(Pcm16({1, 2, 3, 4}));
  split.splitAt = 3;  // inside a sample
  OpenWith({split});
  auto result = Read(2, 2, 2);
  ASSERT_TRUE(result.ok);
  EXPECT_EQ(result.channels[0], Pcm16({1, 3}));
  EXPECT_EQ(result.channels[1], Pcm16({2, 4}));
}

TEST_F(MFReaderReadTest, StreamTicksWithoutSamplesAreReadPast) {
  OpenWith({TickRead(), TickRead(), SampleRead(Pcm16({7, 8}))});
  auto result = Read(1, 2, 2);
  ASSERT_TRUE(result.ok);
  EXPECT_EQ(result.count, 1);
  EXPECT_EQ(result.channels[0], Pcm16({7}));
}

TEST_F(MFReaderReadTest, TheEndDeliversTheRestAndLaterRequestsAskAgain) {
  OpenWith({SampleRead(Pcm16({1, 2, 3, 4, 5, 6}))});
  auto result = Read(10, 2, 2);
  ASSERT_TRUE(result.ok);
  EXPECT_EQ(result.count, 3);
  EXPECT_EQ(result.channels[1], Pcm16({2, 4, 6}));
  EXPECT_TRUE(reader->endOfStream());
  const int readsAtEnd = fake->readCalls;

  result = Read(10, 2, 2);
  ASSERT_TRUE(result.ok);
  EXPECT_EQ(result.count, 0);
  EXPECT_EQ(fake->readCalls, readsAtEnd + 1);
  EXPECT_TRUE(reader->endOfStream());
  EXPECT_EQ(reader->samplesDelivered(), 3);
}

TEST_F(MFReaderReadTest, TheEndFlagWinsOverASampleAndATypeChange) {
  FakeRead last = SampleRead(Pcm16({1, 2}));
  last.flags = MF_SOURCE_READERF_ENDOFSTREAM | MF_SOURCE_READERF_CURRENTMEDIATYPECHANGED;
  OpenWith({last});
  auto result = Read(1, 2, 2);
  EXPECT_TRUE(result.ok);
  EXPECT_EQ(result.count, 0);
  EXPECT_TRUE(reader->endOfStream());
}

TEST_F(MFReaderReadTest, ATypeChangeMidStreamFailsWithoutDeliveringOrTracing) {
  OpenWith({SampleRead(Pcm16({1, 2})), FlagsRead(MF_SOURCE_READERF_CURRENTMEDIATYPECHANGED),
            SampleRead(Pcm16({3, 4}))});
  CaptureTrace("windowsmediafoundation.*=7");
  auto result = Read(2, 2, 2);
  EXPECT_EQ(CapturedTrace(), "");
  EXPECT_FALSE(result.ok);
  EXPECT_EQ(result.count, 2) << "the count is left as it was";
  EXPECT_EQ(reader->samplesDelivered(), 0);
  // What was decoded before the change is still there.
  result = Read(2, 2, 2);
  ASSERT_TRUE(result.ok);
  EXPECT_EQ(result.channels[0], Pcm16({1, 3}));
}

TEST_F(MFReaderReadTest, AFailedReadKeepsPendingAudioAndTracesTheError) {
  OpenWith({SampleRead(Pcm16({1, 2})), FailedRead(MF_E_INVALID_STREAM_DATA), SampleRead(Pcm16({3, 4}))});
  CaptureTrace("windowsmediafoundation.MFReader.ReadAudioSamples=5");
  auto result = Read(2, 2, 2);
  EXPECT_EQ(CapturedTrace(), ErrorLine(MF_E_INVALID_STREAM_DATA));
  EXPECT_FALSE(result.ok);
  EXPECT_EQ(result.count, 2);
  EXPECT_FALSE(reader->endOfStream());

  result = Read(2, 2, 2);
  ASSERT_TRUE(result.ok);
  EXPECT_EQ(result.count, 2);
  EXPECT_EQ(result.channels[0], Pcm16({1, 3}));
}

TEST_F(MFReaderReadTest, UnusableArgumentsFailWithoutReading) {
  OpenWith({SampleRead(Pcm16({1, 2}))});
  const int readsAfterOpen = fake->readCalls;
  std::int32_t count = -5;
  float* buffers[2] = {};
  EXPECT_FALSE(reader->ReadAudioSamples(0, count, buffers, 2));
  EXPECT_EQ(count, -5);
  count = 1;
  EXPECT_FALSE(reader->ReadAudioSamples(0, count, buffers, 0));
  EXPECT_FALSE(reader->ReadAudioSamples(0, count, nullptr, 2));
  EXPECT_EQ(fake->readCalls, readsAfterOpen);
}

TEST_F(MFReaderReadTest, NoAudioMeansNoRead) {
  fake->sourceAudio.reset();
  EXPECT_FALSE(Open());
  auto result = Read(4, 2, 2);
  EXPECT_FALSE(result.ok);
}

TEST_F(MFReaderReadTest, SeekPassesTheTimeAndKeepsTheReadingState) {
  OpenWith({SampleRead(Pcm16({1, 2, 3, 4}))});
  ASSERT_TRUE(Read(1, 2, 2).ok);
  EXPECT_EQ(reader->Seek(15'000'000), S_OK);
  EXPECT_EQ(fake->positions, (std::vector<LONGLONG>{0, 15'000'000}));
  EXPECT_EQ(reader->samplesDelivered(), 1);
  auto result = Read(1, 2, 2);
  ASSERT_TRUE(result.ok);
  EXPECT_EQ(result.channels[0], Pcm16({3})) << "pending audio survives a seek";
}

TEST_F(MFReaderReadTest, TheEstimateTruncatesTheDurationToFrames) {
  fake->sourceAudio->samplesPerSecond = 44100;
  fake->duration = 15'000'000;
  OpenWith({});
  EXPECT_EQ(reader->GetEstimatedAudioSampleCount(), 66'150);
}

TEST_F(MFReaderReadTest, OnlyAQuicklySeekingSourceCanSeek) {
  OpenWith({});
  fake->characteristics = MFMEDIASOURCE_CAN_SEEK | MFMEDIASOURCE_CAN_PAUSE;
  EXPECT_EQ(reader->CanSeek(), S_OK);
  EXPECT_TRUE(reader->canSeek());
  fake->characteristics = MFMEDIASOURCE_CAN_SEEK | MFMEDIASOURCE_HAS_SLOW_SEEK;
  EXPECT_EQ(reader->CanSeek(), S_OK);
  EXPECT_FALSE(reader->canSeek());
  fake->characteristics = MFMEDIASOURCE_CAN_PAUSE;
  EXPECT_EQ(reader->CanSeek(), S_OK);
  EXPECT_FALSE(reader->canSeek());
}

}  // namespace
}  // namespace windowsmediafoundation
