#include "FakeSourceReader.h"

#include <algorithm>
#include <cstring>

#include "ComAdopt.h"

namespace aurivox_test {
namespace {

using Microsoft::WRL::ComPtr;

constexpr DWORD kAudioStream = MF_SOURCE_READER_FIRST_AUDIO_STREAM;

ULONG CurrentReferences(IUnknown* object) {
  object->AddRef();
  return object->Release();
}

void SetOptional(IMFMediaType* type, REFGUID key, const std::optional<UINT32>& value) {
  if (value) type->SetUINT32(key, *value);
}

std::optional<UINT32> GetOptional(IMFMediaType* type, REFGUID key) {
  UINT32 value = 0;
  if (FAILED(type->GetUINT32(key, &value))) return std::nullopt;
  return value;
}

HRESULT MakeBuffer(const std::uint8_t* data, std::size_t size, ComPtr<IMFMediaBuffer>& buffer) {
  HRESULT hr = MFCreateMemoryBuffer(static_cast<DWORD>(std::max<std::size_t>(size, 1)), &buffer);
  if (FAILED(hr)) return hr;
  BYTE* bytes = nullptr;
  hr = buffer->Lock(&bytes, nullptr, nullptr);
  if (FAILED(hr)) return hr;
  if (size) std::memcpy(bytes, data, size);
  buffer->Unlock();
  return buffer->SetCurrentLength(static_cast<DWORD>(size));
}

}  // namespace

FakeRead SampleRead(std::vector<std::uint8_t> data) {
  FakeRead read;
  read.data = std::move(data);
  return read;
}

FakeRead TickRead() {
  FakeRead read;
  read.flags = MF_SOURCE_READERF_STREAMTICK;
  return read;
}

FakeRead FlagsRead(DWORD flags) {
  FakeRead read;
  read.flags = flags;
  return read;
}

ComPtr<IMFMediaType> MakeAudioType(const FakeAudioFormat& format) {
  ComPtr<IMFMediaType> type;
  if (FAILED(MFCreateMediaType(&type))) return nullptr;
  type->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Audio);
  type->SetGUID(MF_MT_SUBTYPE, format.subtype);
  SetOptional(type.Get(), MF_MT_AUDIO_NUM_CHANNELS, format.channels);
  SetOptional(type.Get(), MF_MT_AUDIO_SAMPLES_PER_SECOND, format.samplesPerSecond);
  SetOptional(type.Get(), MF_MT_AUDIO_BITS_PER_SAMPLE, format.bitsPerSample);
  SetOptional(type.Get(), MF_MT_AUDIO_AVG_BYTES_PER_SECOND, format.avgBytesPerSecond);
  SetOptional(type.Get(), MF_MT_AUDIO_CHANNEL_MASK, format.channelMask);
  return type;
}

ComPtr<FakeSourceReader> FakeSourceReader::Create() {
  return windowsmediafoundation::AdoptComObject(new FakeSourceReader);
}

windowsmediafoundation::SourceReaderFactory FakeSourceReader::Factory() {
  // The reader is captured without a reference: the test owns it.
  auto handOut = [this](IMFSourceReader** reader) {
    if (FAILED(createHr)) return createHr;
    client_.reset();  // a new reader starts from the source's own type
    if (!createNothing) {
      AddRef();
      *reader = this;
    }
    return createHr;
  };
  windowsmediafoundation::SourceReaderFactory factory;
  factory.fromURL = [this, handOut](const wchar_t* path, IMFAttributes* given, IMFSourceReader** reader) {
    url = path ? path : L"";
    attributes = given;
    return handOut(reader);
  };
  factory.fromByteStream = [this, handOut](IMFByteStream* stream, IMFAttributes* given,
                                           IMFSourceReader** reader) {
    byteStream = stream;
    attributes = given;
    return handOut(reader);
  };
  return factory;
}

void FakeSourceReader::Track(IUnknown* object, ULONG ownReferences, const std::string& what) {
  handedOut_.push_back({object, ownReferences, what});
}

