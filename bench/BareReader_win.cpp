#include "BareReader.h"

#include <mfapi.h>
#include <mfidl.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

namespace bench {
namespace {

using Microsoft::WRL::ComPtr;

constexpr DWORD kAudio = static_cast<DWORD>(MF_SOURCE_READER_FIRST_AUDIO_STREAM);

HRESULT SelectClientType(IMFSourceReader* reader, const GUID& subtype) {
  HRESULT hr = reader->SetStreamSelection(static_cast<DWORD>(MF_SOURCE_READER_ALL_STREAMS), FALSE);
  if (FAILED(hr)) return hr;
  hr = reader->SetStreamSelection(kAudio, TRUE);
  if (FAILED(hr)) return hr;
  ComPtr<IMFMediaType> native;
  hr = reader->GetNativeMediaType(kAudio, 0, &native);
  if (FAILED(hr)) return hr;
  ComPtr<IMFMediaType> client;
  hr = MFCreateMediaType(&client);
  if (FAILED(hr)) return hr;
  hr = client->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Audio);
  if (FAILED(hr)) return hr;
  hr = client->SetGUID(MF_MT_SUBTYPE, subtype);
  if (FAILED(hr)) return hr;
  UINT32 value = 0;
  if (SUCCEEDED(native->GetUINT32(MF_MT_AUDIO_NUM_CHANNELS, &value))) {
    hr = client->SetUINT32(MF_MT_AUDIO_NUM_CHANNELS, value);
    if (FAILED(hr)) return hr;
  }
  if (SUCCEEDED(native->GetUINT32(MF_MT_AUDIO_CHANNEL_MASK, &value)) && value != 0) {
    hr = client->SetUINT32(MF_MT_AUDIO_CHANNEL_MASK, value);
    if (FAILED(hr)) return hr;
  }
  return reader->SetCurrentMediaType(kAudio, nullptr, client.Get());
}

// Copies the sample's data to `out`; returns its length, or -1.
std::int64_t CopySample(IMFSample* sample, std::vector<std::uint8_t>& out) {
  ComPtr<IMFMediaBuffer> buffer;
  if (FAILED(sample->ConvertToContiguousBuffer(&buffer))) return -1;
  BYTE* data = nullptr;
  DWORD length = 0;
  if (FAILED(buffer->Lock(&data, nullptr, &length))) return -1;
  if (out.size() < length) out.resize(length);
  std::memcpy(out.data(), data, length);
  buffer->Unlock();
  return length;
}

}  // namespace

BareReader::BareReader(const std::wstring& path, const GUID& subtype) {
  // The attributes the decoder creates its readers with.
  ComPtr<IMFAttributes> attributes;
  failed_ = FAILED(MFCreateAttributes(&attributes, 2)) ||
            FAILED(attributes->SetUINT32(MF_SOURCE_READER_ENABLE_VIDEO_PROCESSING, 1)) ||
            FAILED(attributes->SetUINT32(MF_READWRITE_ENABLE_HARDWARE_TRANSFORMS, 1)) ||
            FAILED(MFCreateSourceReaderFromURL(path.c_str(), attributes.Get(), &reader_)) ||
            FAILED(SelectClientType(reader_.Get(), subtype));
}

bool BareReader::Read(std::int64_t bytes) {
  const std::int64_t end = bytes > INT64_MAX - bytes_ ? INT64_MAX : bytes_ + bytes;
  while (bytes_ < end && !done()) {
    DWORD flags = 0;
    ComPtr<IMFSample> sample;
    failed_ = FAILED(reader_->ReadSample(kAudio, 0, nullptr, &flags, nullptr, &sample));
    ended_ = (flags & MF_SOURCE_READERF_ENDOFSTREAM) != 0;
    if (done() || !sample) continue;
    const std::int64_t length = CopySample(sample.Get(), copy_);
    failed_ = length < 0;
    bytes_ += std::max<std::int64_t>(length, 0);
  }
  return !failed_;
}

std::int64_t DecodeWithBareReader(const std::wstring& path, const GUID& subtype) {
  BareReader reader(path, subtype);
  return reader.Read(INT64_MAX) ? reader.bytes() : -1;
}

}  // namespace bench
