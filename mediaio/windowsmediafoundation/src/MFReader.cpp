#include "MFReader.h"

#include <mfapi.h>

#include "ChannelMask.h"
#include "MFByteStream.h"
#include "MFErrorMessage.h"
#include "MFFormatDescription.h"
#include "SourceReaderFactory.h"
#include "orxcore/Localizer.h"
#include "orxcore/WideChar.h"

namespace windowsmediafoundation {
namespace {

using Microsoft::WRL::ComPtr;

constexpr char kOpenErrorKey[] =
    "$$$/windowsmediafoundation/ErrorOpenFile=Media Foundation reported an error when opening the file.\n";

HRESULT CreateReaderAttributes(ComPtr<IMFAttributes>& attributes) {
  HRESULT hr = MFCreateAttributes(&attributes, 1);
  if (FAILED(hr)) return hr;
  hr = attributes->SetUINT32(MF_SOURCE_READER_ENABLE_VIDEO_PROCESSING, 1);
  if (FAILED(hr)) return hr;
  return attributes->SetUINT32(MF_READWRITE_ENABLE_HARDWARE_TRANSFORMS, 1);
}

void ReportOpenFailure(OpenStatus& status, HRESULT hr) {
  status.hr = hr;
  status.message = orxcore::Localizer::Get().Localize(kOpenErrorKey) + MFErrorMessage(hr);
}

}  // namespace

MFReader::MFReader() = default;

MFReader::~MFReader() { ReleaseAll(); }

void MFReader::ReleaseAll() {
  // Types and the transform first, then the reader, whose source holds the
  // byte stream, then this reader's own share of the byte stream.
  resizer_.Reset();
  clientVideoType_.Reset();
  videoType_.Reset();
  clientAudioType_.Reset();
  sourceAudioType_.Reset();
  ReleaseReader();
  byteStream_.Reset();
  hasAudio_ = false;
  hasVideo_ = false;
  channels_ = 0;
  channelMask_ = 0;
  samplesPerSecond_ = 0;
  bitsPerSample_ = 0;
  avgBytesPerSecond_ = 0;
  endOfStream_ = false;
  samplesDelivered_ = 0;
  pendingAudio_.Clear();
  frameSize_ = 0;
  frameRate_ = 0;
  frameDuration_ = 0;
  canSeek_ = false;
  clientVideoSubtype_ = GUID_NULL;
  pixelAspectRatio_ = 0;
  convertsVideo_ = false;
  nextVideoFrame_ = 0;
}

bool MFReader::OpenFromPath(const orxcore::WString& path, OpenStatus& status, bool wantVideo, bool wantAudio) {
  ReleaseAll();
  status = OpenStatus();
  ComPtr<IMFAttributes> attributes;
  HRESULT hr = CreateReaderAttributes(attributes);
  if (SUCCEEDED(hr)) {
    hr = CurrentSourceReaderFactory().fromURL(orxcore::AsWide(path), attributes.Get(), &reader_);
  }
  return FinishOpen(hr, status, wantVideo, wantAudio);
}

bool MFReader::OpenFromStream(const std::shared_ptr<StreamInterface>& stream, OpenStatus& status,
                              bool wantVideo, bool wantAudio) {
  ReleaseAll();
  status = OpenStatus();
  ComPtr<IMFAttributes> attributes;
  HRESULT hr = CreateReaderAttributes(attributes);
  if (SUCCEEDED(hr)) hr = MFByteStream::CreateInstance(stream, &byteStream_);
  if (SUCCEEDED(hr)) {
    hr = CurrentSourceReaderFactory().fromByteStream(byteStream_.Get(), attributes.Get(), &reader_);
  }
  return FinishOpen(hr, status, wantVideo, wantAudio);
}

void MFReader::ReleaseReader() {
  if (hasAudio_ || hasVideo_) {
    restartGuard_.SettleBeforeRelease(
        reader_.Get(), hasAudio_ ? MF_SOURCE_READER_FIRST_AUDIO_STREAM : MF_SOURCE_READER_FIRST_VIDEO_STREAM);
  }
  restartGuard_ = SourceRestartGuard();
  reader_.Reset();
}

bool MFReader::FinishOpen(HRESULT created, OpenStatus& status, bool wantVideo, bool wantAudio) {
  if (FAILED(created)) {
    reader_.Reset();
    status.statusClass = kOpenStatusReaderFailed;
    ReportOpenFailure(status, created);
    return false;
  }
  return SetUpStreams(status, wantVideo, wantAudio);
}

bool MFReader::SetUpStreams(OpenStatus& status, bool wantVideo, bool wantAudio) {
  if (!reader_) {
    status.statusClass = kOpenStatusNoReader;
    ReportOpenFailure(status, E_POINTER);
    return false;
  }
  if (wantAudio) {
    hasAudio_ = reader_->GetCurrentMediaType(MF_SOURCE_READER_FIRST_AUDIO_STREAM, &sourceAudioType_) == S_OK;
  }
  if (wantVideo) {
    hasVideo_ = reader_->GetCurrentMediaType(MF_SOURCE_READER_FIRST_VIDEO_STREAM, &videoType_) == S_OK;
  }
  // Every stream off; each set-up selects its own. A reader that cannot
  // deselect still delivers the selected stream, so the answer is not used.
  reader_->SetStreamSelection(MF_SOURCE_READER_ALL_STREAMS, FALSE);
  HRESULT result = S_OK;
  if (hasAudio_) result = SetupAudio();
  if (hasVideo_) hasVideo_ = ReadVideoGeometry();
  // The video set-up's result replaces the audio's: a file whose audio
  // failed still opens for its video.
  if (hasVideo_) result = SetupVideo();
  if (SUCCEEDED(result) && hasAudio_) PrimeAudio();
  // A failed set-up stays the result; otherwise the rewind decides.
  const bool rewinds = hasAudio_ || hasVideo_ || SourceRestartGuard::RewindsWithoutStreams();
  if (SUCCEEDED(result) && rewinds) result = Seek(0);
  if (SUCCEEDED(result)) nextVideoFrame_ = 0;
  if (FAILED(result)) {
    status.statusClass = kOpenStatusReaderFailed;
    ReportOpenFailure(status, result);
  }
  return hasAudio_ || hasVideo_;
}

void MFReader::PrimeAudio() {
  DWORD flags = 0;
  ComPtr<IMFSample> sample;
  const HRESULT hr =
      reader_->ReadSample(MF_SOURCE_READER_FIRST_AUDIO_STREAM, 0, nullptr, &flags, nullptr, &sample);
  if (FAILED(hr)) {
    hasAudio_ = false;
    return;
  }
  if (flags & MF_SOURCE_READERF_CURRENTMEDIATYPECHANGED) {
    // The decoder settled on another format once it saw the data. A failed
    // second set-up clears hasAudio; the rewind decides the open's result.
    sourceAudioType_.Reset();
    reader_->GetCurrentMediaType(MF_SOURCE_READER_FIRST_AUDIO_STREAM, &sourceAudioType_);
    SetupAudio();
  }
}

GUID MFReader::GetSubAudioFormatType() const { return AudioSubtype(sourceAudioType_.Get()); }

orxcore::WString MFReader::GetAudioFormatDescription() const {
  return DescribeAudioFormat(sourceAudioType_.Get());
}

orxmediatypes::AudioChannelLayout MFReader::channelLayout() const {
  return ChannelLayoutFromMask(channelMask_, static_cast<std::int32_t>(channels_));
}

}  // namespace windowsmediafoundation
