#include "FakeSourceReader.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

#include "ComAdopt.h"

namespace aurivox_test {
namespace {

using Microsoft::WRL::ComPtr;

constexpr DWORD kAudioStream = MF_SOURCE_READER_FIRST_AUDIO_STREAM;

ComPtr<IMFMediaType> MakeAudioType(const FakeAudioFormat& format) {
  ComPtr<IMFMediaType> type;
  if (FAILED(MFCreateMediaType(&type))) return nullptr;
  type->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Audio);
  type->SetGUID(MF_MT_SUBTYPE, format.subtype);
  const std::pair<REFGUID, const std::optional<UINT32>&> values[] = {
      {MF_MT_AUDIO_NUM_CHANNELS, format.channels},
      {MF_MT_AUDIO_SAMPLES_PER_SECOND, format.samplesPerSecond},
      {MF_MT_AUDIO_BITS_PER_SAMPLE, format.bitsPerSample},
      {MF_MT_AUDIO_AVG_BYTES_PER_SECOND, format.avgBytesPerSecond},
      {MF_MT_AUDIO_CHANNEL_MASK, format.channelMask}};
  for (const auto& [key, value] : values) {
    if (value) type->SetUINT32(key, *value);
  }
  return type;
}

std::optional<UINT32> GetOptional(IMFMediaType* type, REFGUID key) {
  UINT32 value = 0;
  if (FAILED(type->GetUINT32(key, &value))) return std::nullopt;
  return value;
}

ComPtr<IMFMediaBuffer> MakeBuffer(const std::uint8_t* data, std::size_t size) {
  ComPtr<IMFMediaBuffer> buffer;
  BYTE* bytes = nullptr;
  if (FAILED(MFCreateMemoryBuffer(static_cast<DWORD>(std::max<std::size_t>(size, 1)), &buffer)) ||
      FAILED(buffer->Lock(&bytes, nullptr, nullptr))) {
    return nullptr;
  }
  if (size) std::memcpy(bytes, data, size);
  buffer->Unlock();
  buffer->SetCurrentLength(static_cast<DWORD>(size));
  return buffer;
}

}  // namespace

FakeRead SampleRead(std::vector<std::uint8_t> data) {
  FakeRead read;
  read.data = std::move(data);
  return read;
}

std::vector<std::uint8_t> Pcm16(const std::vector<std::int16_t>& samples) {
  std::vector<std::uint8_t> bytes(samples.size() * 2);  // little-endian, like the machine
  std::memcpy(bytes.data(), samples.data(), bytes.size());
  return bytes;
}

ComPtr<FakeSourceReader> FakeSourceReader::Create() {
  return windowsmediafoundation::AdoptComObject(new FakeSourceReader);
}

windowsmediafoundation::SourceReaderFactory FakeSourceReader::Factory() {
  // The reader is handed out without a reference of the factory's own: the
  // test owns it.
  auto create = [this](auto source, IMFAttributes* given, IMFSourceReader** reader) {
    if constexpr (std::is_same_v<decltype(source), IMFByteStream*>) byteStream = source;
    attributes = given;
    if (FAILED(createHr)) return createHr;
    client_.reset();  // a new reader starts from the source's own type
    if (!createNothing) {
      AddRef();
      *reader = this;
    }
    return createHr;
  };
  return {create, create};
}

std::string FakeSourceReader::UnreleasedObjects() const {
  std::string unreleased;
  for (const HandedOut& entry : handedOut_) {
    entry.object->AddRef();
    if (entry.object->Release() > entry.ownReferences) unreleased += std::string(entry.what) + "; ";
  }
  return unreleased;
}

HRESULT FakeSourceReader::GetCurrentMediaType(DWORD index, IMFMediaType** type) {
  if (index != kAudioStream || !sourceAudio) return MF_E_INVALIDSTREAMNUMBER;
  if (FAILED(getCurrentTypeHr)) return getCurrentTypeHr;
  ComPtr<IMFMediaType> current = MakeAudioType(client_ ? *client_ : *sourceAudio);
  handedOut_.push_back({current, 1, client_ ? "client type" : "source type"});
  *type = current.Detach();
  return getCurrentTypeHr;  // success codes other than S_OK come with the type
}

