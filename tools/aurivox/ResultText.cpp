#include "ResultText.h"

#include "aurivox/Decoder.h"

namespace aurivox_tool {

const char* DescribeResult(int result) {
  switch (result) {
    case Aurivox::kResultSuccess: return "success";
    case Aurivox::kResultOpenFailed:
      return "the media reader could not open the file or set up its audio";
    case Aurivox::kResultNoChannelLayout: return "the file has no channel layout";
    case Aurivox::kResultNullRecord: return "the media reader could not open the file";
    case Aurivox::kResultNoAudio: return "the file has no usable audio stream";
    case Aurivox::kResultReadFailed: return "reading the audio failed";
    case Aurivox::kResultBadArgument: return "the file could not be opened (bad path or unsupported file)";
    default: return "unknown result";
  }
}

}  // namespace aurivox_tool
