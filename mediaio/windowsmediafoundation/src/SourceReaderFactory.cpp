#include "SourceReaderFactory.h"

#include <mfapi.h>
#include <winerror.h>
#include <wrl/client.h>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace windowsmediafoundation {
namespace {

using Microsoft::WRL::ComPtr;

const SourceReaderFactory* g_currentFactory = nullptr;

// Creating a reader runs the platform's parsers over the start of the file.
// A parser that fails can wait forever (Wine's GStreamer sources do, now and
// then, on damaged files), so creation runs on a thread of its own and is
// given up after this long; the stuck thread is left behind.
constexpr std::chrono::seconds kCreationDeadline{30};

// What the creating thread and the waiting caller share. Whoever is last
// to let go frees it, so an abandoned creation cleans up after itself.
struct Creation {
  std::mutex mutex;
  std::condition_variable done;
  bool finished = false;
  bool abandoned = false;
  HRESULT result = E_FAIL;
  ComPtr<IMFSourceReader> reader;
};

template <typename Create>
HRESULT CreateWithDeadline(Create create, IMFSourceReader** reader) {
  if (!reader) return E_POINTER;
  *reader = nullptr;
  auto creation = std::make_shared<Creation>();
  try {
    std::thread([creation, create]() mutable {
      ComPtr<IMFSourceReader> created;
      const HRESULT hr = create(&created);
      std::lock_guard<std::mutex> lock(creation->mutex);
      creation->finished = true;
      creation->result = hr;
      if (!creation->abandoned) creation->reader = std::move(created);
      creation->done.notify_one();
    }).detach();
  } catch (const std::system_error&) {
    return E_OUTOFMEMORY;  // no thread to be had
  }
  std::unique_lock<std::mutex> lock(creation->mutex);
  if (!creation->done.wait_for(lock, kCreationDeadline, [&] { return creation->finished; })) {
    creation->abandoned = true;
    return HRESULT_FROM_WIN32(ERROR_TIMEOUT);
  }
  *reader = creation->reader.Detach();
  return creation->result;
}

HRESULT CreateFromURL(const wchar_t* url, IMFAttributes* attributes, IMFSourceReader** reader) {
  if (!url) return E_POINTER;
  ComPtr<IMFAttributes> keptAttributes(attributes);
  return CreateWithDeadline(
      [path = std::wstring(url), keptAttributes](IMFSourceReader** created) {
        return MFCreateSourceReaderFromURL(path.c_str(), keptAttributes.Get(), created);
      },
      reader);
}

HRESULT CreateFromByteStream(IMFByteStream* byteStream, IMFAttributes* attributes, IMFSourceReader** reader) {
  ComPtr<IMFByteStream> keptStream(byteStream);
  ComPtr<IMFAttributes> keptAttributes(attributes);
  return CreateWithDeadline(
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
