// Owning handles for FFmpeg's C objects, freed by their own functions.
#pragma once

#include <memory>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace ffmpeg {

struct FormatContextCloser {
  void operator()(AVFormatContext* context) const { avformat_close_input(&context); }
};
struct CodecContextFreer {
  void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
};
struct PacketFreer {
  void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
struct FrameFreer {
  void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};

using FormatContextPtr = std::unique_ptr<AVFormatContext, FormatContextCloser>;
using CodecContextPtr = std::unique_ptr<AVCodecContext, CodecContextFreer>;
using PacketPtr = std::unique_ptr<AVPacket, PacketFreer>;
using FramePtr = std::unique_ptr<AVFrame, FrameFreer>;

}  // namespace ffmpeg
