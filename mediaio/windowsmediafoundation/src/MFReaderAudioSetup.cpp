// MFReader: negotiation of the client audio type and the format it reports.
#include <mfapi.h>

#include <cstdio>
#include <string>

#include "ChannelMask.h"
#include "MFErrorMessage.h"
#include "MFReader.h"

namespace windowsmediafoundation {
namespace {

using Microsoft::WRL::ComPtr;

orxcore::TraceSite g_setupAudioFormat("windowsmediafoundation.MFReader.SetupAudio", 6);
orxcore::TraceSite g_setupAudioError("windowsmediafoundation.MFReader.SetupAudio", 5);
orxcore::TraceSite g_configureError("windowsmediafoundation.MFReader.ConfigureClientAudioType", 5);

// SPEAKER_FRONT_LEFT | SPEAKER_FRONT_RIGHT, for stereo types without a mask.
constexpr UINT32 kStereoMask = 0x3;

// The set-up goes on only on exactly S_OK; another success code would hide a
// refusal, so it travels on as a failure.
HRESULT RequireOk(HRESULT hr) {
  if (hr == S_OK || FAILED(hr)) return hr;
  return E_UNEXPECTED;
}

// Upper-case hexadecimal digits without leading zeros.
std::string HexText(UINT32 value) {
  char text[9];
  std::snprintf(text, sizeof text, "%X", static_cast<unsigned>(value));
  return text;
}

void TraceValue(const char* label, UINT32 value) {
  if (!g_setupAudioFormat.Enabled()) return;
  g_setupAudioFormat.WriteLine(label + std::to_string(value));
}

void TraceMask(const char* label, UINT32 mask) {
  if (!g_setupAudioFormat.Enabled()) return;
  g_setupAudioFormat.WriteLine(label + HexText(mask));
}

void TraceLayout(const char* label, UINT32 mask, UINT32 channels) {
  if (!g_setupAudioFormat.Enabled()) return;
  const auto layout = ChannelLayoutFromMask(mask, static_cast<std::int32_t>(channels));
  g_setupAudioFormat.WriteLine(label + orxmediatypes::AudioChannelLayoutDescription(layout));
}

void TraceSourceAudioFormat(IMFMediaType* source) {
  if (!g_setupAudioFormat.Enabled()) return;
  UINT32 channels = 0;
  UINT32 mask = 0;
  UINT32 value = 0;
  if (SUCCEEDED(source->GetUINT32(MF_MT_AUDIO_NUM_CHANNELS, &channels))) {
    TraceValue("Source MF_MT_AUDIO_NUM_CHANNELS:\t", channels);
  }
  if (SUCCEEDED(source->GetUINT32(MF_MT_AUDIO_SAMPLES_PER_SECOND, &value))) {
    TraceValue("Source MF_MT_AUDIO_SAMPLES_PER_SECOND:\t", value);
  }
  if (SUCCEEDED(source->GetUINT32(MF_MT_AUDIO_BITS_PER_SAMPLE, &value))) {
    TraceValue("Source MF_MT_AUDIO_BITS_PER_SAMPLE:\t", value);
  }
  if (SUCCEEDED(source->GetUINT32(MF_MT_AUDIO_AVG_BYTES_PER_SECOND, &value))) {
    TraceValue("Source MF_MT_AUDIO_AVG_BYTES_PER_SECOND:\t", value);
  }
  if (SUCCEEDED(source->GetUINT32(MF_MT_AUDIO_CHANNEL_MASK, &mask))) {
    TraceMask("Source MF_MT_AUDIO_CHANNEL_MASK:\t0x", mask);
  }
  if (channels != 0 && mask != 0) TraceLayout("Source Channel Layout:\t", mask, channels);
}

// Reads one client attribute that must be there, and traces it.
HRESULT ReadClientValue(IMFMediaType* client, REFGUID key, const char* label, std::uint32_t& value) {
  UINT32 read = 0;
  const HRESULT hr = RequireOk(client->GetUINT32(key, &read));
  if (FAILED(hr)) return hr;
  value = read;
  TraceValue(label, read);
  return hr;
}

// Copies a UINT32 attribute of the source to the proposed type when the
// source has it (and, for `skipZero`, when it is not 0).
HRESULT CopySourceValue(IMFMediaType* source, IMFMediaType* proposed, REFGUID key, bool skipZero) {
  UINT32 value = 0;
  if (!source || FAILED(source->GetUINT32(key, &value))) return S_OK;
  if (skipZero && value == 0) return S_OK;
  return RequireOk(proposed->SetUINT32(key, value));
}

// Proposes `subtype` with the source's channel count and mask, and returns
// the type the reader put in force.
HRESULT SetClientAudioType(IMFSourceReader* reader, IMFMediaType* source, const GUID& subtype,
                           IMFMediaType** clientType) {
  ComPtr<IMFMediaType> proposed;
  HRESULT hr = RequireOk(MFCreateMediaType(&proposed));
  if (FAILED(hr)) return hr;
  hr = RequireOk(proposed->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Audio));
  if (FAILED(hr)) return hr;
  hr = RequireOk(proposed->SetGUID(MF_MT_SUBTYPE, subtype));
  if (FAILED(hr)) return hr;
  // Rate, width, alignment and byte rate are the decoder's to choose.
  hr = CopySourceValue(source, proposed.Get(), MF_MT_AUDIO_NUM_CHANNELS, false);
  if (FAILED(hr)) return hr;
  hr = CopySourceValue(source, proposed.Get(), MF_MT_AUDIO_CHANNEL_MASK, true);
  if (FAILED(hr)) return hr;
  hr = RequireOk(reader->SetCurrentMediaType(MF_SOURCE_READER_FIRST_AUDIO_STREAM, nullptr, proposed.Get()));
  if (FAILED(hr)) return hr;
  return RequireOk(reader->GetCurrentMediaType(MF_SOURCE_READER_FIRST_AUDIO_STREAM, clientType));
}

}  // namespace

