// The missing-Dolby warning as a host meets it: a decoder whose open fails
// the way a missing Dolby decoder makes it fail (produced by a scripted
// source reader, since Wine's sources cannot) warns once per file through
// the host's error suite, and the open's result code stays what it was.
// The same scripted reader also fails a read part-way, which real files
// cannot do on demand.
#include <gtest/gtest.h>
#include <mferror.h>

#include "FakeSourceReader.h"
#include "MediaFeaturesSwitch.h"
#include "RecordingErrorSuite.h"
#include "SourceReaderFactory.h"
#include "aurivox/Decoder.h"
#include "orxcore/Guid.h"

namespace {

using aurivox_test::RecordingErrorSuite;
using aurivox_test::FakeSourceReader;
using windowsmediafoundation::ScopedSourceReaderFactory;

orxcore::WString UniquePath(const char16_t* extension) {
  return u"C:\\clips\\" + orxcore::Guid::CreateUnique().AsString() + extension;
}

bool StartsWith(const orxcore::WString& text, const char16_t* prefix) { return text.rfind(prefix, 0) == 0; }

const char16_t kCertain[] = u"The audio in this file requires the Dolby audio decoder";
const char16_t kMaybe[] = u"The audio in this file may require the Dolby audio decoder";

class DecoderDolbyTest : public ::testing::Test {
 protected:
  int Open(const orxcore::WString& path, std::uint32_t flags, bool withSuite = true) {
    Aurivox::Decoder decoder;
    if (withSuite) decoder.EnableDolbyWarning(recorder_.suite(), flags);
    return decoder.Open(path, nullptr);
  }

  aurivox_test::MediaFeaturesSwitch featuresAbsent_{false};
  Microsoft::WRL::ComPtr<FakeSourceReader> fake_ = FakeSourceReader::Create();
  ScopedSourceReaderFactory factory_{fake_->Factory()};
  RecordingErrorSuite recorder_;
};

TEST_F(DecoderDolbyTest, UnsupportedByteStreamWarnsOnceWithTheMaybeWording) {
  fake_->createHr = MF_E_UNSUPPORTED_BYTESTREAM_TYPE;
  const orxcore::WString path = UniquePath(u".mp4");
  EXPECT_EQ(Open(path, 0), Aurivox::kResultOpenFailed);
  EXPECT_EQ(Open(orxcore::ToLowerCase(path), 0), Aurivox::kResultOpenFailed);
  const auto events = recorder_.events();
  ASSERT_EQ(events.size(), 1u);
  EXPECT_EQ(events[0].eventType, 0x402);
  EXPECT_EQ(events[0].title, u"Missing Dolby audio decoder");
  EXPECT_TRUE(StartsWith(events[0].message, kMaybe));
  EXPECT_NE(events[0].message.find(u"\"" + path + u"\""), orxcore::WString::npos);
}

TEST_F(DecoderDolbyTest, TheLongPathPrefixIsStrippedBeforeTheFileIsNamed) {
  fake_->createHr = MF_E_UNSUPPORTED_BYTESTREAM_TYPE;
  const orxcore::WString path = UniquePath(u".mp4");
  EXPECT_EQ(Open(u"\\\\?\\" + path, 0), Aurivox::kResultOpenFailed);
  EXPECT_EQ(recorder_.EventsFor(path).size(), 1u);
}

TEST_F(DecoderDolbyTest, NoWarningWhenSwitchedOffOrWithoutSuite) {
  fake_->createHr = MF_E_UNSUPPORTED_BYTESTREAM_TYPE;
  const orxcore::WString off = UniquePath(u".mp4");
  EXPECT_EQ(Open(off, 2), Aurivox::kResultOpenFailed);
  EXPECT_TRUE(recorder_.events().empty());
  EXPECT_EQ(Open(off, 0), Aurivox::kResultOpenFailed);  // nothing was recorded while off
  EXPECT_EQ(recorder_.events().size(), 1u);

  const orxcore::WString unheard = UniquePath(u".mp4");
  EXPECT_EQ(Open(unheard, 0, /*withSuite=*/false), Aurivox::kResultOpenFailed);
  EXPECT_EQ(Open(unheard, 0), Aurivox::kResultOpenFailed);
  EXPECT_TRUE(recorder_.EventsFor(unheard).empty()) << "examined without a suite: never warned about";
}

TEST_F(DecoderDolbyTest, OtherFailuresAreNoSuspects) {
  fake_->createHr = E_FAIL;
  EXPECT_EQ(Open(UniquePath(u".mp4"), 0), Aurivox::kResultOpenFailed);
  // A Dolby track without a decoder for it fails the audio set-up; that
  // failure names no missing decoder, so no warning.
  fake_->createHr = S_OK;
  fake_->sourceAudio->subtype = MFAudioFormat_Dolby_AC3;
  fake_->acceptedSubtypes.clear();
  EXPECT_EQ(Open(UniquePath(u".mp4"), 0), Aurivox::kResultOpenFailed);
  EXPECT_TRUE(recorder_.events().empty());
}

TEST_F(DecoderDolbyTest, ACreationThatGivesNoReaderIsAnOtherFailure) {
  fake_->createNothing = true;
  EXPECT_EQ(Open(UniquePath(u".mp4"), 0), Aurivox::kResultBadArgument);
}

// A stereo 16-bit PCM sample of `frames` frames.
aurivox_test::FakeRead PcmSample(std::size_t frames) {
  return aurivox_test::SampleRead(std::vector<std::uint8_t>(frames * 4, 0x11));
}

TEST_F(DecoderDolbyTest, AReadThatFailsPartWayIsReportedAsAFailedRead) {
  aurivox_test::FakeRead failed;
  failed.hr = MF_E_INVALID_STREAM_DATA;
  // The first sample primes the reader at the open and is dropped by its rewind.
  fake_->reads = {PcmSample(1), PcmSample(100), failed};
  Aurivox::Decoder decoder;
  ASSERT_EQ(decoder.Open(UniquePath(u".wav"), nullptr), Aurivox::kResultSuccess);
  std::vector<float> left(300), right(300);
  float* channels[] = {left.data(), right.data()};
  imImportAudioRec7 rec{};
  rec.size = 300;
  rec.buffer = channels;
  EXPECT_EQ(decoder.ReadAudio(&rec), Aurivox::kResultReadFailed);
}

}  // namespace