std::vector<std::string> FakeSourceReader::UnreleasedObjects() const {
  std::vector<std::string> unreleased;
  for (const HandedOut& entry : handedOut_) {
    const ULONG references = CurrentReferences(entry.object.Get());
    if (references > entry.ownReferences) {
      unreleased.push_back(entry.what + " holds " + std::to_string(references - entry.ownReferences) +
                           " extra reference(s)");
    }
  }
  return unreleased;
}

HRESULT FakeSourceReader::QueryInterface(REFIID iid, void** object) {
  if (!object) return E_POINTER;
  if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, __uuidof(IMFSourceReader))) {
    AddRef();
    *object = static_cast<IMFSourceReader*>(this);
    return S_OK;
  }
  *object = nullptr;
  return E_NOINTERFACE;
}

ULONG FakeSourceReader::AddRef() { return ++refCount_; }

ULONG FakeSourceReader::Release() {
  const ULONG count = --refCount_;
  if (count == 0) delete this;
  return count;
}

HRESULT FakeSourceReader::GetStreamSelection(DWORD index, BOOL* selected) {
  if (!selected) return E_POINTER;
  *selected = FALSE;
  for (const auto& [stream, on] : selections) {
    if (stream == index || stream == MF_SOURCE_READER_ALL_STREAMS) *selected = on;
  }
  return S_OK;
}

HRESULT FakeSourceReader::SetStreamSelection(DWORD index, BOOL selected) {
  selections.emplace_back(index, selected);
  return selectionHr;
}

HRESULT FakeSourceReader::GetNativeMediaType(DWORD, DWORD, IMFMediaType**) { return E_NOTIMPL; }

HRESULT FakeSourceReader::GetCurrentMediaType(DWORD index, IMFMediaType** type) {
  if (!type) return E_POINTER;
  if (index != kAudioStream || !sourceAudio) return MF_E_INVALIDSTREAMNUMBER;
  if (FAILED(getCurrentTypeHr)) return getCurrentTypeHr;
  ComPtr<IMFMediaType> current = MakeAudioType(client_ ? *client_ : *sourceAudio);
  if (!current) return E_OUTOFMEMORY;
  Track(current.Get(), 1, client_ ? "client type" : "source type");
  *type = current.Detach();
  return getCurrentTypeHr;  // success codes other than S_OK come with the type
}

HRESULT FakeSourceReader::SetCurrentMediaType(DWORD index, DWORD*, IMFMediaType* type) {
  if (!type) return E_POINTER;
  if (index != kAudioStream || !sourceAudio) return MF_E_INVALIDSTREAMNUMBER;
  proposedTypes.push_back(type);
  Track(type, 2, "proposed type");  // here and in proposedTypes
  GUID subtype = GUID_NULL;
  type->GetGUID(MF_MT_SUBTYPE, &subtype);
  askedSubtypes.push_back(subtype);
  if (FAILED(setCurrentTypeHr)) return setCurrentTypeHr;
  const bool accepted = std::any_of(acceptedSubtypes.begin(), acceptedSubtypes.end(),
                                    [&](const GUID& candidate) { return IsEqualGUID(candidate, subtype); });
  if (!accepted) return MF_E_INVALIDMEDIATYPE;

  FakeAudioFormat client = *sourceAudio;
  client.subtype = subtype;
  const bool isFloat = IsEqualGUID(subtype, MFAudioFormat_Float);
  const bool fromPcm = IsEqualGUID(sourceAudio->subtype, MFAudioFormat_PCM);
  client.bitsPerSample = isFloat ? 32 : (fromPcm && sourceAudio->bitsPerSample ? *sourceAudio->bitsPerSample : 16);
  client.channels = GetOptional(type, MF_MT_AUDIO_NUM_CHANNELS).value_or(client.channels.value_or(2));
  client.channelMask = GetOptional(type, MF_MT_AUDIO_CHANNEL_MASK);
  client.avgBytesPerSecond =
      client.samplesPerSecond.value_or(0) * *client.channels * *client.bitsPerSample / 8;
  if (adjustClient) adjustClient(client);
  client_ = client;
  return S_OK;
}