HRESULT FakeSourceReader::SetCurrentMediaType(DWORD index, DWORD*, IMFMediaType* type) {
  if (index != kAudioStream || !sourceAudio) return MF_E_INVALIDSTREAMNUMBER;
  proposedTypes.push_back(type);
  handedOut_.push_back({type, 2, "proposed type"});  // here and in proposedTypes
  GUID subtype = GUID_NULL;
  type->GetGUID(MF_MT_SUBTYPE, &subtype);
  askedSubtypes.push_back(subtype);
  const auto accepted = std::find(acceptedSubtypes.begin(), acceptedSubtypes.end(), subtype);
  if (accepted == acceptedSubtypes.end()) return MF_E_INVALIDMEDIATYPE;
  FakeAudioFormat client = *sourceAudio;
  client.subtype = subtype;
  const bool fromPcm = IsEqualGUID(sourceAudio->subtype, MFAudioFormat_PCM);
  client.bitsPerSample = IsEqualGUID(subtype, MFAudioFormat_Float) ? 32 : fromPcm ? client.bitsPerSample : 16;
  client.channels = GetOptional(type, MF_MT_AUDIO_NUM_CHANNELS).value_or(client.channels.value_or(2));
  client.channelMask = GetOptional(type, MF_MT_AUDIO_CHANNEL_MASK);
  client.avgBytesPerSecond =
      client.samplesPerSecond.value_or(0) * *client.channels * client.bitsPerSample.value_or(0) / 8;
  if (adjustClient) adjustClient(client);
  client_ = client;
  return S_OK;
}

HRESULT FakeSourceReader::SetCurrentPosition(REFGUID format, REFPROPVARIANT position) {
  if (!IsEqualGUID(format, GUID_NULL) || position.vt != VT_I8) return E_INVALIDARG;  // not 100-ns units
  positions.push_back(position.hVal.QuadPart);
  return setPositionHr;
}

HRESULT FakeSourceReader::ReadSample(DWORD index, DWORD, DWORD*, DWORD* flags, LONGLONG*, IMFSample** sample) {
  ++readCalls;
  *sample = nullptr;
  if (index != kAudioStream || !sourceAudio) return MF_E_INVALIDSTREAMNUMBER;
  if (nextRead_ >= reads.size()) {
    *flags = MF_SOURCE_READERF_ENDOFSTREAM;
    return S_OK;
  }
  const FakeRead& read = reads[nextRead_++];
  *flags = read.flags;
  if (FAILED(read.hr)) return read.hr;
  if (read.newFormat) {
    sourceAudio = read.newFormat;
    client_.reset();
  }
  return read.data ? MakeSample(read, sample) : S_OK;
}

HRESULT FakeSourceReader::MakeSample(const FakeRead& read, IMFSample** sample) {
  ComPtr<IMFSample> made;
  HRESULT hr = MFCreateSample(&made);
  const std::vector<std::uint8_t>& data = *read.data;
  const std::size_t split = std::min(read.splitAt.value_or(data.size()), data.size());
  std::vector<std::pair<std::size_t, std::size_t>> parts = {{0, split}};
  if (split < data.size()) parts.emplace_back(split, data.size() - split);
  for (const auto& [offset, size] : parts) {
    const ComPtr<IMFMediaBuffer> buffer = MakeBuffer(data.data() + offset, size);
    if (SUCCEEDED(hr)) hr = buffer ? made->AddBuffer(buffer.Get()) : E_OUTOFMEMORY;
    if (buffer) handedOut_.push_back({buffer, 2, "sample buffer"});  // ours and the sample's
  }
  if (FAILED(hr)) return hr;
  handedOut_.push_back({made, 1, "sample"});
  *sample = made.Detach();
  return S_OK;
}

}  // namespace aurivox_test
