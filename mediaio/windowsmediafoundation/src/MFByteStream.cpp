#include "MFByteStream.h"

#include <mfapi.h>
#include <shlwapi.h>
#include <wrl/client.h>

#include <new>
#include <utility>

#include "ComAdopt.h"

namespace windowsmediafoundation {
namespace {

using Microsoft::WRL::ComPtr;

// MFBYTESTREAM_IS_READABLE | MFBYTESTREAM_IS_SEEKABLE: never writable, remote
// or a directory.
constexpr DWORD kCapabilities = MFBYTESTREAM_IS_READABLE | MFBYTESTREAM_IS_SEEKABLE;

// One read queued by BeginRead: the caller's buffer and count, and what the
// read delivered. The caller's asynchronous result holds it as its object.
class AsyncReadRequest : public IUnknown {
 public:
  AsyncReadRequest(BYTE* buffer, ULONG bytesWanted) : buffer_(buffer), bytesWanted_(bytesWanted) {}
  AsyncReadRequest(const AsyncReadRequest&) = delete;
  AsyncReadRequest& operator=(const AsyncReadRequest&) = delete;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    static const QITAB kInterfaces[] = {
        QITABENT(AsyncReadRequest, IUnknown),
        {nullptr, 0},
    };
    return QISearch(this, kInterfaces, iid, object);
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++refCount_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG count = --refCount_;
    if (count == 0) delete this;
    return count;
  }

  BYTE* buffer() const { return buffer_; }
  ULONG bytesWanted() const { return bytesWanted_; }
  ULONG bytesRead() const { return bytesRead_; }
  void SetBytesRead(ULONG bytesRead) { bytesRead_ = bytesRead; }

 private:
  virtual ~AsyncReadRequest() = default;

  std::atomic<ULONG> refCount_{1};
  BYTE* buffer_;
  ULONG bytesWanted_;
  ULONG bytesRead_ = 0;
};

// The request behind a caller's asynchronous result; null when it has none.
HRESULT GetReadRequest(IMFAsyncResult* result, ComPtr<AsyncReadRequest>& request) {
  ComPtr<IUnknown> object;
  const HRESULT hr = result->GetObject(&object);
  if (FAILED(hr)) return hr;
  // Only BeginRead creates the results that reach here, always with a request.
  request = static_cast<AsyncReadRequest*>(object.Get());
  return hr;
}

}  // namespace

HRESULT MFByteStream::CreateInstance(const std::shared_ptr<StreamInterface>& stream,
                                     IMFByteStream** byteStream) {
  if (!byteStream || !stream) return E_POINTER;
  auto* created = new (std::nothrow) MFByteStream(stream);
  if (!created) return E_OUTOFMEMORY;
  *byteStream = created;
  created->AddRef();
  created->Release();
  return S_OK;
}

MFByteStream::MFByteStream(std::shared_ptr<StreamInterface> stream) : stream_(std::move(stream)) {}

MFByteStream::~MFByteStream() { Close(); }

std::shared_ptr<StreamInterface> MFByteStream::LockStream() const {
  // Close may run on another thread; the atomic load keeps the copy whole.
  return std::atomic_load(&stream_);
}

HRESULT MFByteStream::QueryInterface(REFIID iid, void** object) {
  static const QITAB kInterfaces[] = {
      QITABENT(MFByteStream, IMFByteStream),
      QITABENT(MFByteStream, IMFAsyncCallback),
      {nullptr, 0},
  };
  return QISearch(this, kInterfaces, iid, object);
}

ULONG MFByteStream::AddRef() { return ++refCount_; }

ULONG MFByteStream::Release() {
  const ULONG count = --refCount_;
  if (count == 0) delete this;
  return count;
}

HRESULT MFByteStream::GetCapabilities(DWORD* capabilities) {
  if (!capabilities) return E_POINTER;
  *capabilities = kCapabilities;
  return S_OK;
}

HRESULT MFByteStream::GetLength(QWORD* length) {
  const auto stream = LockStream();
  if (!stream || !length) return E_POINTER;
  *length = stream->GetLength();
  return S_OK;
}

HRESULT MFByteStream::SetLength(QWORD) { return E_NOTIMPL; }

HRESULT MFByteStream::GetCurrentPosition(QWORD* position) {
  const auto stream = LockStream();
  if (!stream || !position) return E_POINTER;
  *position = stream->GetPosition();
  return S_OK;
}

HRESULT MFByteStream::SetCurrentPosition(QWORD position) {
  const auto stream = LockStream();
  if (!stream) return E_POINTER;
  stream->SetPosition(position);
  return S_OK;
}

