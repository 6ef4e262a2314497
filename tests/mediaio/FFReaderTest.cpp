// The FFmpeg reader over a byte stream whose reads fail for a while.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

#include "FFReader.h"
#include "MediaFixtures.h"
#include "TestStreams.h"

namespace {

constexpr std::int32_t kFramesBeforeFailure = 1000;
constexpr std::int32_t kLongRead = 1 << 20;  // past anything FFmpeg has buffered
constexpr std::int32_t kBlockFrames = 1024;

// Up to `frames` frames of the first channel (float samples); `ok` is what
// the read returned.
std::vector<float> ReadFirstChannel(ffmpeg::FFReader& reader, std::int32_t frames, bool& ok) {
  std::vector<std::vector<float>> channels(reader.channels(), std::vector<float>(frames));
  std::vector<float*> buffers;
  for (auto& channel : channels) buffers.push_back(channel.data());
  ok = reader.ReadAudioSamples(0, frames, buffers.data(), 4);
  channels[0].resize(ok ? frames : 0);
  return channels[0];
}

// A failed read hands nothing out: what it took in is where the next read starts.
TEST(FFReader, AReadAfterAFailedOneLosesNoFrames) {
  const std::vector<std::uint8_t> bytes = aurivox_test::ReadMediaFixture("surround51.ac3");
  ffmpeg::OpenStatus status;
  ffmpeg::FFReader reference;
  ASSERT_TRUE(reference.OpenFromStream(std::make_shared<aurivox_test::MemoryStream>(bytes), status));
  bool ok = false;
  const std::vector<float> expected = ReadFirstChannel(reference, kLongRead, ok);

  auto stream = std::make_shared<aurivox_test::MemoryStream>(bytes);
  ffmpeg::FFReader reader;
  ASSERT_TRUE(reader.OpenFromStream(stream, status));
  ReadFirstChannel(reader, kFramesBeforeFailure, ok);
  ASSERT_TRUE(ok);
  stream->readFailure = -1;
  ReadFirstChannel(reader, kLongRead, ok);
  ASSERT_FALSE(ok);
  // FFmpeg may not read the stream again after a failure; what the failed
  // read had decoded is handed out all the same.
  stream->readFailure = 0;
  std::vector<float> after;
  for (std::vector<float> block; (block = ReadFirstChannel(reader, kBlockFrames, ok)), ok && !block.empty();) {
    after.insert(after.end(), block.begin(), block.end());
  }
  ASSERT_GE(after.size(), static_cast<std::size_t>(kBlockFrames));
  ASSERT_LE(kFramesBeforeFailure + after.size(), expected.size());
  EXPECT_TRUE(std::equal(after.begin(), after.end(), expected.begin() + kFramesBeforeFailure));
}

}  // namespace
