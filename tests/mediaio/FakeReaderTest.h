// A test fixture that opens MFReader on a FakeSourceReader and checks, once
// the reader is gone, that it released everything the fake handed out.
#pragma once

#include <gmock/gmock.h>
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
    EXPECT_THAT(fake->UnreleasedObjects(), ::testing::IsEmpty());
    EXPECT_EQ(fake->referenceCount(), 1u) << "the reader kept a reference to the source reader";
  }

  // Opens the reader from a path through the fake; true when it found audio.
  bool Open() {
    Install();
    return reader->OpenFromPath(u"Z:\\media\\clip.wav", status, false, true);
  }

  // Hands out the current `fake` from now on.
  void Install() {
    factory_.reset();
    factory_.emplace(fake->Factory());
  }

  // Reads `frames` frames of `channels` channels at `width` bytes; the
  // delivered bytes of each channel come back.
  struct ReadResult {
    bool ok = false;
    std::int32_t count = 0;
    std::vector<std::vector<std::uint8_t>> channels;
  };
  ReadResult Read(std::int32_t frames, std::uint32_t channels, std::uint32_t width) {
    std::vector<std::vector<float>> storage(channels, std::vector<float>(frames > 0 ? frames : 1));
    std::vector<float*> pointers;
    for (auto& buffer : storage) pointers.push_back(buffer.data());
    ReadResult result;
    result.count = frames;
    result.ok = reader->ReadAudioSamples(0, result.count, pointers.data(), width);
    for (auto& buffer : storage) {
      const auto* bytes = reinterpret_cast<const std::uint8_t*>(buffer.data());
      const std::size_t delivered = result.ok ? static_cast<std::size_t>(result.count) * width : 0;
      result.channels.emplace_back(bytes, bytes + delivered);
    }
    return result;
  }

  // Starts capturing trace lines of the given rules.
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

// Interleaved 16-bit little-endian samples.
std::vector<std::uint8_t> Pcm16(const std::vector<std::int16_t>& samples);

}  // namespace aurivox_test
