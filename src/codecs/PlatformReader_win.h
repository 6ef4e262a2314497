// The decoder's reader on Windows: Media Foundation's source reader.
#pragma once

#include <memory>

#include "DolbyWarning.h"
#include "GuidConversion.h"
#include "MFReader.h"

namespace Aurivox {

using PlatformReader = windowsmediafoundation::MFReader;
using PlatformOpenStatus = windowsmediafoundation::OpenStatus;

inline bool OpenReaderFromPath(PlatformReader& reader, const orxcore::WString& path, PlatformOpenStatus& status) {
  return reader.OpenFromPath(path, status, /*wantVideo=*/false, /*wantAudio=*/true);
}

inline bool OpenReaderFromStream(PlatformReader& reader,
                                 const std::shared_ptr<windowsmediafoundation::StreamInterface>& stream,
                                 PlatformOpenStatus& status) {
  return reader.OpenFromStream(stream, status, /*wantVideo=*/false, /*wantAudio=*/true);
}

inline orxcore::Guid ReaderAudioSubtype(const PlatformReader& reader) {
  return windowsmediafoundation::ToOrxGuid(reader.GetSubAudioFormatType());
}

// Media Foundation refuses the stream or misses an attribute when its Dolby
// decoder is not installed.
inline bool OpenFailurePointsAtDolby(const PlatformOpenStatus& status) { return IsDolbySuspectResult(status.hr); }

}  // namespace Aurivox
