// The decoder's ReadAudio in 4,096-frame blocks against a bare libavformat /
// libavcodec decode loop of the same file, natively. Each is run once a
// round, interleaved; the medians, their ratio and the goal are printed.
#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include "aurivox/Aurivox.h"
#include "aurivox/Decoder.h"
#include "orxcore/String.h"
#include "support/Measure.h"
#include "support/Table.h"

namespace {

constexpr std::uint32_t kBlockFrames = 4096;
constexpr double kGoal = 1.05;
constexpr int kRounds = 7;

// Every sample through the module, as the host reads it.
std::int64_t DecodeWithAurivox(const orxcore::WString& path) {
  Aurivox::Decoder decoder;
  imFileInfoRec8 info{};
  if (decoder.Open(path, &info) != 0) return -1;
  const std::int64_t frames = decoder.GetDuration();
  std::vector<std::vector<float>> channels(info.numChannels, std::vector<float>(kBlockFrames));
  std::vector<float*> buffers;
  for (auto& channel : channels) buffers.push_back(channel.data());
  for (std::int64_t position = 0; position < frames; position += kBlockFrames) {
    imImportAudioRec7 rec{};
    rec.position = position;
    rec.size = kBlockFrames;
    rec.buffer = buffers.data();
    if (decoder.ReadAudio(&rec) != 0) return -1;
  }
  return frames;
}

// The same file through FFmpeg alone: demux, decode, nothing else.
std::int64_t DecodeBare(const std::string& path) {
  AVFormatContext* format = nullptr;
  if (avformat_open_input(&format, path.c_str(), nullptr, nullptr) < 0) return -1;
  std::int64_t frames = -1;
  const AVCodec* codec = nullptr;
  const int stream = avformat_find_stream_info(format, nullptr) < 0
                         ? -1
                         : av_find_best_stream(format, AVMEDIA_TYPE_AUDIO, -1, -1, &codec, 0);
  AVCodecContext* context = stream < 0 ? nullptr : avcodec_alloc_context3(codec);
  AVPacket* packet = av_packet_alloc();
  AVFrame* frame = av_frame_alloc();
  if (context && avcodec_parameters_to_context(context, format->streams[stream]->codecpar) >= 0 &&
      avcodec_open2(context, codec, nullptr) >= 0) {
    frames = 0;
    bool draining = false;
    while (!draining) {
      if (av_read_frame(format, packet) < 0) {
        draining = true;
        avcodec_send_packet(context, nullptr);
      } else if (packet->stream_index == stream) {
        avcodec_send_packet(context, packet);
      }
      av_packet_unref(packet);
      while (avcodec_receive_frame(context, frame) >= 0) frames += frame->nb_samples;
    }
  }
  av_frame_free(&frame);
  av_packet_free(&packet);
  avcodec_free_context(&context);
  avformat_close_input(&format);
  return frames;
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
    if (DecodeWithAurivox(wide) < 0 || DecodeBare(path) < 0) {
      std::cerr << path << ": cannot be decoded\n";
      status = 1;
      continue;
    }
    const std::vector<double> seconds =
        bench::MedianSecondsPerRun({[&] { DecodeWithAurivox(wide); }, [&] { DecodeBare(path); }}, kRounds);
    const double ratio = seconds[0] / seconds[1];
    const std::string name = path.substr(path.find_last_of('/') + 1);
    table.AddRow({name, bench::Fixed(seconds[0], 3), bench::Fixed(seconds[1], 3), bench::Fixed(ratio, 3) + "x",
                  "<= " + bench::Fixed(kGoal, 2) + "x"});
    bench::PrintSummaryRow(std::cout, {"ffmpeg_decode_bench", name, bench::Fixed(seconds[0], 3) + " s",
                                       bench::Fixed(seconds[1], 3) + " s", bench::Fixed(ratio, 3) + "x"});
  }
  table.Print(std::cout);
  Aurivox::Terminate();
  return status;
}