HRESULT MFByteStream::IsEndOfStream(BOOL* endOfStream) {
  const auto stream = LockStream();
  if (!stream || !endOfStream) return E_POINTER;
  *endOfStream = stream->IsEndOfStream() ? TRUE : FALSE;
  return S_OK;
}

HRESULT MFByteStream::Read(BYTE* buffer, ULONG count, ULONG* bytesRead) {
  const auto stream = LockStream();
  if (!stream || !buffer || !bytesRead) return E_POINTER;
  *bytesRead = static_cast<ULONG>(stream->Read(buffer, count));
  return S_OK;
}

HRESULT MFByteStream::BeginRead(BYTE* buffer, ULONG count, IMFAsyncCallback* callback, IUnknown* state) {
  if (!buffer || !callback) return E_POINTER;
  const auto request = AdoptComObject(new (std::nothrow) AsyncReadRequest(buffer, count));
  if (!request) return E_OUTOFMEMORY;
  ComPtr<IMFAsyncResult> result;
  const HRESULT hr = MFCreateAsyncResult(request.Get(), callback, state, &result);
  if (FAILED(hr) || !result) return hr;
  // The work item keeps the caller's result, and through it the request,
  // alive until Invoke has run.
  return MFPutWorkItem(MFASYNC_CALLBACK_QUEUE_MULTITHREADED, static_cast<IMFAsyncCallback*>(this),
                       result.Get());
}

HRESULT MFByteStream::EndRead(IMFAsyncResult* result, ULONG* bytesRead) {
  if (!result || !bytesRead) return E_POINTER;
  HRESULT hr = result->GetStatus();
  if (FAILED(hr)) return hr;
  ComPtr<AsyncReadRequest> request;
  hr = GetReadRequest(result, request);
  if (FAILED(hr) || !request) return hr;
  *bytesRead = request->bytesRead();
  return hr;
}

HRESULT MFByteStream::Write(const BYTE*, ULONG, ULONG*) { return E_NOTIMPL; }

HRESULT MFByteStream::BeginWrite(const BYTE*, ULONG, IMFAsyncCallback*, IUnknown*) { return E_NOTIMPL; }

HRESULT MFByteStream::EndWrite(IMFAsyncResult*, ULONG*) { return E_NOTIMPL; }

HRESULT MFByteStream::Seek(MFBYTESTREAM_SEEK_ORIGIN origin, LONGLONG offset, DWORD, QWORD* position) {
  HRESULT hr = E_FAIL;
  const auto stream = LockStream();
  if (!stream || !position) return E_POINTER;
  switch (origin) {
    case msoBegin:
      stream->SetPosition(static_cast<QWORD>(offset));
      hr = S_OK;
      break;
    case msoCurrent:
      // Unsigned addition wraps, so a negative offset moves backwards.
      stream->SetPosition(stream->GetPosition() + static_cast<QWORD>(offset));
      hr = S_OK;
      break;
    default:
      break;
  }
  *position = stream->GetPosition();
  return hr;
}

HRESULT MFByteStream::Flush() { return E_NOTIMPL; }

HRESULT MFByteStream::Close() {
  // Exchanging the field makes a concurrent Close find it empty, so the
  // stream is closed once.
  const auto stream = std::atomic_exchange(&stream_, std::shared_ptr<StreamInterface>());
  if (stream) stream->Close();
  return S_OK;
}

HRESULT MFByteStream::GetParameters(DWORD*, DWORD*) { return E_NOTIMPL; }

HRESULT MFByteStream::Invoke(IMFAsyncResult* workResult) {
  if (!workResult) return E_POINTER;
  ComPtr<IUnknown> state;
  HRESULT hr = workResult->GetState(&state);
  if (FAILED(hr) || !state) return hr;
  ComPtr<IMFAsyncResult> callerResult;
  hr = state.As(&callerResult);
  if (FAILED(hr)) return hr;
  ComPtr<AsyncReadRequest> request;
  hr = GetReadRequest(callerResult.Get(), request);
  if (FAILED(hr) || !request) return hr;

  ULONG bytesRead = 0;
  hr = Read(request->buffer(), request->bytesWanted(), &bytesRead);
  request->SetBytesRead(bytesRead);
  // A read that fails here found the stream closed; the caller's callback is
  // deliberately left uninvoked.
  if (FAILED(hr)) return hr;
  hr = callerResult->SetStatus(hr);
  if (FAILED(hr)) return hr;
  return MFInvokeCallback(callerResult.Get());
}

}  // namespace windowsmediafoundation
