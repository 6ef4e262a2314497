#include "FakeSourceReader.h"

#include <algorithm>
#include <type_traits>

#include "ComAdopt.h"

namespace aurivox_test {

using Microsoft::WRL::ComPtr;

constexpr DWORD kAudioStream = MF_SOURCE_READER_FIRST_AUDIO_STREAM;

FakeRead SampleRead(std::vector<std::uint8_t> data) { return {S_OK, 0, std::move(data)}; }

std::vector<std::uint8_t> Pcm16(const std::vector<std::int16_t>& samples) {
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(samples.data());  // little-endian, like the machine
  return {bytes, bytes + samples.size() * 2};
}

std::optional<UINT32> Attribute(IMFAttributes* attributes, REFGUID key) {
  UINT32 value = 0;
  return attributes->GetUINT32(key, &value) == S_OK ? std::optional<UINT32>(value) : std::nullopt;
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
    if (!createNothing) (*reader = this)->AddRef();
    return createHr;
  };
  return {create, create};
}

std::string FakeSourceReader::UnreleasedObjects() const {
  std::string unreleased;
  for (const auto& [object, ownReferences, what] : handedOut_) {
    object->AddRef();
    if (object->Release() > ownReferences) unreleased += std::string(what) + "; ";
  }
  return unreleased;
}

HRESULT FakeSourceReader::GetCurrentMediaType(DWORD index, IMFMediaType** type) {
  if (index != kAudioStream || !sourceAudio) return MF_E_INVALIDSTREAMNUMBER;
  if (FAILED(getCurrentTypeHr)) return getCurrentTypeHr;
  const FakeAudioFormat& format = client_ ? *client_ : *sourceAudio;
  ComPtr<IMFMediaType> current;
  MFCreateMediaType(&current);
  current->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Audio);
  current->SetGUID(MF_MT_SUBTYPE, format.subtype);
  if (format.channels) current->SetUINT32(MF_MT_AUDIO_NUM_CHANNELS, *format.channels);
  if (format.samplesPerSecond) current->SetUINT32(MF_MT_AUDIO_SAMPLES_PER_SECOND, *format.samplesPerSecond);
  if (format.bitsPerSample) current->SetUINT32(MF_MT_AUDIO_BITS_PER_SAMPLE, *format.bitsPerSample);
  if (format.avgBytesPerSecond) current->SetUINT32(MF_MT_AUDIO_AVG_BYTES_PER_SECOND, *format.avgBytesPerSecond);
  if (format.channelMask) current->SetUINT32(MF_MT_AUDIO_CHANNEL_MASK, *format.channelMask);
  handedOut_.emplace_back(current, 1, client_ ? "client type" : "source type");
  *type = current.Detach();
  return getCurrentTypeHr;  // success codes other than S_OK come with the type
}

HRESULT FakeSourceReader::SetCurrentMediaType(DWORD index, DWORD*, IMFMediaType* type) {
  if (index != kAudioStream || !sourceAudio) return MF_E_INVALIDSTREAMNUMBER;
  proposedTypes.push_back(type);
  handedOut_.emplace_back(type, 2, "proposed type");  // here and in proposedTypes
  GUID subtype = GUID_NULL;
  type->GetGUID(MF_MT_SUBTYPE, &subtype);
  askedSubtypes.push_back(subtype);
  if (!std::count(acceptedSubtypes.begin(), acceptedSubtypes.end(), subtype)) return MF_E_INVALIDMEDIATYPE;
  // The decoder settles on the source format with the asked subtype: float
  // at 32 bits, PCM at the width of a PCM source (16 bits from others), and
  // the proposed channel count and mask.
  FakeAudioFormat client = *sourceAudio;
  client.subtype = subtype;
  const bool fromPcm = IsEqualGUID(sourceAudio->subtype, MFAudioFormat_PCM);
  client.bitsPerSample = IsEqualGUID(subtype, MFAudioFormat_Float) ? 32 : fromPcm ? client.bitsPerSample : 16;
  client.channels = Attribute(type, MF_MT_AUDIO_NUM_CHANNELS).value_or(client.channels.value_or(2));
  client.channelMask = Attribute(type, MF_MT_AUDIO_CHANNEL_MASK);
  client.avgBytesPerSecond =
      client.samplesPerSecond.value_or(0) * *client.channels * client.bitsPerSample.value_or(0) / 8;
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
  static const FakeRead kEnd{S_OK, MF_SOURCE_READERF_ENDOFSTREAM};
  const FakeRead& read = nextRead_ < reads.size() ? reads[nextRead_++] : kEnd;
  *flags = read.flags;
  if (FAILED(read.hr)) return read.hr;
  if (read.newFormat) {
    sourceAudio = read.newFormat;
    client_.reset();
  }
  if (!read.data) return S_OK;
  ComPtr<IMFSample> made;
  MFCreateSample(&made);
  const std::vector<std::uint8_t>& data = *read.data;
  const std::size_t split = std::min(read.splitAt.value_or(data.size()), data.size());
  AddBuffer(made.Get(), data.data(), split);
  if (split < data.size()) AddBuffer(made.Get(), data.data() + split, data.size() - split);
  handedOut_.emplace_back(made, 1, "sample");
  *sample = made.Detach();
  return S_OK;
}

void FakeSourceReader::AddBuffer(IMFSample* sample, const std::uint8_t* data, std::size_t size) {
  ComPtr<IMFMediaBuffer> buffer;
  BYTE* bytes = nullptr;
  MFCreateMemoryBuffer(static_cast<DWORD>(size) + 1, &buffer);
  buffer->Lock(&bytes, nullptr, nullptr);
  std::copy(data, data + size, bytes);
  buffer->Unlock();
  buffer->SetCurrentLength(static_cast<DWORD>(size));
  sample->AddBuffer(buffer.Get());
  handedOut_.emplace_back(buffer, 2, "sample buffer");  // ours and the sample's
}

}  // namespace aurivox_test
