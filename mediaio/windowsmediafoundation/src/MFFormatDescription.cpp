#include "MFFormatDescription.h"

#include <mfapi.h>

#include "GuidConversion.h"
#include "MFErrorMessage.h"
#include "MediaTypeNames.h"
#include "orxcore/Trace.h"

namespace windowsmediafoundation {
namespace {

// Reads MF_MT_SUBTYPE of `type` into `subtype`; a failure is traced to `site`.
bool ReadSubtype(IMFMediaType* type, orxcore::TraceSite& site, GUID* subtype) {
  const HRESULT hr = type->GetGUID(MF_MT_SUBTYPE, subtype);
  if (FAILED(hr)) {
    TraceMFError(site, hr);
    return false;
  }
  return true;
}

}  // namespace

orxcore::WString DescribeAudioFormat(IMFMediaType* audioType) {
  static orxcore::TraceSite trace("windowsmediafoundation.MFReader.GetAudioFormatDescription", 5);
  GUID subtype{};
  if (!audioType || !ReadSubtype(audioType, trace, &subtype)) return UnknownAudioFormatText();
  return DescribeAudioSubtype(ToOrxGuid(subtype));
}

GUID AudioSubtype(IMFMediaType* audioType) {
  static orxcore::TraceSite trace("windowsmediafoundation.MFReader.GetSubAudioFormatType", 5);
  GUID subtype{};
  if (audioType) ReadSubtype(audioType, trace, &subtype);
  return subtype;
}

orxcore::WString DescribeVideoFormat(IMFMediaType* videoType, std::uint32_t width,
                                     std::uint32_t height, std::uint32_t rateNumerator,
                                     std::uint32_t rateDenominator) {
  static orxcore::TraceSite trace("windowsmediafoundation.MFReader.GetVideoFormatDescription", 5);
  GUID subtype{};
  if (!videoType || !ReadSubtype(videoType, trace, &subtype)) return UnknownVideoFormatText();
  return DescribeVideoSubtype(ToOrxGuid(subtype), width, height, rateNumerator,
                              rateDenominator);
}

}  // namespace windowsmediafoundation
