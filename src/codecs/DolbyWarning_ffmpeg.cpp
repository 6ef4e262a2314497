#include "DolbyWarning.h"

extern "C" {
#include <libavcodec/avcodec.h>
}

namespace Aurivox {

// What the Windows media features are to Media Foundation, FFmpeg's AC-3 and
// E-AC-3 decoders are here: a libavcodec built without them cannot decode
// Dolby audio.
bool MediaFeaturesPresent() {
  return avcodec_find_decoder(AV_CODEC_ID_AC3) != nullptr && avcodec_find_decoder(AV_CODEC_ID_EAC3) != nullptr;
}

}  // namespace Aurivox
