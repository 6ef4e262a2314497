// The missing-Dolby warning as a host meets it: a decoder whose open fails
// the way a missing Dolby decoder makes it fail (produced by a scripted
// source reader, since Wine's sources cannot) warns through the host's error
// suite, and the open's result code stays what it was. The same scripted
// reader also fails a read part-way, which real files cannot do on demand.
#include <gtest/gtest.h>
#include <mferror.h>

#include "FakeSourceReader.h"
#include "MediaFeaturesSwitch.h"
#include "RecordingErrorSuite.h"
#include "SourceReaderFactory.h"
#include "aurivox/Decoder.h"

namespace {

using aurivox_test::UniquePath;

class DecoderDolbyTest : public ::testing::Test {
 protected:
  int Open(const orxcore::WString& path, std::uint32_t flags) {
    Aurivox::Decoder decoder;
    decoder.EnableDolbyWarning(recorder_.suite(), flags);
    return decoder.Open(path, nullptr);
  }

  aurivox_test::MediaFeaturesSwitch featuresAbsent_{false};
  Microsoft::WRL::ComPtr<aurivox_test::FakeSourceReader> fake_ = aurivox_test::FakeSourceReader::Create();
  windowsmediafoundation::ScopedSourceReaderFactory factory_{fake_->Factory()};
  aurivox_test::RecordingErrorSuite recorder_;
};

// The flags reach the warning: switched off, the same failure says nothing.
TEST_F(DecoderDolbyTest, UnsupportedByteStreamWarnsWithTheMaybeWordingAndTheLongPathPrefixStripped) {
  fake_->createHr = MF_E_UNSUPPORTED_BYTESTREAM_TYPE;
  EXPECT_EQ(Open(UniquePath(u".mp4"), 2), Aurivox::kResultOpenFailed);
  const orxcore::WString path = UniquePath(u".mp4");
  EXPECT_EQ(Open(u"\\\\?\\" + path, 0), Aurivox::kResultOpenFailed);
  const auto events = recorder_.events();
  ASSERT_EQ(events.size(), 1u);
  EXPECT_EQ(events[0].message.rfind(u"The audio in this file may require the Dolby audio decoder", 0), 0u);
  EXPECT_EQ(events[0].message.substr(events[0].message.size() - path.size() - 2), u"\"" + path + u"\"");
}

// Other failures name no missing decoder, not even a Dolby track that fails
// the audio set-up for want of a decoder.
TEST_F(DecoderDolbyTest, NoWarningForOtherFailures) {
  fake_->createHr = E_FAIL;
  EXPECT_EQ(Open(UniquePath(u".mp4"), 0), Aurivox::kResultOpenFailed);
  fake_->createHr = S_OK;
  fake_->sourceAudio->subtype = MFAudioFormat_Dolby_AC3;
  fake_->acceptedSubtypes.clear();
  EXPECT_EQ(Open(UniquePath(u".mp4"), 0), Aurivox::kResultOpenFailed);
  EXPECT_TRUE(recorder_.events().empty());
  fake_->createNothing = true;  // a creation that gives no reader
  EXPECT_EQ(Open(UniquePath(u".mp4"), 0), Aurivox::kResultBadArgument);
}

TEST_F(DecoderDolbyTest, AReadThatFailsPartWayIsReportedAsAFailedRead) {
  // Stereo 16-bit samples; the first primes the reader at the open and is dropped by its rewind.
  fake_->reads = {aurivox_test::SampleRead(std::vector<std::uint8_t>(4, 0x11)),
                  aurivox_test::SampleRead(std::vector<std::uint8_t>(400, 0x11)), aurivox_test::FakeRead{}};
  fake_->reads.back().hr = MF_E_INVALID_STREAM_DATA;
  Aurivox::Decoder decoder;
  ASSERT_EQ(decoder.Open(UniquePath(u".wav"), nullptr), Aurivox::kResultSuccess);
  std::vector<float> left(300), right(300);
  float* channels[] = {left.data(), right.data()};
  imImportAudioRec7 rec{/*position=*/0, /*size=*/300, channels, /*reserved0=*/{}};
  EXPECT_EQ(decoder.ReadAudio(&rec), Aurivox::kResultReadFailed);
}

}  // namespace