HRESULT FakeSourceReader::SetCurrentPosition(REFGUID format, REFPROPVARIANT position) {
  if (!IsEqualGUID(format, GUID_NULL) || position.vt != VT_I8) return E_INVALIDARG;
  positions.push_back(position.hVal.QuadPart);
  return setPositionHr;
}

HRESULT FakeSourceReader::ReadSample(DWORD index, DWORD, DWORD* actualIndex, DWORD* flags, LONGLONG* timestamp,
                                     IMFSample** sample) {
  ++readCalls;
  if (!flags || !sample) return E_POINTER;
  *sample = nullptr;
  if (actualIndex) *actualIndex = 0;
  if (timestamp) *timestamp = 0;
  if (index != kAudioStream || !sourceAudio) return MF_E_INVALIDSTREAMNUMBER;
  if (nextRead_ >= reads.size()) {
    *flags = MF_SOURCE_READERF_ENDOFSTREAM;
    return S_OK;
  }
  const FakeRead& read = reads[nextRead_++];
  *flags = read.flags;
  if (FAILED(read.hr)) return read.hr;
  if ((read.flags & MF_SOURCE_READERF_CURRENTMEDIATYPECHANGED) && read.newFormat) {
    sourceAudio = read.newFormat;
    client_.reset();
  }
  return read.data ? MakeSample(read, sample) : S_OK;
}

HRESULT FakeSourceReader::MakeSample(const FakeRead& read, IMFSample** sample) {
  ComPtr<IMFSample> made;
  HRESULT hr = MFCreateSample(&made);
  if (FAILED(hr)) return hr;
  const std::vector<std::uint8_t>& data = *read.data;
  const std::size_t split = std::min(read.splitAt.value_or(data.size()), data.size());
  std::vector<ComPtr<IMFMediaBuffer>> buffers(split < data.size() ? 2 : 1);
  hr = MakeBuffer(data.data(), split, buffers[0]);
  if (FAILED(hr)) return hr;
  if (buffers.size() == 2) {
    hr = MakeBuffer(data.data() + split, data.size() - split, buffers[1]);
    if (FAILED(hr)) return hr;
  }
  for (const auto& buffer : buffers) {
    hr = made->AddBuffer(buffer.Get());
    if (FAILED(hr)) return hr;
    Track(buffer.Get(), 2, "sample buffer");  // ours and the sample's
  }
  Track(made.Get(), 1, "sample");
  *sample = made.Detach();
  return S_OK;
}

HRESULT FakeSourceReader::Flush(DWORD) { return S_OK; }

HRESULT FakeSourceReader::GetServiceForStream(DWORD, REFGUID, REFIID, void** object) {
  if (object) *object = nullptr;
  return MF_E_UNSUPPORTED_SERVICE;
}

HRESULT FakeSourceReader::GetPresentationAttribute(DWORD index, REFGUID key, PROPVARIANT* value) {
  if (!value) return E_POINTER;
  PropVariantInit(value);
  if (index != MF_SOURCE_READER_MEDIASOURCE) return MF_E_INVALIDSTREAMNUMBER;
  if (IsEqualGUID(key, MF_PD_DURATION)) {
    if (FAILED(durationHr)) return durationHr;
    value->vt = durationType;
    value->uhVal.QuadPart = duration;
    return S_OK;
  }
  if (IsEqualGUID(key, MF_SOURCE_READER_MEDIASOURCE_CHARACTERISTICS)) {
    if (!characteristics) return MF_E_ATTRIBUTENOTFOUND;
    value->vt = VT_UI4;
    value->ulVal = *characteristics;
    return S_OK;
  }
  return MF_E_ATTRIBUTENOTFOUND;
}

}  // namespace aurivox_test
