// How MFReader creates its source reader: Media Foundation's functions in
// production; tests install a scripted reader for the duration of a scope.
#pragma once

#include <mfidl.h>
#include <mfreadwrite.h>

#include <functional>
#include <utility>

namespace windowsmediafoundation {

struct SourceReaderFactory {
  std::function<HRESULT(const wchar_t* url, IMFAttributes* attributes, IMFSourceReader** reader)> fromURL;
  std::function<HRESULT(IMFByteStream* byteStream, IMFAttributes* attributes, IMFSourceReader** reader)>
      fromByteStream;
};

// MFCreateSourceReaderFromURL and MFCreateSourceReaderFromByteStream (with a
// deadline where the test platform can hang; see WineSourceReaderWorkarounds.h).
const SourceReaderFactory& MediaFoundationSourceReaderFactory();

// The factory readers use now: the innermost ScopedSourceReaderFactory, else
// Media Foundation's.
const SourceReaderFactory& CurrentSourceReaderFactory();

// Installs `factory` process-wide until destroyed, then restores the previous
// one. Meant for tests: install it before any reader opens, on one thread.
class ScopedSourceReaderFactory {
 public:
  explicit ScopedSourceReaderFactory(SourceReaderFactory factory);
  ~ScopedSourceReaderFactory();
  ScopedSourceReaderFactory(const ScopedSourceReaderFactory&) = delete;
  ScopedSourceReaderFactory& operator=(const ScopedSourceReaderFactory&) = delete;

 private:
  SourceReaderFactory factory_;
  const SourceReaderFactory* previous_;
};

}  // namespace windowsmediafoundation
