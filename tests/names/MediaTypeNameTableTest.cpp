#include "MediaTypeNameTable.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

#include "GuidText.h"

namespace windowsmediafoundation {
namespace {

using names_test::GuidFromText;

const MediaTypeNameRow& Row(std::size_t number) { return MediaTypeNameTable().at(number - 1); }

std::string RowName(std::size_t number) { return orxcore::UTF16toStdString(Row(number).name); }

struct GivenRow {
  std::size_t number;
  const char* guid;
  const char* name;
};

void ExpectRows(const GivenRow* begin, const GivenRow* end) {
  for (const GivenRow* given = begin; given != end; ++given) {
    SCOPED_TRACE("row " + std::to_string(given->number));
    EXPECT_EQ(Row(given->number).guid, GuidFromText(given->guid));
    EXPECT_EQ(RowName(given->number), given->name);
  }
}

TEST(MediaTypeNameTable, HoldsEveryNameInItsSectionOrder) {
  static const char* const kNames[] = {
    // Rows 1 to 57.
    "Base", "RGB, 32 bpp", "ARGB, 32 bpp", "RGB, 24 bpp", "RGB 555, 16 bpp", "RGB 565, 16 bpp",
    "RGB, 8 bpp", "AI44 4:4:4 Packed, Palettized", "AYUV 4:4:4 Packed, 8 bpp",
    "YUY2 4:2:2 Packed, 8 bpp", "YVYU", "YVU9", "UYVY 4:2:2 Packed, 8 bpp",
    "NV11 4:1:1 Planar, 8 bpp", "NV12 4:2:0 Planar, 8 bpp", "YV12 4:2:0 Planar, 8 bpp",
    "I420 4:2:0 Planar, 8 bpp", "IYUV 4:2:0 Planar, 8 bpp", "Y210 4:2:2 Packed, 10 bpp",
    "Y216 4:2:2 Packed, 16 bpp", "Y410 4:4:4 Packed, 10 bpp", "Y416 4:4:4 Packed, 16 bpp",
    "Y41P 4:1:1 Packed, 8 bpp", "Y41T 4:1:1 Packed, 8 bpp", "Y42T 4:2:2 Packed, 8 bpp",
    "P210 4:2:2 Planar, 10 bpp", "P216 4:2:2 Planar, 16 bpp", "P010 4:2:0 Planar, 10 bpp",
    "P016 4:2:0 Planar, 10 bpp", "v210 4:2:2 Packed, 10 bpp", "v216 4:2:2 Packed, 16 bpp",
    "v410 4:4:4 Packed, 10 bpp", "Microsoft MPEG-4 codec version 3 'MP43'",
    "ISO MPEG-4 codec version 1 'MP4S'", "MPEG-4 Part 2 'M4S2'", "MPEG-4 part 2 'MP4V'",
    "Windows Media Video codec version 7 'WMV1'", "Windows Media Video 8 codec 'WMV2'",
    "Windows Media Video 9 codec 'WMV3'", "VC-1 (SMPTE 421M)",
    "Windows Media Screen codec version 1 'MSS1'", "Windows Media Video 9 Screen codec 'MSS2'",
    "MPEG-1", "SD-DVCR 'DVSL'", "SDL-DVCR 'DVSD'", "DVCPRO 25 'DV25'", "DVCPRO 50 'DV50'",
    "DVCPRO 100 'DVH1'", "DVC/DV Video", "H.264", "Motion JPEG 'MJPG'",
    "8-bit per channel planar YUV 4:2:0 video '420O'", "'HEVC'", "'HEVS'", "H.263",
    "H.264 elementary stream", "MPEG-2",
    // Rows 58 to 77.
    "Base", "Uncompressed PCM audio", "Uncompressed IEEE floating-point audio",
    "Digital Theater Systems (DTS)",
    "Dolby AC-3 audio over Sony/Philips Digital Interface (S/PDIF)", "DRM", "Windows Media Audio 8",
    "Windows Media Audio 9 Professional codec", "Windows Media Audio Lossless",
    "Windows Media Audio 9 Professional codec over S/PDIF", "Windows Media Audio 9 Voice codec",
    "MPEG Audio Layer-3 (MP3)", "MPEG-1 audio payload", "Advanced Audio Coding (AAC)", "ADTS",
    "AMR Narrowband", "AMR Wideband", "AMR Wideband Plus", "Dolby Digital (AC-3)",
    "Dolby Digital Plus",
    // Rows 78 to 148.
    "Base", "MAJOR_TYPE", "SUBTYPE", "ALL_SAMPLES_INDEPENDENT", "FIXED_SIZE_SAMPLES", "COMPRESSED",
    "SAMPLE_SIZE", "WRAPPED_TYPE", "AUDIO_NUM_CHANNELS", "AUDIO_SAMPLES_PER_SECOND",
    "AUDIO_FLOAT_SAMPLES_PER_SECOND", "AUDIO_AVG_BYTES_PER_SECOND", "AUDIO_BLOCK_ALIGNMENT",
    "AUDIO_BITS_PER_SAMPLE", "AUDIO_VALID_BITS_PER_SAMPLE", "AUDIO_SAMPLES_PER_BLOCK",
    "AUDIO_CHANNEL_MASK", "AUDIO_FOLDDOWN_MATRIX", "AUDIO_WMADRC_PEAKREF",
    "AUDIO_WMADRC_PEAKTARGET", "AUDIO_WMADRC_AVGREF", "AUDIO_WMADRC_AVGTARGET",
    "AUDIO_PREFER_WAVEFORMATEX", "AAC_PAYLOAD_TYPE", "AAC_AUDIO_PROFILE_LEVEL_INDICATION",
    "FRAME_SIZE", "FRAME_RATE", "PIXEL_ASPECT_RATIO", "DRM_FLAGS", "PAD_CONTROL_FLAGS",
    "SOURCE_CONTENT_HINT", "VIDEO_CHROMA_SITING", "INTERLACE_MODE", "TRANSFER_FUNCTION",
    "VIDEO_PRIMARIES", "CUSTOM_VIDEO_PRIMARIES", "YUV_MATRIX", "VIDEO_LIGHTING",
    "VIDEO_NOMINAL_RANGE", "GEOMETRIC_APERTURE", "MINIMUM_DISPLAY_APERTURE", "PAN_SCAN_APERTURE",
    "PAN_SCAN_ENABLED", "AVG_BITRATE", "AVG_BIT_ERROR_RATE", "MAX_KEYFRAME_SPACING",
    "DEFAULT_STRIDE", "PALETTE", "USER_DATA", "AM_FORMAT_TYPE", "MPEG_START_TIME_CODE",
    "MPEG2_PROFILE", "MPEG2_LEVEL", "MPEG2_FLAGS", "MPEG_SEQUENCE_HEADER", "DV_AAUX_SRC_PACK_0",
    "DV_AAUX_CTRL_PACK_0", "DV_AAUX_SRC_PACK_1", "DV_AAUX_CTRL_PACK_1", "DV_VAUX_SRC_PACK",
    "DV_VAUX_CTRL_PACK", "ARBITRARY_HEADER", "ARBITRARY_FORMAT", "IMAGE_LOSS_TOLERANT",
    "MPEG4_SAMPLE_DESCRIPTION", "MPEG4_CURRENT_SAMPLE_ENTRY", "ORIGINAL_4CC",
    "ORIGINAL_WAVE_FORMAT_TAG", "FRAME_RATE_RANGE_MIN", "FRAME_RATE_RANGE_MAX", "DV_VAUX_CTRL_PACK",
    // Rows 149 to 164.
    "Default", "Audio", "Video", "Protected", "SAMI", "Script", "Image", "HTML", "Binary",
    "FileTransfer", "AM_MEDIA_TYPE_REPRESENTATION", "MFVideoFormat", "ASF File Container",
    "MPEG-4 File Container", "MP3 File Container", "3GP File Container",
    // Rows 165 to 390.
    "NULL", "NULL", "None", "Video", "Audio", "Text", "Midi", "Stream", "Interleaved", "File",
    "ScriptCommand", "AUXLine21Data", "AUXTeletextPage", "CC_CONTAINER", "DTVCCData", "MSTVCaption",
    "VBI", "DVB_SUBTITLES", "ISDB_CAPTIONS", "ISDB_SUPERIMPOSE", "Timecode", "LMRT", "URL_STREAM",
    "CLPL", "YUYV", "IYUV 4:2:0 Planar, 8 bpp", "YVU9", "Y411", "Y41P 4:1:1 Packed, 8 bpp",
    "YUY2 4:2:2 Packed, 8 bpp", "YVYU", "UYVY 4:2:2 Packed, 8 bpp", "Y211", "CLJR", "IF09", "CPLA",
    "Motion JPEG 'MJPG'", "TVMJ", "WAKE", "CFCC", "IJPG", "Plum", "DVCS", "H.264",
    "SDL-DVCR 'DVSD'", "MDVF", "RGB1", "RGB4", "RGB, 8 bpp", "RGB 565, 16 bpp", "RGB 555, 16 bpp",
    "RGB, 24 bpp", "RGB, 32 bpp", "ARGB1555", "ARGB4444", "ARGB, 32 bpp", "A2R10G10B10",
    "A2B10G10R10", "AYUV 4:4:4 Packed, 8 bpp", "AI44 4:4:4 Packed, Palettized",
    "IA44 4:4:4 Packed, Palettized", "RGB32_D3D_DX7_RT", "RGB16_D3D_DX7_RT", "ARGB32_D3D_DX7_RT",
    "ARGB4444_D3D_DX7_RT", "ARGB1555_D3D_DX7_RT", "RGB32_D3D_DX9_RT", "RGB16_D3D_DX9_RT",
    "ARGB32_D3D_DX9_RT", "ARGB4444_D3D_DX9_RT", "ARGB1555_D3D_DX9_RT", "YV12 4:2:0 Planar, 8 bpp",
    "NV12 4:2:0 Planar, 8 bpp", "NV11 4:1:1 Planar, 8 bpp", "P208", "P210 4:2:2 Planar, 10 bpp",
    "P216 4:2:2 Planar, 16 bpp", "P010 4:2:0 Planar, 10 bpp", "P016 4:2:0 Planar, 10 bpp",
    "Y210 4:2:2 Packed, 10 bpp", "Y216 4:2:2 Packed, 16 bpp", "P408", "NV24", "IMC1", "IMC2",
    "IMC3", "IMC4", "S340", "S342", "Overlay", "MPEG1Packet", "MPEG1Payload", "MPEG1AudioPayload",
    "MPEG1SystemStream", "MPEG1System", "MPEG1VideoCD", "MPEG1Video", "MPEG1Audio", "Avi", "Asf",
    "QTMovie", "QTRpza", "QTSmc", "QTRle", "QTJpeg", "PCMAudio_Obsolete", "PCM", "WAVE", "AU",
    "AIFF", "SDL-DVCR 'dvsd'", "HD-DVCR 'dvhd'", "SD-DVCR 'dvsl'", "DVCPRO 25 'dv25'",
    "DVCPRO 50 'dv50'", "DVCPRO 100 'dvh1'", "Line21_BytePair", "Line21_GOPPacket",
    "Line21_VBIRawData", "708_608Data", "DtvCcData", "CC_CONTAINER", "TELETEXT", "VBI", "WSS",
    "XDS", "VPS", "DRM_Audio", "IEEE_FLOAT", "DOLBY_AC3_SPDIF", "RAW_SPORT", "SPDIF_TAG_241h",
    "None", "VideoInfo", "VideoInfo2", "WaveFormatEx", "MPEGVideo", "MPEGStreams", "DvInfo",
    "525WSS", "AnalogVideo", "AnalogVideo", "AnalogVideo_NTSC_M", "AnalogVideo_PAL_B",
    "AnalogVideo_PAL_D", "AnalogVideo_PAL_G", "AnalogVideo_PAL_H", "AnalogVideo_PAL_I",
    "AnalogVideo_PAL_M", "AnalogVideo_PAL_N", "AnalogVideo_PAL_N_COMBO", "AnalogVideo_SECAM_B",
    "AnalogVideo_SECAM_D", "AnalogVideo_SECAM_G", "AnalogVideo_SECAM_H", "AnalogVideo_SECAM_K",
    "AnalogVideo_SECAM_K1", "AnalogVideo_SECAM_L", "AnalogAudio", "CAPTIONED_H264VIDEO",
    "CC_CONTAINER", "ATSC", "DVB", "DIRECTV", "ECHOSTAR", "CAPTIONED_MPEG2VIDEO",
    "Y41T 4:1:1 Packed, 8 bpp", "Y42T", "NV11 4:1:1 Planar, 8 bpp", "v216 4:2:2 Packed, 16 bpp",
    "V410 4:4:4 Packed, 10 bpp", "v210 4:2:2 Packed, 10 bpp", "I420 4:2:0 Planar, 8 bpp",
    "VC-1 (SMPTE 421M)", "VC-1 (SMPTE 421M)", "Windows Media Video 9 Advanced Profile codec 'WMVA'",
    "Windows Media Video 9 Advanced Profile codec 'wmva'", "WMVB", "wmvb", "WMVR", "wmvr", "WMVP",
    "wmvp", "WVP2", "wvp2", "Windows Media Video 9 codec 'WMV3'",
    "Windows Media Video 9 codec 'wmv3'", "Windows Media Video 8 codec 'WMV2'",
    "Windows Media Video 8 codec 'wmv2'", "Windows Media Video codec version 7 'WMV1'",
    "Windows Media Video codec version 7 'wmv1'", "MPG4", "mpg4", "MP42", "mp42",
    "Microsoft MPEG-4 codec version 3 'MP43'", "Microsoft MPEG-4 codec version 3 'mp43'",
    "ISO MPEG-4 codec version 1 'MP4S'", "ISO MPEG-4 codec version 1 'mp4s'",
    "MPEG-4 Part 2 'M4S2'", "MPEG-4 Part 2 'm4s2'", "Windows Media Screen codec version 1 'MSS1'",
    "Windows Media Video 9 Screen codec 'MSS2'", "MSAUDIO1", "WMAUDIO2", "WMAUDIO_LOSSLESS",
    "WMASPDIF", "WMAUDIO4", "MPEG_ADTS_AAC", "MPEG_RAW_AAC", "MPEG_LOAS", "NOKIA_MPEG_ADTS_AAC",
    "NOKIA_MPEG_RAW_AAC", "VODAFONE_MPEG_ADTS_AAC", "VODAFONE_MPEG_RAW_AAC", "MPEG_HEAAC",
    "Advanced Audio Coding (AAC)", "DVM", "DTS2", "DOLBY_DDPLUS", "DOLBY_TRUEHD", "DTS_HD", "H.264",
    "AVC1", "X264", "x264",
    // Rows 391 to 453.
    "Base", "Video", "RGB1", "RGB4", "RGB, 8 bpp", "RGB 565, 16 bpp", "RGB 555, 16 bpp",
    "RGB, 24 bpp", "RGB, 32 bpp", "I420 4:2:0 Planar, 8 bpp", "IYUV 4:2:0 Planar, 8 bpp",
    "YV12 4:2:0 Planar, 8 bpp", "YUY2 4:2:2 Packed, 8 bpp", "P422", "UYVY 4:2:2 Packed, 8 bpp",
    "YVYU", "YVU9", "VIDEOIMAGE", "Microsoft MPEG-4 codec version 3 'MP43'",
    "ISO MPEG-4 codec version 1 'MP4S'", "MPEG-4 Part 2 'M4S2'",
    "Windows Media Video codec version 7 'WMV1'", "Windows Media Video 8 codec 'WMV2'",
    "Windows Media Screen codec version 1 'MSS1'", "MPEG2_VIDEO", "Audio", "PCM", "DRM",
    "WMAudio_Lossless", "Windows Media Video 9 Screen codec 'MSS2'", "WMSP1", "WMSP2",
    "Windows Media Video 9 codec 'WMV3'", "WMVP", "WVP2",
    "Windows Media Video 9 Advanced Profile codec 'WMVA'", "VC-1 (SMPTE 421M)", "WMAudioV8",
    "WMAudioV7", "WMAudioV2", "ACELPnet", "MP3", "WebStream", "Script", "Image", "FileTransfer",
    "Text", "WMFORMAT_VideoInfo", "WMFORMAT_MPEG2Video", "WMFORMAT_WaveFormatEx", "WMFORMAT_Script",
    "WMFORMAT_WebStream", "WMSCRIPTTYPE_TwoStrings", "OutputCleanPoint", "Timecode",
    "ChromaLocation", "ColorSpaceInfo", "UserDataInfo", "FileName", "ContentType",
    "PixelAspectRatio", "SampleDuration", "SampleProtectionSalt",
    // Rows 454 to 475.
    "IEC 60958 PCM", "Dolby AC-3", "MPEG-1 (Layer I or II)", "MP3 (Layer III)",
    "MPEG-2 (Multichannel)", "Advanced Audio Coding (MPEG-2/4 AAC in ADTS)",
    "Digital Theater Sound (DTS)", "Dolby Digital Plus", "DTS-HD",
    "Meridian Lossless Packing (Dolby Digital True HD)", "Windows Media Audio (WMA) Pro",
    "Adaptive Transform Acoustic Coding (ATRAC)", "One-Bit Audio", "Direct Stream Transport (DST)",
    "Analog", "PCM", "IEEE Float", "DRM", "A-Law", "mu-Law", "ADPCM", "MPEG",
    // Row 476.
    "",
  };
  static_assert(std::size(kNames) == 476, "the table has 476 rows");
  ASSERT_EQ(MediaTypeNameTable().size(), std::size(kNames));
  for (std::size_t i = 0; i < std::size(kNames); ++i) {
    EXPECT_EQ(RowName(i + 1), kNames[i]) << "row " << i + 1;
  }
}

TEST(MediaTypeNameTable, AudioSubtypeSectionRowByRow) {
  static const GivenRow kRows[] = {
      {58, "00000000-0000-0010-8000-00AA00389B71", "Base"},
      {59, "00000001-0000-0010-8000-00AA00389B71", "Uncompressed PCM audio"},
      {60, "00000003-0000-0010-8000-00AA00389B71", "Uncompressed IEEE floating-point audio"},
      {61, "00000008-0000-0010-8000-00AA00389B71", "Digital Theater Systems (DTS)"},
      {62, "00000092-0000-0010-8000-00AA00389B71",
       "Dolby AC-3 audio over Sony/Philips Digital Interface (S/PDIF)"},
      {63, "00000009-0000-0010-8000-00AA00389B71", "DRM"},
      {64, "00000161-0000-0010-8000-00AA00389B71", "Windows Media Audio 8"},
      {65, "00000162-0000-0010-8000-00AA00389B71", "Windows Media Audio 9 Professional codec"},
      {66, "00000163-0000-0010-8000-00AA00389B71", "Windows Media Audio Lossless"},
      {67, "00000164-0000-0010-8000-00AA00389B71",
       "Windows Media Audio 9 Professional codec over S/PDIF"},
      {68, "0000000A-0000-0010-8000-00AA00389B71", "Windows Media Audio 9 Voice codec"},
      {69, "00000055-0000-0010-8000-00AA00389B71", "MPEG Audio Layer-3 (MP3)"},
      {70, "00000050-0000-0010-8000-00AA00389B71", "MPEG-1 audio payload"},
      {71, "00001610-0000-0010-8000-00AA00389B71", "Advanced Audio Coding (AAC)"},
      {72, "00001600-0000-0010-8000-00AA00389B71", "ADTS"},
      {73, "00007361-0000-0010-8000-00AA00389B71", "AMR Narrowband"},
      {74, "00007362-0000-0010-8000-00AA00389B71", "AMR Wideband"},
      {75, "00007363-0000-0010-8000-00AA00389B71", "AMR Wideband Plus"},
      {76, "E06D802C-DB46-11CF-B4D1-00805F6CBBEA", "Dolby Digital (AC-3)"},
      {77, "A7FB87AF-2D02-42FB-A4D4-05CD93843BDD", "Dolby Digital Plus"},
  };
  ExpectRows(std::begin(kRows), std::end(kRows));
}

TEST(MediaTypeNameTable, AudioDataFormatSectionRowByRow) {
  static const GivenRow kRows[] = {
      {454, "00000000-0000-0010-8000-00AA00389B71", "IEC 60958 PCM"},
      {455, "00000092-0000-0010-8000-00AA00389B71", "Dolby AC-3"},
      {456, "00000003-0CEA-0010-8000-00AA00389B71", "MPEG-1 (Layer I or II)"},
      {457, "00000005-0CEA-0010-8000-00AA00389B71", "MP3 (Layer III)"},
      {458, "00000004-0CEA-0010-8000-00AA00389B71", "MPEG-2 (Multichannel)"},
      {459, "00000006-0CEA-0010-8000-00AA00389B71",
       "Advanced Audio Coding (MPEG-2/4 AAC in ADTS)"},
      {460, "00000008-0000-0010-8000-00AA00389B71", "Digital Theater Sound (DTS)"},
      {461, "0000000A-0CEA-0010-8000-00AA00389B71", "Dolby Digital Plus"},
      {462, "0000000B-0CEA-0010-8000-00AA00389B71", "DTS-HD"},
      {463, "0000000C-0CEA-0010-8000-00AA00389B71",
       "Meridian Lossless Packing (Dolby Digital True HD)"},
      {464, "00000164-0000-0010-8000-00AA00389B71", "Windows Media Audio (WMA) Pro"},
      {465, "00000008-0CEA-0010-8000-00AA00389B71", "Adaptive Transform Acoustic Coding (ATRAC)"},
      {466, "00000009-0CEA-0010-8000-00AA00389B71", "One-Bit Audio"},
      {467, "0000000D-0CEA-0010-8000-00AA00389B71", "Direct Stream Transport (DST)"},
      {468, "6DBA3190-67BD-11CF-A0F7-0020AFD156E4", "Analog"},
      {469, "00000001-0000-0010-8000-00AA00389B71", "PCM"},
      {470, "00000003-0000-0010-8000-00AA00389B71", "IEEE Float"},
      {471, "00000009-0000-0010-8000-00AA00389B71", "DRM"},
      {472, "00000006-0000-0010-8000-00AA00389B71", "A-Law"},
      {473, "00000007-0000-0010-8000-00AA00389B71", "mu-Law"},
      {474, "00000002-0000-0010-8000-00AA00389B71", "ADPCM"},
      {475, "00000050-0000-0010-8000-00AA00389B71", "MPEG"},
      {476, "00000000-0000-0000-0000-000000000000", ""},
  };
  ExpectRows(std::begin(kRows), std::end(kRows));
}

TEST(MediaTypeNameTable, SectionsStartOnTheirBases) {
  static const GivenRow kRows[] = {
      {1, "00000000-0000-0010-8000-00AA00389B71", "Base"},
      {2, "00000016-0000-0010-8000-00AA00389B71", "RGB, 32 bpp"},
      {78, "00000000-767A-494D-B478-F29D25DC9037", "Base"},
      {80, "F7E34C9A-42E8-4714-B74B-CB29D72C35E5", "SUBTYPE"},
      {391, "00000000-0000-0010-8000-00AA00389B71", "Base"},
  };
  ExpectRows(std::begin(kRows), std::end(kRows));
  EXPECT_EQ(Row(1).guid, kMediaSubtypeBase);
  EXPECT_EQ(Row(78).guid, kMediaTypeAttributeBase);
}

TEST(MediaTypeNameTable, LaterSectionsRenameAudioSubtypes) {
  static const GivenRow kRows[] = {
      {165, "00000000-0000-0000-0000-000000000000", "NULL"},
      {166, "00000000-0000-0000-0000-000000000000", "NULL"},
      {271, "00000001-0000-0010-8000-00AA00389B71", "PCM"},
      {293, "00000003-0000-0010-8000-00AA00389B71", "IEEE_FLOAT"},
      {369, "00000161-0000-0010-8000-00AA00389B71", "WMAUDIO2"},
      {370, "00000163-0000-0010-8000-00AA00389B71", "WMAUDIO_LOSSLESS"},
      {373, "00001600-0000-0010-8000-00AA00389B71", "MPEG_ADTS_AAC"},
      {380, "00001610-0000-0010-8000-00AA00389B71", "MPEG_HEAAC"},
      {384, "A7FB87AF-2D02-42FB-A4D4-05CD93843BDD", "DOLBY_DDPLUS"},
      {419, "00000163-0000-0010-8000-00AA00389B71", "WMAudio_Lossless"},
      {421, "0000000A-0000-0010-8000-00AA00389B71", "WMSP1"},
      {430, "00000161-0000-0010-8000-00AA00389B71", "WMAudioV2"},
      {432, "00000055-0000-0010-8000-00AA00389B71", "MP3"},
  };
  ExpectRows(std::begin(kRows), std::end(kRows));
}

TEST(MediaTypeNameTable, RepeatedNameStandsForTwoKeys) {
  EXPECT_EQ(RowName(138), "DV_VAUX_CTRL_PACK");
  EXPECT_EQ(RowName(148), "DV_VAUX_CTRL_PACK");
  EXPECT_NE(Row(138).guid, Row(148).guid);
}

}  // namespace
}  // namespace windowsmediafoundation
