// The decoder's ReadAudio in 4,096-frame blocks against a bare libavformat /
// libavcodec decode loop of the same file, natively, side by side in turns;
// the medians of the rounds' times and of their ratios are printed with the
// goal.
#include <iostream>
#include <memory>
#include <string>
#include <vector>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include "aurivox/Aurivox.h"
#include "orxcore/String.h"
#include "support/DecoderRun.h"
#include "support/SideBySide.h"
#include "support/Table.h"

namespace {

constexpr double kGoal = 1.05;
constexpr int kRounds = 7;

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

  bool ok() const { return ok_; }
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

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::cerr << "usage: ffmpeg_decode_bench FILE...\n";
    return 2;
  }
  Aurivox::Initialize();
  int status = 0;
  bench::Table table({"file", "aurivox s", "bare FFmpeg s", "ratio", "95 % range", "goal"});
  for (int i = 1; i < argc; ++i) {
    const std::string path = argv[i];
    const orxcore::WString wide = orxcore::UTF8to16(path);
    std::unique_ptr<bench::DecoderRun> aurivox;
    std::unique_ptr<BareRun> bare;
    bool ok = true;
    const bench::SideBySideResult result = bench::MeasureSideBySide(
        {[&] { aurivox = std::make_unique<bench::DecoderRun>(wide); },
         [&] { return aurivox->Read(bench::DecoderRun::kSliceFrames); },
         [&] {
           ok = ok && aurivox->result() == Aurivox::kResultSuccess && aurivox->frames() > 0;
           aurivox.reset();
         }},
        {[&] { bare = std::make_unique<BareRun>(path); },
         [&] { return bare->Decode(bench::DecoderRun::kSliceFrames) && !bare->done(); },
         [&] {
           ok = ok && bare->ok();
           bare.reset();
         }},
        kRounds);
    if (!ok) {
      std::cerr << path << ": cannot be decoded\n";
      status = 1;
      continue;
    }
    const std::string seconds[] = {bench::Fixed(result.firstSeconds, 3), bench::Fixed(result.secondSeconds, 3)};
    const std::string ratio = bench::Fixed(result.ratio, 3) + "x";
    const std::string name = path.substr(path.find_last_of('/') + 1);
    const std::string range = bench::RatioRangeText(result);
    table.AddRow({name, seconds[0], seconds[1], ratio, range, "<= " + bench::Fixed(kGoal, 2) + "x"});
    bench::PrintSummaryRow(std::cout,
                           {"ffmpeg_decode_bench", name, seconds[0] + " s", seconds[1] + " s",
                            ratio + " (95 %: " + range + ")"},
                           result.ratio, bench::Goal::AtMost(kGoal));
  }
  table.Print(std::cout);
  Aurivox::Terminate();
  return status;
}
