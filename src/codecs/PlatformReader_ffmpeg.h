// The decoder's reader on Linux: FFmpeg's demuxers and decoders.
#pragma once

#include <memory>

#include "FFReader.h"

namespace Aurivox {

using PlatformReader = ffmpeg::FFReader;
using PlatformOpenStatus = ffmpeg::OpenStatus;

inline bool OpenReaderFromPath(PlatformReader& reader, const orxcore::WString& path, PlatformOpenStatus& status) {
  return reader.OpenFromPath(path, status);
}

inline bool OpenReaderFromStream(PlatformReader& reader,
                                 const std::shared_ptr<windowsmediafoundation::StreamInterface>& stream,
                                 PlatformOpenStatus& status) {
  return reader.OpenFromStream(stream, status);
}

inline orxcore::Guid ReaderAudioSubtype(const PlatformReader& reader) { return reader.GetSubAudioFormatType(); }

// FFmpeg opens a Dolby stream whether or not it can decode it; a missing
// decoder shows as a Dolby subtype without usable audio instead.
inline bool OpenFailurePointsAtDolby(const PlatformOpenStatus&) { return false; }

}  // namespace Aurivox
