// A test fixture that opens MFReader on a FakeSourceReader and checks, once
// the reader is gone, that it released everything the fake handed out.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "FakeSourceReader.h"
#include "MFErrorMessage.h"
#include "MFReader.h"
#include "orxcore/Trace.h"

namespace aurivox_test {

class FakeReaderTest : public ::testing::Test {
 protected:
  void TearDown() override {
    Reset();
    factory_.reset();
    orxcore::SetTraceConfiguration("");
  }

  // Checks that the reader let go of everything the fake handed out, then
  // starts over with a fresh fake and reader, as a new test would.
  void Reset() {
    reader = std::make_unique<windowsmediafoundation::MFReader>();
    EXPECT_EQ(fake->UnreleasedObjects(), "");
    EXPECT_EQ(fake->referenceCount(), 1u) << "the reader kept a reference to the source reader";
    fake = FakeSourceReader::Create();
  }

  // Hands out the current `fake` from now on.
  void Install() { factory_.emplace(fake->Factory()); }

  // Opens the reader from a path through the fake; true when it found audio.
  bool Open() {
    Install();
    return reader->OpenFromPath(u"Z:\\media\\clip.wav", status, false, true);
  }

  // Reads up to `frames` stereo 16-bit frames; the delivered samples of each
  // channel come back, nothing when the read fails. Without `leftWanted` the
  // left channel has no buffer.
  using Channels = std::vector<std::vector<std::uint8_t>>;
  Channels Read(std::int32_t frames, bool leftWanted = true) {
    Channels channels(2, std::vector<std::uint8_t>(frames * 4));
    float* pointers[] = {leftWanted ? reinterpret_cast<float*>(channels[0].data()) : nullptr,
                         reinterpret_cast<float*>(channels[1].data())};
    if (!reader->ReadAudioSamples(0, frames, pointers, 2)) return {};
    for (auto& channel : channels) channel.resize(frames * 2);
    return channels;
  }

  // Captures trace lines of the given rules until CapturedTrace.
  void CaptureTrace(const char* rules) {
    orxcore::SetTraceConfiguration(rules);
    ::testing::internal::CaptureStderr();
  }
  std::string CapturedTrace() { return ::testing::internal::GetCapturedStderr(); }

  static std::string ErrorLine(HRESULT hr) {
    return "Error: " + orxcore::UTF16toStdString(windowsmediafoundation::MFErrorMessage(hr)) + "\r\n";
  }

  Microsoft::WRL::ComPtr<FakeSourceReader> fake = FakeSourceReader::Create();
  std::unique_ptr<windowsmediafoundation::MFReader> reader = std::make_unique<windowsmediafoundation::MFReader>();
  windowsmediafoundation::OpenStatus status;

 private:
  std::optional<windowsmediafoundation::ScopedSourceReaderFactory> factory_;
};

}  // namespace aurivox_test
