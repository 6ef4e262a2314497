// Throughput of handing decoded audio out one buffer a channel: the bare
// de-interleave, and PendingAudio's round of taking decoded buffers that the
// reader runs for every request, against memcpy of the same bytes timed in the
// same rounds.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "PendingAudio.h"
#include "support/Measure.h"
#include "support/Table.h"

namespace {

using windowsmediafoundation::PendingAudio;

// A host's request: the decoder delivers this many frames a call.
constexpr std::uint32_t kFrames = 4096;
// Frames in one decoded buffer: what Media Foundation's WAVE source gives
// for 40 ms at 48 kHz.
constexpr std::uint32_t kDecodedFrames = 1920;
// Throughput as a share of memcpy's: of the de-interleave, and of a round
// that also keeps the rest of a decoded buffer in pending audio.
constexpr double kDeinterleaveGoal = 0.5;
constexpr double kRoundGoal = 0.4;

// Through a volatile pointer so the compiler cannot drop or fold the reference.
void* (*volatile memcpyFunction)(void*, const void*, std::size_t) = std::memcpy;

struct Layout {
  std::uint32_t channels;
  std::uint32_t width;  // bytes a sample
  const char* name;
};

class Audio {
 public:
  explicit Audio(const Layout& layout)
      : layout_(layout),
        interleaved_(std::size_t{kFrames} * layout.channels * layout.width),
        copy_(interleaved_.size()),
        channels_(layout.channels, std::vector<float>(kFrames)) {
    for (std::size_t i = 0; i < interleaved_.size(); ++i) interleaved_[i] = static_cast<std::uint8_t>(i * 131 + 7);
    for (auto& channel : channels_) pointers_.push_back(channel.data());
  }

  std::size_t Bytes() const { return interleaved_.size(); }

  void Memcpy() { memcpyFunction(copy_.data(), interleaved_.data(), interleaved_.size()); }

  void Deinterleave() {
    windowsmediafoundation::DeinterleaveSamples(interleaved_.data(), kFrames, layout_.channels, layout_.width,
                                                pointers_.data());
  }

  // One read request as the reader serves it when the decoder's buffers are
  // smaller than the request: what the last request left, then decoded
  // buffers taken in turn, the last one's rest kept for the next request.
  void PendingRound() {
    pending_.Reserve(static_cast<std::int32_t>(kFrames), layout_.channels, layout_.width);
    windowsmediafoundation::AudioRequest request{pointers_.data(), layout_.channels, layout_.width, kFrames};
    pending_.Deliver(request);
    const std::size_t bufferBytes = std::size_t{kDecodedFrames} * layout_.channels * layout_.width;
    while (request.filled < kFrames) {
      const std::size_t start = decoded_ % interleaved_.size();
      const std::size_t size = std::min(bufferBytes, interleaved_.size() - start);
      pending_.Take(interleaved_.data() + start, size, request);
      decoded_ += size;
    }
  }

 private:
  Layout layout_;
  std::vector<std::uint8_t> interleaved_;
  std::vector<std::uint8_t> copy_;
  std::vector<std::vector<float>> channels_;
  std::vector<float*> pointers_;
  PendingAudio pending_;
  std::size_t decoded_ = 0;  // bytes of `interleaved_` taken so far, round after round
};

}  // namespace

int main() {
  const Layout layouts[] = {
      {2, 2, "stereo 16-bit"},   {2, 3, "stereo 24-bit"},   {2, 4, "stereo float"},       {6, 2, "surround 16-bit"},
      {6, 3, "surround 24-bit"}, {6, 4, "surround float"},  {8, 4, "7.1 surround float"},
  };
  std::cout << "De-interleaving " << kFrames << " frames a call into one buffer a channel (surround: 5.1), vs\n"
            << "memcpy of the same bytes; median of " << bench::MeasureOptions{}.rounds
            << " interleaved rounds; x memcpy = memcpy time / candidate time\n\n";
  bench::Table table({"layout", "code", "ns/call", "GB/s", "x memcpy"});
  for (const Layout& layout : layouts) {
    Audio audio(layout);
    const std::vector<double> ns = bench::MedianNanosecondsPerCall(
        {[&] { audio.Memcpy(); }, [&] { audio.Deinterleave(); }, [&] { audio.PendingRound(); }});
    const char* names[] = {"memcpy (reference)", "DeinterleaveSamples", "PendingAudio round"};
    for (std::size_t i = 0; i < ns.size(); ++i) {
      table.AddRow({layout.name, names[i], bench::Fixed(ns[i], 0), bench::Fixed(double(audio.Bytes()) / ns[i], 2),
                    bench::Fixed(ns[0] / ns[i], 2)});
    }
    for (std::size_t i = 1; i < ns.size(); ++i) {
      bench::PrintSummaryRow(std::cout, {"de-interleave (native)", std::string(layout.name) + ", " + names[i],
                                         bench::Fixed(double(audio.Bytes()) / ns[i], 2) + " GB/s",
                                         bench::Fixed(double(audio.Bytes()) / ns[0], 2) + " GB/s memcpy",
                                         bench::Fixed(ns[0] / ns[i], 2) + " x memcpy"},
                             ns[0] / ns[i], bench::Goal::AtLeast(i == 1 ? kDeinterleaveGoal : kRoundGoal));
    }
  }
  table.Print(std::cout);
  return 0;
}
