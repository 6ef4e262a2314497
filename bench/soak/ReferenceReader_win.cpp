#include "ReferenceReader.h"

#include <mfapi.h>
#include <mfidl.h>
#include <mfreadwrite.h>
#include <propvarutil.h>
#include <wrl/client.h>

namespace aurivox_test {
namespace {

using Microsoft::WRL::ComPtr;

constexpr DWORD kAudio = static_cast<DWORD>(MF_SOURCE_READER_FIRST_AUDIO_STREAM);

HRESULT CreateReader(const std::wstring& path, bool throughByteStream, ComPtr<IMFSourceReader>& reader) {
  ComPtr<IMFAttributes> attributes;
  HRESULT hr = MFCreateAttributes(&attributes, 2);
  if (FAILED(hr)) return hr;
  hr = attributes->SetUINT32(MF_SOURCE_READER_ENABLE_VIDEO_PROCESSING, 1);
  if (FAILED(hr)) return hr;
  hr = attributes->SetUINT32(MF_READWRITE_ENABLE_HARDWARE_TRANSFORMS, 1);
  if (FAILED(hr)) return hr;
  if (!throughByteStream) return MFCreateSourceReaderFromURL(path.c_str(), attributes.Get(), &reader);
  ComPtr<IMFByteStream> stream;
  hr = MFCreateFile(MF_ACCESSMODE_READ, MF_OPENMODE_FAIL_IF_NOT_EXIST, MF_FILEFLAGS_NONE, path.c_str(), &stream);
  if (FAILED(hr)) return hr;
  return MFCreateSourceReaderFromByteStream(stream.Get(), attributes.Get(), &reader);
}

// The decoder's audio set-up: integer PCM stays PCM, anything else becomes
// float, with the source's channel count and mask. Returns the client's
// bytes a frame in `frameBytes`.
HRESULT SetUpAudio(IMFSourceReader* reader, UINT32& frameBytes) {
  ComPtr<IMFMediaType> source;
  HRESULT hr = reader->GetCurrentMediaType(kAudio, &source);
  if (FAILED(hr)) return hr;
  reader->SetStreamSelection(static_cast<DWORD>(MF_SOURCE_READER_ALL_STREAMS), FALSE);
  GUID subtype = GUID_NULL;
  hr = source->GetGUID(MF_MT_SUBTYPE, &subtype);
  if (FAILED(hr)) return hr;
  ComPtr<IMFMediaType> proposed;
  hr = MFCreateMediaType(&proposed);
  if (FAILED(hr)) return hr;
  proposed->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Audio);
  proposed->SetGUID(MF_MT_SUBTYPE, IsEqualGUID(subtype, MFAudioFormat_PCM) ? MFAudioFormat_PCM : MFAudioFormat_Float);
  UINT32 value = 0;
  if (SUCCEEDED(source->GetUINT32(MF_MT_AUDIO_NUM_CHANNELS, &value))) {
    proposed->SetUINT32(MF_MT_AUDIO_NUM_CHANNELS, value);
  }
  if (SUCCEEDED(source->GetUINT32(MF_MT_AUDIO_CHANNEL_MASK, &value)) && value != 0) {
    proposed->SetUINT32(MF_MT_AUDIO_CHANNEL_MASK, value);
  }
  hr = reader->SetCurrentMediaType(kAudio, nullptr, proposed.Get());
  if (FAILED(hr)) return hr;
  ComPtr<IMFMediaType> client;
  hr = reader->GetCurrentMediaType(kAudio, &client);
  if (FAILED(hr)) return hr;
  hr = client->GetUINT32(MF_MT_AUDIO_BLOCK_ALIGNMENT, &frameBytes);
  if (FAILED(hr)) return hr;
  return reader->SetStreamSelection(kAudio, TRUE);
}

// Reads one sample; adds its length to `bytes` and sets `ended` at the end.
HRESULT ReadOne(IMFSourceReader* reader, DWORD& bytes, bool& ended) {
  DWORD flags = 0;
  ComPtr<IMFSample> sample;
  const HRESULT hr = reader->ReadSample(kAudio, 0, nullptr, &flags, nullptr, &sample);
  if (FAILED(hr)) return hr;
  ended = (flags & MF_SOURCE_READERF_ENDOFSTREAM) != 0;
  DWORD length = 0;
  if (sample && SUCCEEDED(sample->GetTotalLength(&length))) bytes += length;
  return hr;
}

HRESULT Rewind(IMFSourceReader* reader) {
  PROPVARIANT position;
  InitPropVariantFromInt64(0, &position);
  const HRESULT hr = reader->SetCurrentPosition(GUID_NULL, position);
  PropVariantClear(&position);
  return hr;
}

HRESULT AskDuration(IMFSourceReader* reader) {
  PROPVARIANT duration;
  PropVariantInit(&duration);
  const HRESULT hr =
      reader->GetPresentationAttribute(static_cast<DWORD>(MF_SOURCE_READER_MEDIASOURCE), MF_PD_DURATION, &duration);
  PropVariantClear(&duration);
  return hr;
}

}  // namespace

bool OpenReadCloseReference(const std::wstring& path, bool throughByteStream, std::uint32_t frames) {
  ComPtr<IMFSourceReader> reader;
  if (FAILED(CreateReader(path, throughByteStream, reader))) return false;
  UINT32 frameBytes = 0;
  DWORD primed = 0;
  bool ended = false;
  if (FAILED(SetUpAudio(reader.Get(), frameBytes)) || FAILED(ReadOne(reader.Get(), primed, ended)) ||
      FAILED(Rewind(reader.Get())) || FAILED(AskDuration(reader.Get()))) {
    return false;
  }
  // As many samples as the decoder needs for `frames`; the first read after
  // the rewind waits for the source's restart, as the decoder's does.
  DWORD bytes = 0;
  ended = false;
  while (bytes < std::uint64_t{frames} * frameBytes && !ended) {
    if (FAILED(ReadOne(reader.Get(), bytes, ended))) return false;
  }
  return true;
}

}  // namespace aurivox_test
