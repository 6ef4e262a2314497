// Placeholder until the media-type name table lands.
#include "MFFormatDescription.h"

namespace windowsmediafoundation {

orxcore::WString DescribeAudioFormat(IMFMediaType*) { return {}; }

GUID AudioSubtype(IMFMediaType*) { return GUID_NULL; }

orxcore::WString DescribeVideoFormat(IMFMediaType*, std::uint32_t, std::uint32_t, std::uint32_t,
                                     std::uint32_t) {
  return {};
}

}  // namespace windowsmediafoundation