HRESULT MFReader::SetupAudio() {
  const HRESULT hr = SetupAudioStream();
  if (FAILED(hr)) {
    TraceMFError(g_setupAudioError, hr);
    hasAudio_ = false;
  }
  return hr;
}

HRESULT MFReader::SetupAudioStream() {
  if (!reader_ || !sourceAudioType_) return E_POINTER;
  GUID subtype = GUID_NULL;
  HRESULT hr = sourceAudioType_->GetGUID(MF_MT_SUBTYPE, &subtype);
  if (FAILED(hr)) return hr;
  TraceSourceAudioFormat(sourceAudioType_.Get());

  clientAudioType_.Reset();
  hr = NegotiateClientAudioType(subtype);
  if (FAILED(hr)) return hr;
  hr = ReadClientAudioFormat();
  if (FAILED(hr)) return hr;
  pendingAudio_.Clear();
  return reader_->SetStreamSelection(MF_SOURCE_READER_FIRST_AUDIO_STREAM, TRUE);
}

HRESULT MFReader::NegotiateClientAudioType(const GUID& sourceSubtype) {
  // PCM sources stay integer PCM; anything else is decoded to float when the
  // decoder offers it.
  if (IsEqualGUID(sourceSubtype, MFAudioFormat_PCM)) {
    return ConfigureClientAudioType(MFAudioFormat_PCM, clientAudioType_.ReleaseAndGetAddressOf());
  }
  const HRESULT hr = ConfigureClientAudioType(MFAudioFormat_Float, clientAudioType_.ReleaseAndGetAddressOf());
  if (SUCCEEDED(hr)) return hr;
  return ConfigureClientAudioType(MFAudioFormat_PCM, clientAudioType_.ReleaseAndGetAddressOf());
}

HRESULT MFReader::ReadClientAudioFormat() {
  IMFMediaType* client = clientAudioType_.Get();
  HRESULT hr = ReadClientValue(client, MF_MT_AUDIO_NUM_CHANNELS, "Client MF_MT_AUDIO_NUM_CHANNELS:\t", channels_);
  if (FAILED(hr)) return hr;
  hr = ReadClientValue(client, MF_MT_AUDIO_SAMPLES_PER_SECOND, "Client MF_MT_AUDIO_SAMPLES_PER_SECOND:\t",
                       samplesPerSecond_);
  if (FAILED(hr)) return hr;
  hr = ReadClientValue(client, MF_MT_AUDIO_BITS_PER_SAMPLE, "Client MF_MT_AUDIO_BITS_PER_SAMPLE:\t",
                       bitsPerSample_);
  if (FAILED(hr)) return hr;
  hr = ReadClientValue(client, MF_MT_AUDIO_AVG_BYTES_PER_SECOND, "Client MF_MT_AUDIO_AVG_BYTES_PER_SECOND:\t",
                       avgBytesPerSecond_);
  if (FAILED(hr)) return hr;

  UINT32 mask = 0;
  if (SUCCEEDED(client->GetUINT32(MF_MT_AUDIO_CHANNEL_MASK, &mask))) {
    // A mask the decoder states is kept, even 0.
    channelMask_ = mask;
    TraceMask("Client MF_MT_AUDIO_CHANNEL_MASK:\t0x", mask);
    TraceLayout("Client Channel Layout:\t", mask, channels_);
  } else if (channelMask_ == 0 && channels_ == 2) {
    channelMask_ = kStereoMask;
  }
  return hr;
}

HRESULT MFReader::ConfigureClientAudioType(const GUID& subtype, IMFMediaType** clientType) {
  const HRESULT hr = reader_ && clientType
                         ? SetClientAudioType(reader_.Get(), sourceAudioType_.Get(), subtype, clientType)
                         : E_POINTER;
  if (FAILED(hr)) TraceMFError(g_configureError, hr);
  return hr;
}

}  // namespace windowsmediafoundation
