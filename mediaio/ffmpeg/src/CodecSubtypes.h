// The Media Foundation subtype that Windows reports for a stream FFmpeg
// knows by its codec, so that codec identifiers and descriptions come from
// the same tables on every platform.
#pragma once

#include "orxcore/Guid.h"

extern "C" {
#include <libavcodec/codec_id.h>
}

namespace ffmpeg {

// The subtype of a stream of `codec`: the Dolby, PCM and float subtypes
// where Windows has them, else the wave-format subtype of the codec's RIFF
// tag; the null GUID for a codec without one.
orxcore::Guid SubtypeForCodec(AVCodecID codec);

// True for codecs whose samples are integer PCM (delivered at their width).
bool IsIntegerPcmCodec(AVCodecID codec);

}  // namespace ffmpeg
