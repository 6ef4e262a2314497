// MFReader on a scripted source reader: the open, the client audio type and
// the reading of decoded audio, where Wine's Media Foundation cannot produce
// the answers on demand.
#include <functional>
#include <tuple>

#include "FakeReaderTest.h"
#include "TestStreams.h"
#include "orxcore/String.h"

namespace windowsmediafoundation {
namespace {

using aurivox_test::Attribute;
using aurivox_test::FakeAudioFormat;
using aurivox_test::FakeRead;
using aurivox_test::FakeSourceReader;
using aurivox_test::Pcm16;
using aurivox_test::SampleRead;
using MFReaderTest = aurivox_test::FakeReaderTest;

// How an open ends for each way the platform can fail it.
TEST_F(MFReaderTest, OutcomesOfTheOpen) {
  // What the platform does: the open's status class and code, whether there is audio.
  const std::tuple<const char*, std::function<void(FakeSourceReader&)>, std::int32_t, HRESULT, bool> kCases[] = {
      {"reader not created", [](auto& f) { f.createHr = MF_E_UNSUPPORTED_BYTESTREAM_TYPE; }, kOpenStatusReaderFailed,
       MF_E_UNSUPPORTED_BYTESTREAM_TYPE, false},
      {"no reader handed out", [](auto& f) { f.createNothing = true; }, kOpenStatusNoReader, E_POINTER, false},
      // Only exactly S_OK from the audio type means there is audio.
      {"audio type with S_FALSE", [](auto& f) { f.getCurrentTypeHr = S_FALSE; }, kOpenStatusFine, S_OK, false},
      // A PCM decoder keeps the source's bit depth, here none.
      {"client type without a bit depth", [](auto& f) { f.sourceAudio->bitsPerSample.reset(); },
       kOpenStatusReaderFailed, MF_E_ATTRIBUTENOTFOUND, false},
      // The rewind after a failed priming read decides the result.
      {"failed priming read", [](auto& f) { f.reads = {FakeRead{MF_E_INVALID_STREAM_DATA}}; }, kOpenStatusFine,
       S_OK, false},
      {"failed rewind", [](auto& f) { f.setPositionHr = MF_E_INVALIDREQUEST; }, kOpenStatusReaderFailed,
       MF_E_INVALIDREQUEST, true},
  };
  for (const auto& [name, script, statusClass, hr, hasAudio] : kCases) {
    SCOPED_TRACE(name);
    Reset();
    script(*fake.Get());
    CaptureTrace("windowsmediafoundation.MFReader.Seek=7");
    EXPECT_EQ(Open(), hasAudio);
    EXPECT_EQ(CapturedTrace(), hasAudio ? "Seek To: 0\r\n" + ErrorLine(hr) : "");
    EXPECT_EQ(status.statusClass, statusClass);
    EXPECT_EQ(status.hr, hr);
    const std::string opening = "Media Foundation reported an error when opening the file.\n";
    EXPECT_EQ(status.message, FAILED(hr) ? orxcore::UTF8to16(opening) + MFErrorMessage(hr) : orxcore::WString());
  }
}

TEST_F(MFReaderTest, ATypeChangeAtPrimingSetsTheAudioUpAgainWithTheNewType) {
  FakeRead change{S_OK, MF_SOURCE_READERF_CURRENTMEDIATYPECHANGED, Pcm16({1, 2})};
  change.newFormat = FakeAudioFormat{MFAudioFormat_Float, 6, 44100, 32, 0, 0x3F};
  fake->sourceAudio->subtype = MFAudioFormat_AAC;
  fake->reads = {change};
  ASSERT_TRUE(Open());
  EXPECT_EQ(reader->channels(), 6u);
  EXPECT_EQ(reader->samplesPerSecond(), 44100u);
  EXPECT_EQ(reader->channelMask(), 0x3Fu);
}

TEST_F(MFReaderTest, OpensWithProcessingSelectsOnlyTheAudioPrimesOnceRewindsAndStartsAgainClear) {
  Install();
  auto stream = std::make_shared<aurivox_test::MemoryStream>(std::vector<std::uint8_t>{'R', 'I', 'F', 'F'});
  ASSERT_TRUE(reader->OpenFromStream(stream, status, false, true));
  EXPECT_EQ(Attribute(fake->attributes.Get(), MF_SOURCE_READER_ENABLE_VIDEO_PROCESSING), 1u);
  EXPECT_EQ(Attribute(fake->attributes.Get(), MF_READWRITE_ENABLE_HARDWARE_TRANSFORMS), 1u);
  EXPECT_EQ(fake->selections, (std::vector<std::pair<DWORD, BOOL>>{{MF_SOURCE_READER_ALL_STREAMS, FALSE},
                                                                   {MF_SOURCE_READER_FIRST_AUDIO_STREAM, TRUE}}));
  EXPECT_EQ(fake->readCalls, 1);
  EXPECT_EQ(fake->positions, std::vector<LONGLONG>{0});
  EXPECT_EQ(Read(4), (Channels{{}, {}}));
  ASSERT_TRUE(reader->endOfStream());
  // Unusable arguments fail without reading.
  std::int32_t count = 1;
  float* buffers[2] = {};
  EXPECT_FALSE(reader->ReadAudioSamples(0, count, buffers, 0));
  EXPECT_FALSE(reader->ReadAudioSamples(0, count, nullptr, 2));
  fake->createHr = E_FAIL;
  EXPECT_FALSE(Open());
  EXPECT_FALSE(reader->endOfStream());
  EXPECT_EQ(reader->channels(), 0u);
  EXPECT_EQ(fake->referenceCount(), 1u) << "the first reader was released";
  EXPECT_EQ(Read(1), Channels{}) << "nothing is open";
  // The source keeps the byte stream; it closes with its last reference.
  EXPECT_EQ(stream->closeCount.load(), 0);
  fake->byteStream.Reset();
  EXPECT_EQ(stream->closeCount.load(), 1);
}

// PCM sources are asked for PCM only, others for float first, then PCM. The
// proposal carries the source's channel count and mask (not 0). A stereo
// client type without a mask counts as front left and right.
TEST_F(MFReaderTest, NegotiationOfTheClientType) {
  const GUID pcm = MFAudioFormat_PCM, flt = MFAudioFormat_Float, aac = MFAudioFormat_AAC;
  // The source, the subtypes the decoder accepts: the subtypes asked for, the
  // client's bits per sample (0: the open fails) and its mask.
  const std::tuple<FakeAudioFormat, std::vector<GUID>, std::vector<GUID>, std::uint32_t, std::uint32_t> kCases[] = {
      {{pcm, 2, 48000, 16, 192000, {}}, {flt}, {pcm}, 0, 0},
      {{aac, 6, 48000, 16, 48000, 0x3F}, {flt, pcm}, {flt}, 32, 0x3F},
      {{aac, 2, 48000, 16, 192000, {}}, {pcm}, {flt, pcm}, 16, 3},
      {{aac, 2, 48000, 16, 192000, {}}, {}, {flt, pcm}, 0, 0},
      {{pcm, 2, 48000, 16, 192000, 0}, {flt, pcm}, {pcm}, 16, 3},
      {{pcm, {}, 48000, 16, 192000, {}}, {pcm}, {pcm}, 16, 3},  // the decoder's two channels
      {{pcm, 1, 48000, 16, 192000, {}}, {pcm}, {pcm}, 16, 0},
  };
  for (const auto& [source, accepted, asked, bitsPerSample, mask] : kCases) {
    SCOPED_TRACE(testing::Message() << source.channels.value_or(0) << " channels, " << accepted.size()
                                    << " accepted, " << bitsPerSample << " bits");
    Reset();
    fake->sourceAudio = source;
    fake->acceptedSubtypes = accepted;
    EXPECT_EQ(Open(), bitsPerSample != 0);
    EXPECT_EQ(fake->askedSubtypes, asked);
    EXPECT_EQ(reader->bitsPerSample(), bitsPerSample);
    EXPECT_EQ(status.hr, bitsPerSample ? S_OK : MF_E_INVALIDMEDIATYPE);
    EXPECT_EQ(reader->channelMask(), mask);
    IMFMediaType* proposed = fake->proposedTypes.at(0).Get();
    const bool proposesMask = source.channelMask.value_or(0) != 0;
    EXPECT_EQ(Attribute(proposed, MF_MT_AUDIO_NUM_CHANNELS), source.channels);
    EXPECT_EQ(Attribute(proposed, MF_MT_AUDIO_CHANNEL_MASK), proposesMask ? source.channelMask : std::nullopt);
  }
}

TEST_F(MFReaderTest, SetupAudioTracesTheSourceAndClientFormats) {
  fake->sourceAudio = FakeAudioFormat{MFAudioFormat_AAC, 6, 48000, 16, 48000, 0x3F};
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

// One decoder's answers in a row: a stream tick, a sample split inside a
// frame across two buffers, samples ending inside a frame and one left
// partly for the next request, a failed read and a type change mid-stream
// (each failing its request and keeping what was decoded before, also what
// had reached the request), and an end that comes with a sample and a type
// change.
TEST_F(MFReaderTest, ReadsJoinSamplesAndKeepPendingAudioThroughFailures) {
  FakeRead split = SampleRead(Pcm16({1, 2, 3, 4}));
  split.splitAt = 3;
  const FakeRead last{S_OK, MF_SOURCE_READERF_ENDOFSTREAM | MF_SOURCE_READERF_CURRENTMEDIATYPECHANGED, Pcm16({21, 22})};
  // The first read primes the decoder; the rewind drops it.
  fake->reads = {SampleRead(Pcm16({-1, -1})), FakeRead{S_OK, MF_SOURCE_READERF_STREAMTICK}, split,
                 SampleRead(Pcm16({5, 6, 7})), SampleRead(Pcm16({8, 9, 10})),
                 SampleRead(Pcm16({11, 12, 13, 14, 15, 16})), FakeRead{MF_E_INVALID_STREAM_DATA},
                 SampleRead(Pcm16({17, 18})), FakeRead{S_OK, MF_SOURCE_READERF_CURRENTMEDIATYPECHANGED},
                 SampleRead(Pcm16({19, 20})), last};
  ASSERT_TRUE(Open());
  EXPECT_EQ(Read(4), (Channels{Pcm16({1, 3, 5, 7}), Pcm16({2, 4, 6, 8})}));
  EXPECT_EQ(fake->readCalls, 5) << "no read beyond what the request needs";
  EXPECT_EQ(Read(2), (Channels{Pcm16({9, 11}), Pcm16({10, 12})}));
  CaptureTrace("windowsmediafoundation.*=7");
  EXPECT_EQ(Read(3), Channels{});
  EXPECT_EQ(CapturedTrace(), ErrorLine(MF_E_INVALID_STREAM_DATA));
  EXPECT_EQ(Read(1), (Channels{Pcm16({13}), Pcm16({14})}));
  // Without every buffer, frames wait in pending audio until the request is whole.
  EXPECT_EQ(Read(3, false), Channels{}) << "a type change mid-stream";
  EXPECT_EQ(Read(4), (Channels{Pcm16({15, 17, 19}), Pcm16({16, 18, 20})}));
  EXPECT_TRUE(reader->endOfStream());
  EXPECT_EQ(Read(4), (Channels{{}, {}}));
  EXPECT_EQ(fake->readCalls, 12) << "a request after the end asks again";
  EXPECT_EQ(reader->samplesDelivered(), 10);
}

}  // namespace
}  // namespace windowsmediafoundation
