// A scripted IMFSourceReader for MFReader's tests. It hands out real Media
// Foundation objects (media types, samples, memory buffers) built from the
// script, records what it is asked, and tells which of the objects it handed
// out are still referenced by someone else.
#pragma once

#include <mfapi.h>
#include <mferror.h>
#include <mfidl.h>
#include <mfreadwrite.h>
#include <wrl/client.h>

#include <atomic>
#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "SourceReaderFactory.h"

namespace aurivox_test {

// The attributes of an audio media type; an empty value leaves the attribute
// out of the type.
struct FakeAudioFormat {
  GUID subtype = MFAudioFormat_PCM;
  std::optional<UINT32> channels = 2, samplesPerSecond = 48000, bitsPerSample = 16, avgBytesPerSecond = 192000;
  std::optional<UINT32> channelMask;
};

// One answer of ReadSample.
struct FakeRead {
  FakeRead(HRESULT hr = S_OK, DWORD flags = 0, std::optional<std::vector<std::uint8_t>> data = {})
      : hr(hr), flags(flags), data(std::move(data)) {}

  HRESULT hr;
  DWORD flags;
  // A sample holding these bytes; no sample when empty.
  std::optional<std::vector<std::uint8_t>> data;
  // With data: split it into two buffers at this byte.
  std::optional<std::size_t> splitAt;
  // With MF_SOURCE_READERF_CURRENTMEDIATYPECHANGED: the type in force
  // afterwards, until a client type is set again.
  std::optional<FakeAudioFormat> newFormat;
};

FakeRead SampleRead(std::vector<std::uint8_t> data);
// Interleaved 16-bit little-endian samples.
std::vector<std::uint8_t> Pcm16(const std::vector<std::int16_t>& samples);
// A UINT32 attribute; none unless the read answers exactly S_OK.
std::optional<UINT32> Attribute(IMFAttributes* attributes, REFGUID key);

class FakeSourceReader : public IMFSourceReader {
 public:
  static Microsoft::WRL::ComPtr<FakeSourceReader> Create();

  // Script ------------------------------------------------------------------
  // Creation: a failure code, or success without handing out a reader.
  HRESULT createHr = S_OK;
  bool createNothing = false;
  // The source's audio type; none: the file has no audio stream.
  std::optional<FakeAudioFormat> sourceAudio = FakeAudioFormat{};
  // Client subtypes the decoder accepts.
  std::vector<GUID> acceptedSubtypes = {MFAudioFormat_Float, MFAudioFormat_PCM};
  HRESULT getCurrentTypeHr = S_OK;  // for the audio stream's type
  HRESULT setPositionHr = S_OK;
  // ReadSample answers in order; after the last, end of stream.
  std::vector<FakeRead> reads;
  // Record ------------------------------------------------------------------
  Microsoft::WRL::ComPtr<IMFAttributes> attributes;
  Microsoft::WRL::ComPtr<IMFByteStream> byteStream;  // kept as a source would
  std::vector<GUID> askedSubtypes;
  std::vector<Microsoft::WRL::ComPtr<IMFMediaType>> proposedTypes;
  std::vector<std::pair<DWORD, BOOL>> selections;
  std::vector<LONGLONG> positions;
  int readCalls = 0;

  // A factory that hands out this reader (or the scripted creation failure).
  windowsmediafoundation::SourceReaderFactory Factory();

  // The objects handed out that someone besides this fake still references.
  std::string UnreleasedObjects() const;
  ULONG referenceCount() const { return refCount_.load(); }

  // Only ComPtr copies of the reader go around, never a query for another
  // interface.
  STDMETHODIMP QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  STDMETHODIMP_(ULONG) AddRef() override { return ++refCount_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG count = --refCount_;
    if (count == 0) delete this;
    return count;
  }
  STDMETHODIMP GetStreamSelection(DWORD, BOOL*) override { return E_NOTIMPL; }
  STDMETHODIMP SetStreamSelection(DWORD index, BOOL selected) override {
    selections.emplace_back(index, selected);
    return S_OK;
  }
  STDMETHODIMP GetNativeMediaType(DWORD, DWORD, IMFMediaType**) override { return E_NOTIMPL; }
  STDMETHODIMP GetCurrentMediaType(DWORD index, IMFMediaType** type) override;
  STDMETHODIMP SetCurrentMediaType(DWORD index, DWORD* reserved, IMFMediaType* type) override;
  STDMETHODIMP SetCurrentPosition(REFGUID format, REFPROPVARIANT position) override;
  STDMETHODIMP ReadSample(DWORD index, DWORD, DWORD*, DWORD* flags, LONGLONG*, IMFSample** sample) override;
  STDMETHODIMP Flush(DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP GetServiceForStream(DWORD, REFGUID, REFIID, void**) override { return E_NOTIMPL; }
  STDMETHODIMP GetPresentationAttribute(DWORD, REFGUID, PROPVARIANT*) override { return MF_E_ATTRIBUTENOTFOUND; }

 private:
  virtual ~FakeSourceReader() = default;

  // Adds a memory buffer holding a copy of the `size` bytes at `data`.
  void AddBuffer(IMFSample* sample, const std::uint8_t* data, std::size_t size);

  std::atomic<ULONG> refCount_{1};
  std::optional<FakeAudioFormat> client_;  // the client type in force, once set
  std::size_t nextRead_ = 0;
  // Each object handed out, the references it has when only this fake holds
  // it, and what it is.
  std::vector<std::tuple<Microsoft::WRL::ComPtr<IUnknown>, ULONG, const char*>> handedOut_;
};

}  // namespace aurivox_test
