// The decoder's ReadAudio in 4,096-frame blocks against a bare libavformat /
// libavcodec decode loop of the same file, natively. In a round both open the
// file, decode it side by side, taking turns every slice of a few
// milliseconds, and close it; each one's time is summed over the round. Turns
// that short let both see the same machine, where a guest's clock speed and
// neighbours change from one second to the next. The medians of the rounds'
// times and of their ratios are printed with the goal.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include "aurivox/Aurivox.h"
#include "aurivox/Decoder.h"
#include "orxcore/String.h"
#include "support/Table.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::uint32_t kBlockFrames = 4096;
constexpr std::int64_t kSliceFrames = 64 * kBlockFrames;
constexpr double kGoal = 1.05;
constexpr int kRounds = 7;

// Every sample through the module, as the host reads it.
class AurivoxRun {
 public:
  explicit AurivoxRun(const orxcore::WString& path) {
    imFileInfoRec8 info{};
    if (decoder_.Open(path, &info) != 0) return;
    frames_ = decoder_.GetDuration();
    channels_.assign(info.numChannels, std::vector<float>(kBlockFrames));
    for (auto& channel : channels_) buffers_.push_back(channel.data());
  }

  bool done() const { return position_ >= frames_; }

  // The next `frames`, in blocks; false when a read fails.
  bool Decode(std::int64_t frames) {
    for (const std::int64_t end = position_ + frames; position_ < end && !done(); position_ += kBlockFrames) {
      imImportAudioRec7 rec{};
      rec.position = position_;
      rec.size = kBlockFrames;
      rec.buffer = buffers_.data();
      if (decoder_.ReadAudio(&rec) != 0) return false;
    }
    return true;
  }

  std::int64_t frames() const { return frames_; }

 private:
  Aurivox::Decoder decoder_;
  std::int64_t frames_ = -1;
  std::int64_t position_ = 0;
  std::vector<std::vector<float>> channels_;
  std::vector<float*> buffers_;
};

// The same file through FFmpeg alone: demux, decode, nothing else.
class BareRun {
 public:
  explicit BareRun(const std::string& path) {
    if (avformat_open_input(&format_, path.c_str(), nullptr, nullptr) < 0 ||
        avformat_find_stream_info(format_, nullptr) < 0) {
      return;
    }
    const AVCodec* codec = nullptr;
    stream_ = av_find_best_stream(format_, AVMEDIA_TYPE_AUDIO, -1, -1, &codec, 0);
    if (stream_ < 0) return;
    context_ = avcodec_alloc_context3(codec);
    if (context_ && avcodec_parameters_to_context(context_, format_->streams[stream_]->codecpar) >= 0 &&
        avcodec_open2(context_, codec, nullptr) >= 0) {
      packet_ = av_packet_alloc();
      frame_ = av_frame_alloc();
      ok_ = packet_ && frame_;
    }
  }

  ~BareRun() {
    av_frame_free(&frame_);
    av_packet_free(&packet_);
    avcodec_free_context(&context_);
    avformat_close_input(&format_);
  }

  bool done() const { return !ok_ || drained_; }

  // At least `frames` more, or what is left.
  bool Decode(std::int64_t frames) {
    for (const std::int64_t end = frames_ + frames; frames_ < end && !done();) {
      if (avcodec_receive_frame(context_, frame_) >= 0) {
        frames_ += frame_->nb_samples;
      } else if (draining_) {
        drained_ = true;
      } else if (av_read_frame(format_, packet_) < 0) {
        draining_ = true;
        avcodec_send_packet(context_, nullptr);
      } else {
        if (packet_->stream_index == stream_) avcodec_send_packet(context_, packet_);
        av_packet_unref(packet_);
      }
    }
    return ok_;
  }

  std::int64_t frames() const { return frames_; }

 private:
  AVFormatContext* format_ = nullptr;
  AVCodecContext* context_ = nullptr;
  AVPacket* packet_ = nullptr;
  AVFrame* frame_ = nullptr;
  int stream_ = -1;
  bool ok_ = false;
  bool draining_ = false;
  bool drained_ = false;
  std::int64_t frames_ = 0;
};

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// Calls `work` and adds the seconds it took to `total`.
template <typename Work>
auto Timed(double& total, Work&& work) {
  const Clock::time_point start = Clock::now();
  auto result = work();
  total += SecondsSince(start);
  return result;
}

struct Round {
  double aurivox = 0;
  double bare = 0;
  bool ok = false;
};

Round DecodeSideBySide(const orxcore::WString& wide, const std::string& path) {
  Round round;
  auto aurivox = Timed(round.aurivox, [&] { return std::make_unique<AurivoxRun>(wide); });
  auto bare = Timed(round.bare, [&] { return std::make_unique<BareRun>(path); });
  bool ok = aurivox->frames() > 0;
  while (ok && !(aurivox->done() && bare->done())) {
    ok = Timed(round.aurivox, [&] { return aurivox->Decode(kSliceFrames); }) &&
         Timed(round.bare, [&] { return bare->Decode(kSliceFrames); });
  }
  // A bare decode delivers whole codec frames, so it may end a little past
  // the length the container gives.
  round.ok = ok && bare->frames() >= aurivox->frames();
  Timed(round.aurivox, [&] { aurivox.reset(); return 0; });
  Timed(round.bare, [&] { bare.reset(); return 0; });
  return round;
}

double Median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
  return values[values.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::cerr << "usage: ffmpeg_decode_bench FILE...\n";
    return 2;
  }
  Aurivox::Initialize();
  int status = 0;
  bench::Table table({"file", "aurivox s", "bare FFmpeg s", "ratio", "goal"});
  for (int i = 1; i < argc; ++i) {
    const std::string path = argv[i];
    const orxcore::WString wide = orxcore::UTF8to16(path);
    std::vector<double> aurivox, bare, ratios;
    for (int r = 0; r <= kRounds; ++r) {
      const Round round = DecodeSideBySide(wide, path);
      if (!round.ok) break;
      if (r == 0) continue;  // warms the file's pages and the code up
      aurivox.push_back(round.aurivox);
      bare.push_back(round.bare);
      ratios.push_back(round.aurivox / round.bare);
    }
    if (ratios.size() != kRounds) {
      std::cerr << path << ": cannot be decoded\n";
      status = 1;
      continue;
    }
    const std::string seconds[] = {bench::Fixed(Median(aurivox), 3), bench::Fixed(Median(bare), 3)};
    const std::string ratio = bench::Fixed(Median(ratios), 3) + "x";
    const std::string name = path.substr(path.find_last_of('/') + 1);
    table.AddRow({name, seconds[0], seconds[1], ratio, "<= " + bench::Fixed(kGoal, 2) + "x"});
    bench::PrintSummaryRow(std::cout, {"ffmpeg_decode_bench", name, seconds[0] + " s", seconds[1] + " s", ratio});
  }
  table.Print(std::cout);
  Aurivox::Terminate();
  return status;
}
