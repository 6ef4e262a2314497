#include "PendingAudio.h"

#include <gtest/gtest.h>

#include <cstring>
#include <tuple>
#include <vector>

namespace windowsmediafoundation {
namespace {

// Interleaved bytes whose values give away their frame, channel and byte:
// frame f, channel n, byte b holds (f * 41 + n * 5 + b) & 0xFF.
std::uint8_t SampleByte(std::size_t f, std::uint32_t n, std::uint32_t b) {
  return static_cast<std::uint8_t>(f * 41 + n * 5 + b);
}

std::vector<std::uint8_t> Interleaved(std::size_t frames, std::uint32_t channels, std::uint32_t width) {
  std::vector<std::uint8_t> bytes;
  for (std::size_t f = 0; f < frames; ++f) {
    for (std::uint32_t n = 0; n < channels; ++n) {
      for (std::uint32_t b = 0; b < width; ++b) bytes.push_back(SampleByte(f, n, b));
    }
  }
  return bytes;
}

// Per-channel float buffers, pre-filled with a marker so untouched bytes show.
struct ChannelBuffers {
  ChannelBuffers(std::uint32_t channels, std::size_t floats)
      : storage(channels, std::vector<float>(floats)), pointers(channels) {
    for (std::uint32_t n = 0; n < channels; ++n) {
      std::memset(storage[n].data(), 0xEE, floats * sizeof(float));
      pointers[n] = storage[n].data();
    }
  }
  const std::uint8_t* bytes(std::uint32_t n) const {
    return reinterpret_cast<const std::uint8_t*>(storage[n].data());
  }

