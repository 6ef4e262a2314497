// The exported decoder: one object stands for one media file that the host
// opens, asks about and pulls audio from, one buffer a channel.
#pragma once

#include <cstdint>
#include <memory>

#include "aurivox/Export.h"
#include "aurivox/HostRecords.h"
#include "orxcore/String.h"
#include "orxmediatypes/AudioFormat.h"

namespace Aurivox {

// Result codes of the host SDK.
constexpr int kResultSuccess = 0;
constexpr int kResultOpenFailed = 2;       // the reader could not be created or set up
constexpr int kResultNoChannelLayout = 3;  // the decoder has no channel layout
constexpr int kResultNullRecord = 5;       // a null record, or an open failure of class 2
constexpr int kResultNoAudio = 9;          // opened, but no usable audio stream
constexpr int kResultReadFailed = 33;      // reading samples failed
constexpr int kResultBadArgument = 99;     // bad argument, no platform object, other failures

class DecoderPlatform;

class AURIVOX_API Decoder {
 public:
  Decoder();
  // A copy shares the platform object: closing either one closes it for both.
  Decoder(const Decoder& other);
  Decoder& operator=(const Decoder& other);
  ~Decoder();

  // Opens `path` (once: while open, further calls return 0 and ignore the
  // path) and, when `info` is given, reports the file's audio in it.
  int Open(const orxcore::WString& path, imFileInfoRec8* info);
  int Open(const imFileOpenRec8* rec);

  // Delivers the next `rec->size` frames, one buffer a channel. Reads are
  // sequential: the record's position is not used. A short read at the end
  // is padded with zeros and succeeds.
  int ReadAudio(imImportAudioRec7* rec);

  void GetAudioFormat(orxmediatypes::AudioFormat& out) const;
  orxcore::WString GetCodecDescription() const;
  std::uint32_t GetCodecID() const;
  std::int64_t GetDuration() const;  // sample frames

  // Writes the codec description into the host's text buffer.
  int OnAnalysis(imAnalysisRec* rec) const;
  int OnGetAudioChannelLayout(imGetAudioChannelLayoutRec* rec) const;

  // Closes the file and frees the platform object; the next Open or
  // ReadAudio makes a new one.
  int Quiet();

  // Sets how a missing Dolby decoder is reported; takes effect at the next open.
  void EnableDolbyWarning(const QzSDKErrorSuite3* suite, std::uint32_t flags);

 private:
  // The platform object lives in a slot that copies share, so that closing
  // it through one copy leaves the others with an empty slot, not a
  // dangling pointer.
  struct PlatformSlot {
    std::unique_ptr<DecoderPlatform> object;
  };

  DecoderPlatform* CurrentPlatform() const;
  void OS_Init();
  void OS_Close();
  int OS_Open(const orxcore::WString& path);
  int OS_ReadAudio(imImportAudioRec7* rec);

  std::shared_ptr<PlatformSlot> platform;
  orxcore::WString filePath;
  bool isOpen = false;
  orxmediatypes::AudioFormat audioFormat;
  std::int64_t duration = 0;
  bool durationExact = false;
  std::uint32_t codecID = 0;
  orxcore::WString codecDescription;
  const QzSDKErrorSuite3* errorSuite = nullptr;
  std::uint32_t dolbyWarningFlags = 0;
};

}  // namespace Aurivox
