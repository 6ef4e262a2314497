#include "CodecSubtypes.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace ffmpeg {
namespace {

constexpr orxcore::Guid WaveFormatSubtype(std::uint32_t tag) {
  return {tag, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71}};
}

// MFAudioFormat_Dolby_AC3 and MFAudioFormat_Dolby_DDPlus.
constexpr orxcore::Guid kDolbyAc3{0xE06D802C, 0xDB46, 0x11CF, {0xB4, 0xD1, 0x00, 0x80, 0x5F, 0x6C, 0xBB, 0xEA}};
constexpr orxcore::Guid kDolbyDigitalPlus{0xA7FB87AF, 0x2D02, 0x42FB,
                                          {0xA4, 0xD4, 0x05, 0xCD, 0x93, 0x84, 0x3B, 0xDD}};

// Wave-format tags of the subtypes Windows names for these codecs, where
// the RIFF tag FFmpeg would give differs or is missing.
struct CodecTag {
  AVCodecID codec;
  std::uint32_t tag;
};
constexpr CodecTag kWindowsTags[] = {
    {AV_CODEC_ID_AAC, 0x1610},        // MFAudioFormat_AAC
    {AV_CODEC_ID_AAC_LATM, 0x1610},
    {AV_CODEC_ID_MP1, 0x0050},        // MFAudioFormat_MPEG
    {AV_CODEC_ID_MP2, 0x0050},
    {AV_CODEC_ID_MP3, 0x0055},        // MFAudioFormat_MP3
    {AV_CODEC_ID_FLAC, 0xF1AC},       // MFAudioFormat_FLAC
    {AV_CODEC_ID_ALAC, 0x6C61},       // MFAudioFormat_ALAC
    {AV_CODEC_ID_DTS, 0x0008},        // MFAudioFormat_DTS
    {AV_CODEC_ID_WMAV2, 0x0161},      // MFAudioFormat_WMAudioV8
    {AV_CODEC_ID_WMAPRO, 0x0162},     // MFAudioFormat_WMAudioV9
    {AV_CODEC_ID_WMALOSSLESS, 0x0163},
    {AV_CODEC_ID_OPUS, 0x704F},       // MFAudioFormat_Opus
    {AV_CODEC_ID_AMR_NB, 0x7361},     // MFAudioFormat_AMR_NB
};

bool IsFloatPcmCodec(AVCodecID codec) {
  switch (codec) {
    case AV_CODEC_ID_PCM_F32LE:
    case AV_CODEC_ID_PCM_F32BE:
    case AV_CODEC_ID_PCM_F64LE:
    case AV_CODEC_ID_PCM_F64BE:
    case AV_CODEC_ID_PCM_F16LE:
    case AV_CODEC_ID_PCM_F24LE:
      return true;
    default:
      return false;
  }
}

}  // namespace

bool IsIntegerPcmCodec(AVCodecID codec) {
  // FFmpeg keeps its raw PCM codecs in one block of identifiers; the DVD and
  // Blu-ray forms (a camera's LPCM) are among them.
  return codec >= AV_CODEC_ID_FIRST_AUDIO && codec < AV_CODEC_ID_ADPCM_IMA_QT && !IsFloatPcmCodec(codec) &&
         codec != AV_CODEC_ID_PCM_MULAW && codec != AV_CODEC_ID_PCM_ALAW && codec != AV_CODEC_ID_PCM_ZORK &&
         codec != AV_CODEC_ID_PCM_LXF && codec != AV_CODEC_ID_PCM_VIDC && codec != AV_CODEC_ID_PCM_SGA;
}

orxcore::Guid SubtypeForCodec(AVCodecID codec) {
  if (codec == AV_CODEC_ID_AC3) return kDolbyAc3;
  if (codec == AV_CODEC_ID_EAC3) return kDolbyDigitalPlus;
  if (IsIntegerPcmCodec(codec)) return WaveFormatSubtype(0x0001);
  if (IsFloatPcmCodec(codec)) return WaveFormatSubtype(0x0003);
  for (const CodecTag& entry : kWindowsTags) {
    if (entry.codec == codec) return WaveFormatSubtype(entry.tag);
  }
  const AVCodecTag* const tables[] = {avformat_get_riff_audio_tags(), nullptr};
  const unsigned int tag = av_codec_get_tag(tables, codec);
  if (tag != 0) return WaveFormatSubtype(tag);
  return orxcore::Guid{};
}

}  // namespace ffmpeg
