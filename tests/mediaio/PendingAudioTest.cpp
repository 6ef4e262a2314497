#include "PendingAudio.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <vector>

namespace windowsmediafoundation {
namespace {

// Frame f, channel n, byte b of an interleaved buffer holds this value, so a
// byte in the wrong place gives itself away.
std::uint8_t SampleByte(std::size_t f, std::uint32_t n, std::uint32_t b) {
  return static_cast<std::uint8_t>(f * 41 + n * 5 + b);
}

std::vector<std::uint8_t> Interleaved(std::size_t frames, std::uint32_t channels, std::uint32_t width) {
  std::vector<std::uint8_t> bytes(frames * channels * width);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    bytes[i] = SampleByte(i / width / channels, static_cast<std::uint32_t>(i / width % channels), i % width);
  }
  return bytes;
}

// Per-channel float buffers filled with 0xEE bytes, so untouched bytes show.
struct ChannelBuffers {
  ChannelBuffers(std::uint32_t channels, std::size_t floats)
      : bytes(channels, std::vector<std::uint8_t>(floats * 4, 0xEE)) {
    for (auto& buffer : bytes) pointers.push_back(reinterpret_cast<float*>(buffer.data()));
  }
  std::vector<std::vector<std::uint8_t>> bytes;
  std::vector<float*> pointers;
};

// The common layouts have loops of their own, 2- and 4-byte samples vector
// steps of 4 to 16 frames, 2- and 3-byte ones of 64 with AVX-512, each
// tried with narrower instructions too: 35 and 227 frames leave a remainder
// after any step, 32 and 192 end where a step's loads would pass the end.
// Every channel count, as the AVX-512 step groups channels differently for
// each.
TEST(Deinterleave, EachChannelGetsItsSamplesPackedAtTheirWidth) {
  for (const std::size_t frames : {32u, 35u, 192u, 227u}) {
    for (const auto instructions :
         {VectorInstructions::kSse2, VectorInstructions::kAvx2, VectorInstructions::kAvx512Vbmi}) {
      LimitDeinterleaveInstructions(instructions);
      for (const std::uint32_t width : {1u, 2u, 3u, 4u}) {
        for (std::uint32_t channels = 1; channels <= 8; ++channels) {
          for (const bool withoutFirst : {false, true}) {
            SCOPED_TRACE(testing::Message() << frames << " frames, " << width << " bytes, " << channels
                                            << " channels, " << withoutFirst << ", instructions "
                                            << static_cast<int>(instructions));
            const auto interleaved = Interleaved(frames, channels, width);
            ChannelBuffers buffers(channels, frames + 1);
            if (withoutFirst) buffers.pointers[0] = nullptr;  // a channel nobody wants
            DeinterleaveSamples(interleaved.data(), frames, channels, width, buffers.pointers.data());
            for (std::uint32_t n = 0; n < channels; ++n) {
              for (std::size_t i = 0; i <= frames * width; ++i) {
                const bool written = i < frames * width && !(withoutFirst && n == 0);
                ASSERT_EQ(buffers.bytes[n][i], written ? SampleByte(i / width, n, i % width) : 0xEE)
                    << "channel " << n << " byte " << i;
              }
            }
          }
        }
      }
    }
  }
}

// Long runs of 2- to 4-byte samples go in blocks of steps; enough frames
// for several blocks at every channel count, in random bytes that do not
// repeat with the frame.
TEST(Deinterleave, LongRunsAcrossBlocksOfSteps) {
  constexpr std::size_t kFrames = 6000;
  std::mt19937 random(7);
  LimitDeinterleaveInstructions(VectorInstructions::kAvx512Vbmi);
  for (const std::uint32_t width : {2u, 3u, 4u}) {
    for (std::uint32_t channels = 1; channels <= 8; ++channels) {
      std::vector<std::uint8_t> interleaved(kFrames * channels * width);
      for (auto& byte : interleaved) byte = static_cast<std::uint8_t>(random());
      ChannelBuffers buffers(channels, kFrames * width / 4);
      DeinterleaveSamples(interleaved.data(), kFrames, channels, width, buffers.pointers.data());
      for (std::uint32_t n = 0; n < channels; ++n) {
        std::vector<std::uint8_t> expected;
        for (std::size_t f = 0; f < kFrames; ++f) {
          const auto sample = interleaved.begin() + (f * channels + n) * width;
          expected.insert(expected.end(), sample, sample + width);
        }
        EXPECT_EQ(expected, buffers.bytes[n]) << width << " bytes, " << channels << " channels, channel " << n;
      }
    }
  }
}

// Hands out up to `frames` frames of `pending` into `out` from its front.
std::size_t Deliver(PendingAudio& pending, std::size_t frames, std::uint32_t width, ChannelBuffers& out) {
  AudioRequest request{out.pointers.data(), static_cast<std::uint32_t>(out.pointers.size()), width, frames};
  pending.Deliver(request);
  return request.filled;
}

TEST(PendingAudio, DeliversFromTheFrontKeepsAPartialFrameAndReservesRoom) {
  PendingAudio pending;
  const auto interleaved = Interleaved(5, 2, 3);  // 30 bytes
  ASSERT_TRUE(pending.Append(interleaved.data(), 10));  // one frame and 4 bytes
  ChannelBuffers out(2, 3);
  EXPECT_EQ(Deliver(pending, 3, 3, out), 1u);
  EXPECT_EQ(out.bytes[1][2], SampleByte(0, 1, 2));

  ASSERT_TRUE(pending.Append(interleaved.data() + 10, 20));
  EXPECT_EQ(Deliver(pending, 2, 3, out), 2u);
  // Frame 1 joined across the two appends.
  EXPECT_EQ(out.bytes[0][0], SampleByte(1, 0, 0));
  EXPECT_EQ(out.bytes[1][5], SampleByte(2, 1, 2));
  EXPECT_EQ(Deliver(pending, 4, 3, out), 2u) << "only two frames were left";
  EXPECT_EQ(out.bytes[1][3], SampleByte(4, 1, 0));
  EXPECT_EQ(pending.size(), 0u);

  // The client type never has other widths: frames are counted, not copied.
  ASSERT_TRUE(pending.Append(interleaved.data(), 30));
  EXPECT_EQ(Deliver(pending, 2, 5, out), 2u);
  EXPECT_EQ(pending.size(), 10u);
  EXPECT_EQ(out.bytes[0][6], 0xEE);

  // Reserve makes room for a whole request, or fails without change.
  ASSERT_TRUE(pending.Reserve(1000, 6, 4));
  EXPECT_GE(pending.capacity(), 10u + 1000 * 6 * 4);
  const std::size_t capacity = pending.capacity();
  const std::vector<std::uint8_t> more(1000 * 6 * 4, 2);
  ASSERT_TRUE(pending.Append(more.data(), more.size()));
  EXPECT_EQ(pending.capacity(), capacity) << "appends within the reservation do not reallocate";

  EXPECT_FALSE(pending.Reserve(-1, 2, 2));
  EXPECT_TRUE(pending.Reserve(0, 2, 2));
  EXPECT_TRUE(pending.Reserve(100, 0, 4));
  // A decoder's empty buffer is no failure; bytes without a pointer are.
  EXPECT_TRUE(pending.Append(nullptr, 0));
  EXPECT_FALSE(pending.Append(nullptr, 4));
  EXPECT_EQ(pending.size(), 10u + more.size());
  EXPECT_EQ(pending.AvailableFrames(2, 0), 0u);
}

// Each channel holds its first `frames` samples, and nothing is written after.
void ExpectFirstFrames(const ChannelBuffers& buffers, std::size_t frames, std::uint32_t width) {
  for (std::uint32_t n = 0; n < buffers.bytes.size(); ++n) {
    for (std::size_t i = 0; i < buffers.bytes[n].size(); ++i) {
      ASSERT_EQ(buffers.bytes[n][i], i < frames * width ? SampleByte(i / width, n, i % width) : 0xEE)
          << "channel " << n << " byte " << i;
    }
  }
}

// A request filled in turns from what is held and from decoded buffers, some
// ending inside a frame, then put back: the next request gets the same bytes.
TEST(PendingAudio, TakesDecodedBuffersInOrderAndPutsAFailedRequestBack) {
  for (const std::uint32_t width : {2u, 3u, 4u}) {
    SCOPED_TRACE(testing::Message() << width << " bytes");
    const auto interleaved = Interleaved(40, 6, width);
    const std::size_t frameBytes = 6 * width;
    // Cut so that buffers start in and at the edge of frames.
    const std::size_t cuts[] = {0, frameBytes + 1, 9 * frameBytes, 17 * frameBytes, 40 * frameBytes};
    PendingAudio pending;
    ASSERT_TRUE(pending.Reserve(40, 6, width));
    ChannelBuffers out(6, 40);
    AudioRequest request{out.pointers.data(), 6, width, 30};
    ASSERT_TRUE(PendingAudio::CanPutBack(request));
    for (std::size_t i = 0; i + 1 < std::size(cuts); ++i) {
      ASSERT_TRUE(pending.Take(interleaved.data() + cuts[i], cuts[i + 1] - cuts[i], request));
    }
    ASSERT_EQ(request.filled, 30u);
    EXPECT_EQ(pending.size(), 10 * frameBytes);
    ExpectFirstFrames(out, 30, width);

    pending.PutBack(request);
    EXPECT_EQ(request.filled, 0u);
    ChannelBuffers again(6, 40);
    EXPECT_EQ(Deliver(pending, 40, width, again), 40u);
    ExpectFirstFrames(again, 40, width);
  }
  ChannelBuffers withoutOne(2, 1);
  withoutOne.pointers[1] = nullptr;
  EXPECT_FALSE(PendingAudio::CanPutBack(AudioRequest{withoutOne.pointers.data(), 2, 2, 1}));
}

}  // namespace
}  // namespace windowsmediafoundation
