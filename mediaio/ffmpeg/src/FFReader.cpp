#include "FFReader.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>

#include "ChannelMask.h"
#include "CodecSubtypes.h"
#include "MediaTypeNames.h"
#include "PendingAudio.h"
#include "TimeArithmetic.h"

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/dict.h>
#include <libavutil/error.h>
#include <libavutil/samplefmt.h>
}

namespace ffmpeg {
namespace {

// The speaker bits FFmpeg's native channel order shares with the WAVE mask:
// front left (bit 0) to top back right (bit 17).
constexpr std::uint64_t kWaveSpeakerBits = 0x3FFFF;
constexpr std::uint32_t kStereoMask = 0x3;
constexpr char kPcmPacketBytes[] = "65536";

orxcore::WString ErrorText(int error) {
  char text[AV_ERROR_MAX_STRING_SIZE] = {};
  av_strerror(error, text, sizeof text);
  return orxcore::UTF8to16(text);
}

// Samples of every decoded format, as float or as an integer whose top
// bytes are the sample (8-bit samples stay unsigned when written back).
float ToFloat(std::uint8_t v) { return (static_cast<int>(v) - 128) / 128.0f; }
float ToFloat(std::int16_t v) { return v / 32768.0f; }
float ToFloat(std::int32_t v) { return static_cast<float>(v / 2147483648.0); }
float ToFloat(std::int64_t v) { return static_cast<float>(v / 9223372036854775808.0); }
float ToFloat(float v) { return v; }
float ToFloat(double v) { return static_cast<float>(v); }

std::int32_t FromUnit(double v) {
  const double scaled = v * 2147483648.0;
  if (!(scaled > INT32_MIN)) return INT32_MIN;  // NaN too
  if (scaled >= INT32_MAX) return INT32_MAX;
  return static_cast<std::int32_t>(std::lrint(scaled));
}
std::int32_t ToInt32(std::uint8_t v) { return static_cast<std::int32_t>(static_cast<std::uint32_t>(v ^ 0x80) << 24); }
std::int32_t ToInt32(std::int16_t v) { return static_cast<std::int32_t>(static_cast<std::uint32_t>(v) << 16); }
std::int32_t ToInt32(std::int32_t v) { return v; }
std::int32_t ToInt32(std::int64_t v) { return static_cast<std::int32_t>(v >> 32); }
std::int32_t ToInt32(float v) { return FromUnit(v); }
std::int32_t ToInt32(double v) { return FromUnit(v); }

// The top `width` bytes of `v`, little-endian; one byte is unsigned.
void StoreTop(std::int32_t v, std::uint32_t width, std::uint8_t* out) {
  const auto bits = static_cast<std::uint32_t>(v);
  if (width == 1) {
    out[0] = static_cast<std::uint8_t>((bits >> 24) ^ 0x80);
    return;
  }
  for (std::uint32_t b = 0; b < width; ++b) out[b] = static_cast<std::uint8_t>(bits >> (8 * (4 - width + b)));
}

// One sample as the client type: float, or the top `width` bytes.
template <typename In, bool kToFloat>
void Convert(const std::uint8_t* at, std::uint32_t width, std::uint8_t* out) {
  In v;
  std::memcpy(&v, at, sizeof v);
  if constexpr (kToFloat) {
    const float f = ToFloat(v);
    std::memcpy(out, &f, sizeof f);
  } else {
    StoreTop(ToInt32(v), width, out);
  }
}

// Where a run of samples goes: frames [first, first + frames) of a decoded
// frame into the host's buffers from frame `offset` on, at `width` bytes.
struct Run {
  const AVFrame& frame;
  std::size_t first;
  std::size_t frames;
  float* const* channelBuffers;
  std::size_t offset;
  std::uint32_t width;
};

std::uint8_t* Destination(const Run& run, int channel) {
  return reinterpret_cast<std::uint8_t*>(run.channelBuffers[channel]) + run.offset * run.width;
}

// Converts every sample of the run into its channel's buffer. The layout and
// the target type are template arguments so the per-sample loop carries no
// branches.
template <typename In, bool kPlanar, bool kToFloat>
void ConvertRun(const Run& run, int channels) {
  for (int c = 0; c < channels; ++c) {
    if (!run.channelBuffers[c]) continue;
    std::uint8_t* out = Destination(run, c);
    if constexpr (kPlanar) {
      const std::uint8_t* in = run.frame.extended_data[c] + run.first * sizeof(In);
      for (std::size_t i = 0; i < run.frames; ++i) Convert<In, kToFloat>(in + i * sizeof(In), run.width, out + i * run.width);
    } else {
      const std::size_t stride = std::size_t(channels) * sizeof(In);
      const std::uint8_t* in = run.frame.extended_data[0] + run.first * stride + std::size_t(c) * sizeof(In);
      for (std::size_t i = 0; i < run.frames; ++i) Convert<In, kToFloat>(in + i * stride, run.width, out + i * run.width);
    }
  }
}

template <typename In>
void ConvertRun(const Run& run, int channels, bool planar, bool toFloat) {
  if (planar) {
    toFloat ? ConvertRun<In, true, true>(run, channels) : ConvertRun<In, true, false>(run, channels);
  } else {
    toFloat ? ConvertRun<In, false, true>(run, channels) : ConvertRun<In, false, false>(run, channels);
  }
}

using Converter = void (*)(const Run&, int, bool, bool);

Converter ConverterFor(AVSampleFormat packed) {
  switch (packed) {
    case AV_SAMPLE_FMT_U8: return &ConvertRun<std::uint8_t>;
    case AV_SAMPLE_FMT_S16: return &ConvertRun<std::int16_t>;
    case AV_SAMPLE_FMT_S32: return &ConvertRun<std::int32_t>;
    case AV_SAMPLE_FMT_S64: return &ConvertRun<std::int64_t>;
    case AV_SAMPLE_FMT_FLT: return &ConvertRun<float>;
    case AV_SAMPLE_FMT_DBL: return &ConvertRun<double>;
    default: return nullptr;
  }
}

// Whether the samples of `format` already are the client type's bytes.
bool IsClientType(AVSampleFormat format, bool toFloat, std::uint32_t width) {
  const AVSampleFormat packed = av_get_packed_sample_fmt(format);
  if (toFloat) return packed == AV_SAMPLE_FMT_FLT;
  return (packed == AV_SAMPLE_FMT_U8 && width == 1) || (packed == AV_SAMPLE_FMT_S16 && width == 2) ||
         (packed == AV_SAMPLE_FMT_S32 && width == 4);
}

}  // namespace

bool FFReader::OpenFromPath(const orxcore::WString& path, OpenStatus& status) {
  Close();
  return Open(orxcore::UTF16toStdString(path).c_str(), status);
}

bool FFReader::OpenFromStream(const std::shared_ptr<windowsmediafoundation::StreamInterface>& stream,
                              OpenStatus& status) {
  Close();
  streamIO_ = std::make_unique<StreamIO>(stream);
  if (!streamIO_->context()) {
    status = {kOpenStatusReaderFailed, AVERROR(ENOMEM), ErrorText(AVERROR(ENOMEM))};
    return false;
  }
  return Open("", status);
}

void FFReader::Close() {
  frame_.reset();
  decoder_.reset();
  format_.reset();
  streamIO_.reset();
  streamIndex_ = -1;
  draining_ = false;
  endOfStream_ = false;
  subtype_ = orxcore::Guid{};
  samplesPerSecond_ = bitsPerSample_ = channels_ = channelMask_ = 0;
  integerPcm_ = false;
  estimatedFrames_ = 0;
  frontOffset_ = 0;
  heldFrames_ = 0;
  carried_.clear();
  carriedFrames_ = 0;
}

bool FFReader::Open(const char* url, OpenStatus& status) {
  status = OpenStatus();
  AVFormatContext* context = avformat_alloc_context();
  if (!context) {
    status = {kOpenStatusReaderFailed, AVERROR(ENOMEM), ErrorText(AVERROR(ENOMEM))};
    return false;
  }
  if (streamIO_) {
    context->pb = streamIO_->context();
    context->flags |= AVFMT_FLAG_CUSTOM_IO;
  }
  // The WAVE demuxer hands out 4 KiB packets unless told otherwise; for PCM
  // the work per packet then costs more than the samples. Larger packets
  // carry the same samples. Other demuxers leave the option alone.
  AVDictionary* options = nullptr;
  av_dict_set(&options, "max_size", kPcmPacketBytes, 0);
  int result = avformat_open_input(&context, url, nullptr, &options);  // frees the context on failure
  av_dict_free(&options);
  if (result >= 0) {
    format_.reset(context);
    result = avformat_find_stream_info(context, nullptr);
  }
  if (result < 0) {
    status = {kOpenStatusReaderFailed, result, ErrorText(result)};
    return false;
  }
  for (unsigned i = 0; i < context->nb_streams; ++i) {
    if (context->streams[i]->codecpar->codec_type == AVMEDIA_TYPE_AUDIO) {
      streamIndex_ = static_cast<int>(i);
      SetUpAudio(*context->streams[i]);
      return true;
    }
  }
  return false;  // no audio at all: a fine open with nothing to read
}

void FFReader::SetUpAudio(const AVStream& stream) {
  const AVCodecParameters& parameters = *stream.codecpar;
  subtype_ = SubtypeForCodec(parameters.codec_id);
  samplesPerSecond_ = static_cast<std::uint32_t>(std::max(parameters.sample_rate, 0));
  channels_ = static_cast<std::uint32_t>(std::max(parameters.ch_layout.nb_channels, 0));
  if (parameters.ch_layout.order == AV_CHANNEL_ORDER_NATIVE) {
    channelMask_ = static_cast<std::uint32_t>(parameters.ch_layout.u.mask & kWaveSpeakerBits);
  } else if (channels_ == 2) {
    channelMask_ = kStereoMask;  // a stereo file that names no speakers is left and right
  }
  if (format_->duration != AV_NOPTS_VALUE && format_->duration > 0) {
    // Microseconds to the 100-ns units the frame arithmetic counts in.
    estimatedFrames_ = windowsmediafoundation::TimeToFrames(format_->duration * 10, samplesPerSecond_, 1);
  }

  const AVCodec* codec = avcodec_find_decoder(parameters.codec_id);
  if (!codec || channels_ == 0 || samplesPerSecond_ == 0) return;
  CodecContextPtr decoder(avcodec_alloc_context3(codec));
  if (!decoder || avcodec_parameters_to_context(decoder.get(), &parameters) < 0 ||
      avcodec_open2(decoder.get(), codec, nullptr) < 0) {
    return;
  }
  packet_.reset(av_packet_alloc());
  frame_.reset(av_frame_alloc());
  if (!packet_ || !frame_) return;

  integerPcm_ = IsIntegerPcmCodec(parameters.codec_id);
  if (integerPcm_) {
    int bits = parameters.bits_per_raw_sample;
    if (bits <= 0) bits = av_get_bits_per_sample(parameters.codec_id);
    if (bits <= 0) bits = 8 * av_get_bytes_per_sample(decoder->sample_fmt);
    bitsPerSample_ = static_cast<std::uint32_t>(std::clamp((bits + 7) / 8, 1, 4) * 8);
  } else {
    bitsPerSample_ = 32;
  }
  decoder_ = std::move(decoder);
}

orxmediatypes::AudioChannelLayout FFReader::channelLayout() const {
  return windowsmediafoundation::ChannelLayoutFromMask(channelMask_, static_cast<std::int32_t>(channels_));
}

orxcore::WString FFReader::GetAudioFormatDescription() const {
  return windowsmediafoundation::DescribeAudioSubtype(subtype_);
}

bool FFReader::ReadAudioSamples(std::int64_t, std::int32_t& count, float** channelBuffers,
                                std::uint32_t bytesPerSample) {
  if (!hasAudio() || count < 0 || bytesPerSample != bitsPerSample_ / 8) return false;
  if (count > 0 && !channelBuffers) return false;
  const auto wanted = static_cast<std::size_t>(count);
  // Each frame is handed out as soon as it is decoded and then let go, so
  // the decoder writes the next one into the buffer it has just written:
  // decoding a whole request ahead of the copy costs a few per cent.
  std::size_t done = DeliverCarried(wanted, channelBuffers);
  while (done < wanted) {
    if (heldFrames_ == 0) {
      if (endOfStream_) break;
      if (!DecodeMore()) {
        Carry(done, channelBuffers);
        return false;
      }
      continue;
    }
    done = Deliver(done, wanted, channelBuffers);
  }
  count = static_cast<std::int32_t>(done);
  return true;
}

bool FFReader::DecodeMore() {
  AVCodecContext* decoder = decoder_.get();
  for (;;) {
    int result = avcodec_receive_frame(decoder, frame_.get());
    if (result == 0) return KeepFrame();
    if (result == AVERROR_EOF || (result == AVERROR(EAGAIN) && draining_)) {
      endOfStream_ = true;
      return true;
    }
    if (result != AVERROR(EAGAIN)) return false;

    result = av_read_frame(format_.get(), packet_.get());
    if (result == AVERROR_EOF) {
      draining_ = true;
      avcodec_send_packet(decoder, nullptr);  // the decoder hands out what it holds
      continue;
    }
    if (result < 0) return false;
    if (packet_->stream_index == streamIndex_) {
      // A damaged packet is skipped, as players do; the next one decodes.
      avcodec_send_packet(decoder, packet_.get());
    }
    av_packet_unref(packet_.get());
  }
}

bool FFReader::KeepFrame() {
  const auto format = static_cast<AVSampleFormat>(frame_->format);
  // The format is not renegotiated mid-stream.
  if (frame_->ch_layout.nb_channels != static_cast<int>(channels_) || frame_->nb_samples < 0 ||
      ConverterFor(av_get_packed_sample_fmt(format)) == nullptr) {
    av_frame_unref(frame_.get());
    return false;
  }
  frontOffset_ = 0;
  heldFrames_ = static_cast<std::size_t>(frame_->nb_samples);
  return true;
}

std::size_t FFReader::Deliver(std::size_t done, std::size_t end, float* const* channelBuffers) {
  const AVFrame& frame = *frame_;
  const std::uint32_t width = bitsPerSample_ / 8;
  const bool toFloat = !integerPcm_;
  const int channels = static_cast<int>(channels_);
  const auto format = static_cast<AVSampleFormat>(frame.format);
  const bool planar = av_sample_fmt_is_planar(format) != 0;
  const Run run{frame, frontOffset_, std::min(end - done, heldFrames_), channelBuffers, done, width};
  if (!IsClientType(format, toFloat, width)) {
    ConverterFor(av_get_packed_sample_fmt(format))(run, channels, planar, toFloat);
  } else if (planar) {
    for (int c = 0; c < channels; ++c) {
      if (!channelBuffers[c]) continue;
      std::memcpy(Destination(run, c), frame.extended_data[c] + run.first * width, run.frames * width);
    }
  } else {
    // The host's buffers from frame `done` on, for the shared de-interleave.
    destinations_.resize(channels_);
    for (int c = 0; c < channels; ++c) {
      destinations_[c] = channelBuffers[c] ? reinterpret_cast<float*>(Destination(run, c)) : nullptr;
    }
    windowsmediafoundation::DeinterleaveSamples(frame.extended_data[0] + run.first * channels_ * width, run.frames,
                                                channels_, width, destinations_.data());
  }
  frontOffset_ += run.frames;
  heldFrames_ -= run.frames;
  // The buffer goes back to the decoder, which writes its next frame there
  // while the bytes are still in cache.
  if (heldFrames_ == 0) av_frame_unref(frame_.get());
  return done + run.frames;
}

std::size_t FFReader::DeliverCarried(std::size_t frames, float* const* channelBuffers) {
  frames = std::min(frames, carriedFrames_);
  const std::size_t bytes = frames * (bitsPerSample_ / 8);
  for (std::size_t c = 0; c < carried_.size() && frames > 0; ++c) {
    if (channelBuffers[c]) std::memcpy(channelBuffers[c], carried_[c].data(), bytes);
    carried_[c].erase(carried_[c].begin(), carried_[c].begin() + static_cast<std::ptrdiff_t>(bytes));
  }
  carriedFrames_ -= frames;
  return frames;
}

void FFReader::Carry(std::size_t frames, float* const* channelBuffers) {
  // A read decodes only once the carried frames are handed out, so they are
  // all at the start of the host's buffers.
  const std::size_t bytes = frames * (bitsPerSample_ / 8);
  try {
    carried_.resize(channels_);
    for (std::size_t c = 0; c < carried_.size(); ++c) {
      const auto* samples = reinterpret_cast<const std::uint8_t*>(channelBuffers[c]);
      if (samples) {
        carried_[c].assign(samples, samples + bytes);
      } else {
        carried_[c].assign(bytes, 0);  // a channel the host does not take
      }
    }
    carriedFrames_ = frames;
  } catch (const std::bad_alloc&) {
    carried_.clear();  // out of memory: the read fails and these frames are lost
    carriedFrames_ = 0;
  }
}

}  // namespace ffmpeg
