// The decoder's platform half: opens files through the platform's reader
// (split camera recordings through a stream over their segments), caches
// what the reader found, and moves samples into the host's buffers.
#include <vector>

#include "AVCHDUtils.h"
#include "CodecIdentifier.h"
#include "DecoderPlatform.h"
#include "DolbyWarning.h"
#include "SpannedFileStreamWrapper.h"
#include "ZUM/PathUtils.h"
#include "aurivox/Decoder.h"
#include "orxaccelerate/Utility.h"

namespace Aurivox {
namespace {

int ResultForStatusClass(std::int32_t statusClass) {
  switch (statusClass) {
    case 0: return kResultSuccess;  // no audio at all: the file opens, with nothing to read
    case 1: return kResultOpenFailed;
    case 2: return kResultNullRecord;
    default: return kResultBadArgument;
  }
}

// Opens a split recording's joined segments through the reader.
bool OpenSpannedRecording(DecoderPlatform& platform, const orxcore::WString& path, PlatformOpenStatus& status) {
  std::vector<orxcore::WString> segments;
  AVCHDUtils::FindSpannedSegments(path, segments);
  auto wrapper = std::make_shared<SpannedFileStreamWrapper>(segments);
  platform.stream = wrapper;
  // A segment that cannot be opened leaves an invalid handle; the reader
  // then finds nothing to read and reports the failure.
  wrapper->Open();
  return OpenReaderFromStream(platform.reader, platform.stream, status);
}

// Opens `path` and sets `result`; true when usable audio was set up. Files
// whose failure points at a missing Dolby decoder are passed to the warning.
bool OpenReader(DecoderPlatform& platform, const orxcore::WString& path, int& result,
                const QzSDKErrorSuite3* errorSuite, std::uint32_t warningFlags) {
  PlatformReader& reader = platform.reader;
  PlatformOpenStatus status;
  const bool opened = AVCHDUtils::IsSpannedClipFile(path) ? OpenSpannedRecording(platform, path, status)
                                                          : OpenReaderFromPath(reader, path, status);
  DolbySuspect suspect = DolbySuspect::kNone;
  bool usable = false;
  if (!opened) {
    result = ResultForStatusClass(status.statusClass);
    if (OpenFailurePointsAtDolby(status)) suspect = DolbySuspect::kMaybe;
  } else if (reader.hasAudio()) {
    result = kResultSuccess;
    usable = true;
  } else {
    result = kResultNoAudio;
    if (IsDolbySubtype(ReaderAudioSubtype(reader))) suspect = DolbySuspect::kCertain;
  }
  WarnAboutMissingDolby(path, suspect, errorSuite, warningFlags);
  return usable;
}

}  // namespace

void Decoder::OS_Init() {
  if (CurrentPlatform()) return;
  platform = std::make_shared<PlatformSlot>();
  platform->object = std::make_unique<DecoderPlatform>();
}

void Decoder::OS_Close() {
  if (!platform) return;
  if (platform->object) {
    platform->object->stream.reset();
    platform->object.reset();  // also for every copy that shares the slot
  }
  platform.reset();
}

int Decoder::OS_Open(const orxcore::WString& path) {
  int result = kResultBadArgument;
  DecoderPlatform* current = CurrentPlatform();
  if (!current) return result;
  const orxcore::WString stripped = ZUM::PathUtils::Win::StripUNC(path);
  if (!OpenReader(*current, stripped, result, errorSuite, dolbyWarningFlags)) return result;

  PlatformReader& reader = current->reader;
  const orxcore::Guid subtype = ReaderAudioSubtype(reader);
  audioFormat.SetSampleRate(reader.samplesPerSecond());
  audioFormat.SetSampleType(SampleTypeForSubtype(subtype, reader.bitsPerSample()));
  audioFormat.SetChannelLayout(reader.channelLayout());
  duration = reader.GetEstimatedAudioSampleCount();
  durationExact = false;
  codecID = CodecIdentifierForSubtype(subtype);
  codecDescription = reader.GetAudioFormatDescription();
  return result;
}

int Decoder::OS_ReadAudio(imImportAudioRec7* rec) {
  DecoderPlatform* current = CurrentPlatform();
  if (!current || !rec) return kResultBadArgument;
  PlatformReader& reader = current->reader;
  const std::uint32_t wanted = rec->size;
  float** buffers = rec->buffer;
  std::int32_t delivered = static_cast<std::int32_t>(wanted);
  if (!reader.ReadAudioSamples(rec->position, delivered, buffers, reader.bitsPerSample() / 8)) {
    return kResultReadFailed;
  }
  if (delivered < 0 || static_cast<std::uint32_t>(delivered) >= wanted) return kResultSuccess;

  // The end of the stream: pad the rest with zeros, counted in floats
  // whatever the sample width, as the host expects.
  const std::size_t channelCount = reader.channelLayout().size();
  for (std::size_t i = 0; buffers && i < channelCount; ++i) {
    if (buffers[i]) orxaccelerate::utility::Zero(wanted - delivered, buffers[i] + delivered);
  }
  return kResultSuccess;
}

}  // namespace Aurivox
