#include "SourceReaderFactory.h"

#include <wrl/client.h>

#include <string>

#include "WineSourceReaderWorkarounds.h"

namespace windowsmediafoundation {
namespace {

using Microsoft::WRL::ComPtr;

const SourceReaderFactory* g_currentFactory = nullptr;

HRESULT CreateFromURL(const wchar_t* url, IMFAttributes* attributes, IMFSourceReader** reader) {
  if (!url) return E_POINTER;
  ComPtr<IMFAttributes> keptAttributes(attributes);
  return CreateSourceReaderWithin(
      [path = std::wstring(url), keptAttributes](IMFSourceReader** created) {
        return MFCreateSourceReaderFromURL(path.c_str(), keptAttributes.Get(), created);
      },
      reader);
}

HRESULT CreateFromByteStream(IMFByteStream* byteStream, IMFAttributes* attributes, IMFSourceReader** reader) {
  ComPtr<IMFByteStream> keptStream(byteStream);
  ComPtr<IMFAttributes> keptAttributes(attributes);
  return CreateSourceReaderWithin(
      [keptStream, keptAttributes](IMFSourceReader** created) {
        return MFCreateSourceReaderFromByteStream(keptStream.Get(), keptAttributes.Get(), created);
      },
      reader);
}

}  // namespace

const SourceReaderFactory& MediaFoundationSourceReaderFactory() {
  static const SourceReaderFactory factory{CreateFromURL, CreateFromByteStream};
  return factory;
}

const SourceReaderFactory& CurrentSourceReaderFactory() {
  return g_currentFactory ? *g_currentFactory : MediaFoundationSourceReaderFactory();
}

ScopedSourceReaderFactory::ScopedSourceReaderFactory(SourceReaderFactory factory)
    : factory_(std::move(factory)), previous_(g_currentFactory) {
  g_currentFactory = &factory_;
}

ScopedSourceReaderFactory::~ScopedSourceReaderFactory() { g_currentFactory = previous_; }

}  // namespace windowsmediafoundation
