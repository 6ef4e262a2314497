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
    reader.reset();
    factory_.reset();
    orxcore::SetTraceConfiguration("");
    ExpectReleased();
  }

  void ExpectReleased() {
    EXPECT_EQ(fake->UnreleasedObjects(), "");
    EXPECT_EQ(fake->referenceCount(), 1u) << "the reader kept a reference to the source reader";
  }

  // Starts over with a fresh fake and reader, as a new test would.
  void Reset() {
    reader = std::make_unique<windowsmediafoundation::MFReader>();
    ExpectReleased();
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
  // channel come back, nothing when the read fails.
  using Channels = std::vector<std::vector<std::uint8_t>>;
  Channels Read(std::int32_t frames) {
    std::vector<float> left(frames), right(frames);
    float* pointers[] = {left.data(), right.data()};
    if (!reader->ReadAudioSamples(0, frames, pointers, 2)) return {};
    const auto* l = reinterpret_cast<const std::uint8_t*>(left.data());
    const auto* r = reinterpret_cast<const std::uint8_t*>(right.data());
    return {{l, l + frames * 2}, {r, r + frames * 2}};
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