  std::vector<std::vector<float>> storage;
  std::vector<float*> pointers;
};

// Widths by channel counts: the common layouts have loops of their own, and
// 11 frames leave a remainder after any block of frames.
class DeinterleaveWidth : public ::testing::TestWithParam<std::tuple<std::uint32_t, std::uint32_t>> {};

TEST_P(DeinterleaveWidth, EachChannelGetsItsSamplesPackedAtTheirWidth) {
  const auto [width, channels] = GetParam();
  const std::size_t frames = 11;
  const auto interleaved = Interleaved(frames, channels, width);
  ChannelBuffers buffers(channels, frames + 1);

  DeinterleaveSamples(interleaved.data(), frames, channels, width, buffers.pointers.data());

  for (std::uint32_t n = 0; n < channels; ++n) {
    for (std::size_t f = 0; f < frames; ++f) {
      for (std::uint32_t b = 0; b < width; ++b) {
        ASSERT_EQ(buffers.bytes(n)[f * width + b], SampleByte(f, n, b))
            << "channel " << n << " frame " << f << " byte " << b;
      }
    }
    // Nothing is written past the delivered samples.
    EXPECT_EQ(buffers.bytes(n)[frames * width], 0xEE);
  }
}

INSTANTIATE_TEST_SUITE_P(Layouts, DeinterleaveWidth,
                         ::testing::Combine(::testing::Values(1u, 2u, 3u, 4u), ::testing::Values(1u, 2u, 3u, 6u, 8u)));

TEST(Deinterleave, NullChannelBuffersAreSkipped) {
  const auto interleaved = Interleaved(4, 2, 2);
  ChannelBuffers buffers(2, 4);
  buffers.pointers[0] = nullptr;
  DeinterleaveSamples(interleaved.data(), 4, 2, 2, buffers.pointers.data());
  EXPECT_EQ(buffers.bytes(0)[0], 0xEE);
  EXPECT_EQ(buffers.bytes(1)[2], SampleByte(1, 1, 0));
}

TEST(Deinterleave, UnknownWidthsCopyNothing) {
  const auto interleaved = Interleaved(2, 1, 8);
  ChannelBuffers buffers(1, 8);
  DeinterleaveSamples(interleaved.data(), 2, 1, 5, buffers.pointers.data());
  DeinterleaveSamples(interleaved.data(), 2, 1, 0, buffers.pointers.data());
  for (std::size_t i = 0; i < 32; ++i) ASSERT_EQ(buffers.bytes(0)[i], 0xEE);
}

TEST(PendingAudio, DeliversFromTheFrontAndKeepsTheRest) {
  PendingAudio pending;
  const auto interleaved = Interleaved(6, 2, 2);
  ASSERT_TRUE(pending.Append(interleaved.data(), interleaved.size()));
  EXPECT_EQ(pending.AvailableFrames(2, 2), 6u);

  ChannelBuffers first(2, 4);
  EXPECT_EQ(pending.Deliver(4, 2, 2, first.pointers.data()), 4u);
  EXPECT_EQ(first.bytes(1)[6], SampleByte(3, 1, 0));
  EXPECT_EQ(pending.size(), 2 * 2 * 2u);

  ChannelBuffers second(2, 4);
  EXPECT_EQ(pending.Deliver(4, 2, 2, second.pointers.data()), 2u) << "only two frames were left";
  EXPECT_EQ(second.bytes(0)[0], SampleByte(4, 0, 0));
  EXPECT_EQ(second.bytes(1)[3], SampleByte(5, 1, 1));
  EXPECT_EQ(pending.size(), 0u);
}

TEST(PendingAudio, APartialFrameWaitsForTheRestOfItsBytes) {
  PendingAudio pending;
  const auto interleaved = Interleaved(3, 2, 3);  // 18 bytes
  ASSERT_TRUE(pending.Append(interleaved.data(), 10));  // one frame and 4 bytes
  EXPECT_EQ(pending.AvailableFrames(2, 3), 1u);

  ChannelBuffers first(2, 3);
  EXPECT_EQ(pending.Deliver(3, 2, 3, first.pointers.data()), 1u);
  EXPECT_EQ(pending.size(), 4u);

  ASSERT_TRUE(pending.Append(interleaved.data() + 10, 8));
  ChannelBuffers second(2, 3);
  EXPECT_EQ(pending.Deliver(3, 2, 3, second.pointers.data()), 2u);
  // Frame 1 joined across the two appends.
  EXPECT_EQ(second.bytes(0)[0], SampleByte(1, 0, 0));
  EXPECT_EQ(second.bytes(1)[2], SampleByte(1, 1, 2));
  EXPECT_EQ(second.bytes(1)[5], SampleByte(2, 1, 2));
}

TEST(PendingAudio, UnknownWidthsCountFramesWithoutCopying) {
  PendingAudio pending;
  const std::vector<std::uint8_t> bytes(2 * 5 * 3, 0x11);
  ASSERT_TRUE(pending.Append(bytes.data(), bytes.size()));
  ChannelBuffers buffers(2, 8);
  EXPECT_EQ(pending.Deliver(2, 2, 5, buffers.pointers.data()), 2u);
  EXPECT_EQ(pending.size(), 10u);
  EXPECT_EQ(buffers.bytes(0)[0], 0xEE);
}

TEST(PendingAudio, ReserveMakesRoomForTheWholeRequestAtOnce) {
  PendingAudio pending;
  const std::vector<std::uint8_t> bytes(10, 1);
  ASSERT_TRUE(pending.Append(bytes.data(), bytes.size()));
  ASSERT_TRUE(pending.Reserve(1000, 6, 4));
  EXPECT_GE(pending.capacity(), 10u + 1000 * 6 * 4);
  const std::size_t capacity = pending.capacity();
  const std::vector<std::uint8_t> more(1000 * 6 * 4, 2);
  ASSERT_TRUE(pending.Append(more.data(), more.size()));
  EXPECT_EQ(pending.capacity(), capacity) << "appends within the reservation do not reallocate";
}

TEST(PendingAudio, ImpossibleReservationsFailWithoutChangingTheContents) {
  PendingAudio pending;
  const std::vector<std::uint8_t> bytes(6, 7);
  ASSERT_TRUE(pending.Append(bytes.data(), bytes.size()));
  EXPECT_FALSE(pending.Reserve(-1, 2, 2));
  EXPECT_TRUE(pending.Reserve(0, 2, 2));
  EXPECT_TRUE(pending.Reserve(100, 0, 4));
  EXPECT_EQ(pending.size(), 6u);
  EXPECT_EQ(pending.AvailableFrames(0, 2), 0u);
  EXPECT_EQ(pending.AvailableFrames(2, 0), 0u);
}

}  // namespace
}  // namespace windowsmediafoundation
