// MFReader: reading decoded audio, seeking and the length estimate.
#include <mfapi.h>
#include <propvarutil.h>

#include "MFErrorMessage.h"
#include "MFReader.h"
#include "TimeArithmetic.h"

namespace windowsmediafoundation {
namespace {

using Microsoft::WRL::ComPtr;

orxcore::TraceSite g_readAudioSamplesError("windowsmediafoundation.MFReader.ReadAudioSamples", 5);
orxcore::TraceSite g_seekPosition("windowsmediafoundation.MFReader.Seek", 7);
orxcore::TraceSite g_seekError("windowsmediafoundation.MFReader.Seek", 5);
orxcore::TraceSite g_estimateError("windowsmediafoundation.MFReader.GetEstimatedAudioSampleCount", 5);
orxcore::TraceSite g_canSeekError("windowsmediafoundation.MFReader.CanSeek", 5);

// Owns a PROPVARIANT for the length of one query.
class ScopedPropVariant {
 public:
  ScopedPropVariant() { PropVariantInit(&value_); }
  ~ScopedPropVariant() { PropVariantClear(&value_); }
  ScopedPropVariant(const ScopedPropVariant&) = delete;
  ScopedPropVariant& operator=(const ScopedPropVariant&) = delete;

  PROPVARIANT* get() { return &value_; }
  const PROPVARIANT& value() const { return value_; }

 private:
  PROPVARIANT value_;
};

}  // namespace

bool MFReader::ReadAudioSamples(std::int64_t /*position*/, std::int32_t& count, float* const* channelBuffers,
                                std::uint32_t bytesPerSample) {
  const std::int32_t wanted = count;
  if (!reader_ || !hasAudio_ || channels_ == 0 || bytesPerSample == 0 || wanted < 0) return false;
  if (wanted > 0 && !channelBuffers) return false;

  HRESULT hr = S_OK;
  if (!pendingAudio_.Reserve(wanted, channels_, bytesPerSample)) hr = E_OUTOFMEMORY;
  AudioRequest request{channelBuffers, channels_, bytesPerSample, static_cast<std::size_t>(wanted)};
  // Frames are handed out as they are decoded, most of them without a copy
  // into pending audio, when they can be put back should the request fail.
  // Otherwise they wait in pending audio until the request is complete.
  const bool early = wanted > 0 && PendingAudio::CanPutBack(request);
  if (SUCCEEDED(hr) && early) pendingAudio_.Deliver(request);
  std::size_t available = pendingAudio_.AvailableFrames(channels_, bytesPerSample);
  while (SUCCEEDED(hr) && request.filled + available < request.wanted) {
    DWORD flags = 0;
    ComPtr<IMFSample> sample;
    // Decoded data is concatenated as it comes: timestamps, durations and
    // discontinuities are not looked at.
    hr = reader_->ReadSample(MF_SOURCE_READER_FIRST_AUDIO_STREAM, 0, nullptr, &flags, nullptr, &sample);
    restartGuard_.NoteRead();
    if (FAILED(hr)) break;
    if (flags & MF_SOURCE_READERF_ENDOFSTREAM) {
      endOfStream_ = true;
      break;
    }
    // The format is not renegotiated mid-stream.
    if (flags & MF_SOURCE_READERF_CURRENTMEDIATYPECHANGED) {
      pendingAudio_.PutBack(request);
      return false;
    }
    if (!sample) continue;  // a stream tick or a gap
    hr = TakeSampleData(sample.Get(), early ? &request : nullptr);
    available = pendingAudio_.AvailableFrames(channels_, bytesPerSample);
  }
  if (FAILED(hr)) {
    pendingAudio_.PutBack(request);
    TraceMFError(g_readAudioSamplesError, hr);
    return false;
  }

  pendingAudio_.Deliver(request);
  samplesDelivered_ += static_cast<std::int64_t>(request.filled);
  count = static_cast<std::int32_t>(request.filled);
  return true;
}

HRESULT MFReader::TakeSampleData(IMFSample* sample, AudioRequest* request) {
  ComPtr<IMFMediaBuffer> buffer;
  HRESULT hr = sample->ConvertToContiguousBuffer(&buffer);
  if (FAILED(hr)) return hr;
  BYTE* data = nullptr;
  DWORD length = 0;
  hr = buffer->Lock(&data, nullptr, &length);
  if (FAILED(hr)) return hr;
  const bool kept = request ? pendingAudio_.Take(data, length, *request) : pendingAudio_.Append(data, length);
  hr = buffer->Unlock();
  if (!kept) return E_OUTOFMEMORY;
  return hr;
}

HRESULT MFReader::Seek(std::int64_t position) {
  if (!reader_) return E_POINTER;
  PROPVARIANT value;
  PropVariantInit(&value);
  value.vt = VT_I8;
  value.hVal.QuadPart = position;
  // GUID_NULL: the position counts 100-ns units.
  const HRESULT hr = reader_->SetCurrentPosition(GUID_NULL, value);
  if (SUCCEEDED(hr)) restartGuard_.NoteSeek();
  if (FAILED(hr)) {
    if (g_seekPosition.Enabled()) g_seekPosition.WriteLine("Seek To: " + std::to_string(position));
    TraceMFError(g_seekError, hr);
  }
  return hr;
}

std::int64_t MFReader::GetEstimatedAudioSampleCount() {
  if (!reader_) return 0;
  ScopedPropVariant duration;
  const HRESULT hr =
      reader_->GetPresentationAttribute(MF_SOURCE_READER_MEDIASOURCE, MF_PD_DURATION, duration.get());
  if (FAILED(hr)) {
    TraceMFError(g_estimateError, hr);
    return 0;
  }
  // An unknown duration counts as one time unit, which is 0 frames at any
  // real rate.
  std::int64_t time = 1;
  if (duration.value().vt == VT_UI8 && duration.value().uhVal.QuadPart != 0) {
    time = static_cast<std::int64_t>(duration.value().uhVal.QuadPart);
  }
  return TimeToFrames(time, samplesPerSecond_, 1);
}

HRESULT MFReader::CanSeek() {
  canSeek_ = false;
  if (!reader_) return E_POINTER;
  ScopedPropVariant characteristics;
  HRESULT hr = reader_->GetPresentationAttribute(MF_SOURCE_READER_MEDIASOURCE,
                                                 MF_SOURCE_READER_MEDIASOURCE_CHARACTERISTICS, characteristics.get());
  if (FAILED(hr)) {
    TraceMFError(g_canSeekError, hr);
    return hr;
  }
  ULONG flags = 0;
  hr = PropVariantToUInt32(characteristics.value(), &flags);
  if (FAILED(hr)) {
    TraceMFError(g_canSeekError, hr);
    return hr;
  }
  // A source that seeks only slowly counts as not seekable.
  canSeek_ = (flags & (MFMEDIASOURCE_CAN_SEEK | MFMEDIASOURCE_HAS_SLOW_SEEK)) == MFMEDIASOURCE_CAN_SEEK;
  return hr;
}

}  // namespace windowsmediafoundation
