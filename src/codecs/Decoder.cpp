// The decoder's host-facing half: argument checks, cached state and the
// conversion to and from the host's records. Platform work is in
// DecoderPlatform_win.cpp.
#include "aurivox/Decoder.h"

#include <algorithm>
#include <cstring>

#include "CodecIdentifier.h"
#include "Pellmark/ChannelLayout.h"

namespace Aurivox {

Decoder::Decoder() { OS_Init(); }

Decoder::Decoder(const Decoder& other) = default;

Decoder& Decoder::operator=(const Decoder& other) = default;

Decoder::~Decoder() {
  isOpen = false;
  OS_Close();
}

int Decoder::Open(const orxcore::WString& path, imFileInfoRec8* info) {
  if (!CurrentPlatform()) OS_Init();
  if (!isOpen) {
    if (path.empty()) return kResultBadArgument;
    if (&path != &filePath) filePath = path;
    const int result = OS_Open(path);
    if (result != kResultSuccess) return result;
    isOpen = true;
  }
  if (!info) return kResultSuccess;

  info->hasAudio = 1;
  info->numChannels = audioFormat.GetChannelCount();
  info->sampleRate = static_cast<float>(audioFormat.GetSampleRate());
  std::int32_t sampleTypeCode = 0;
  if (HostSampleTypeCode(audioFormat.GetSampleType(), sampleTypeCode)) info->sampleType = sampleTypeCode;
  info->audioDuration = duration;
  if (!durationExact) info->audioFlags |= 1;
  return kResultSuccess;
}

int Decoder::Open(const imFileOpenRec8* rec) {
  if (!rec || !rec->filePath) return kResultBadArgument;
  return Open(orxcore::WString(rec->filePath), nullptr);
}

int Decoder::ReadAudio(imImportAudioRec7* rec) {
  if (!rec) return kResultBadArgument;
  // Reopening on demand; when it fails the read below reports the outcome.
  if (!isOpen) Open(filePath, nullptr);
  return OS_ReadAudio(rec);
}

void Decoder::GetAudioFormat(orxmediatypes::AudioFormat& out) const {
  auto format = orxmediatypes::AudioFormat::CreateAudioFormat(audioFormat.GetChannelLayout(),
                                                              audioFormat.GetSampleRate());
  format.SetSampleType(audioFormat.GetSampleType());
  out = std::move(format);
}

orxcore::WString Decoder::GetCodecDescription() const { return codecDescription; }

std::uint32_t Decoder::GetCodecID() const { return codecID; }

std::int64_t Decoder::GetDuration() const { return duration; }

int Decoder::OnAnalysis(imAnalysisRec* rec) const {
  if (!rec) return kResultNullRecord;
  const std::string text = orxcore::UTF16toStdString(codecDescription);
  // Taken in 64 bits and tested before it is narrowed: a size of INT32_MIN
  // leaves no room, and must not wrap round to a huge count.
  const std::int64_t room = std::int64_t{rec->bufferSize} - 1;
  const std::int64_t n = std::min<std::int64_t>(static_cast<std::int64_t>(text.size()), room);
  if (n > 0 && rec->buffer) {
    std::memcpy(rec->buffer, text.data(), static_cast<std::size_t>(n));
    rec->buffer[n] = '\0';
  }
  return kResultSuccess;
}

int Decoder::OnGetAudioChannelLayout(imGetAudioChannelLayoutRec* rec) const {
  if (!rec) return kResultNullRecord;
  if (audioFormat.GetChannelLayout().empty()) return kResultNoChannelLayout;
  Pellmark::BEToSDKAudioChannelLayout(audioFormat.GetChannelLayout(), kQzMaxAudioChannelLabels,
                                      rec->channelLabels);
  return kResultSuccess;
}

int Decoder::Quiet() {
  isOpen = false;
  OS_Close();
  return kResultSuccess;
}

void Decoder::EnableDolbyWarning(const QzSDKErrorSuite3* suite, std::uint32_t flags) {
  errorSuite = suite;
  dolbyWarningFlags = flags;
}

DecoderPlatform* Decoder::CurrentPlatform() const { return platform ? platform->object.get() : nullptr; }

}  // namespace Aurivox
