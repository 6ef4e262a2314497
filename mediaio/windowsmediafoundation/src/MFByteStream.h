// The IMFByteStream that Media Foundation reads a StreamInterface through:
// read-only and seekable, every request forwarded to the stream.
#pragma once

#include <mfidl.h>
#include <mfobjects.h>

#include <atomic>
#include <memory>

#include "StreamInterface.h"

namespace windowsmediafoundation {

// Synchronous calls run on the caller's thread; BeginRead queues the read on
// Media Foundation's multithreaded work queue, where Invoke performs it. No
// lock is held: the stream keeps one position for all callers.
class MFByteStream : public IMFByteStream, public IMFAsyncCallback {
 public:
  // A new byte stream over `stream`, owned by the caller (one reference).
  // E_POINTER for a null out-pointer or an empty stream.
  static HRESULT CreateInstance(const std::shared_ptr<StreamInterface>& stream, IMFByteStream** byteStream);

  MFByteStream(const MFByteStream&) = delete;
  MFByteStream& operator=(const MFByteStream&) = delete;

  // IUnknown
  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;

  // IMFByteStream
  STDMETHODIMP GetCapabilities(DWORD* capabilities) override;
  STDMETHODIMP GetLength(QWORD* length) override;
  STDMETHODIMP SetLength(QWORD length) override;
  STDMETHODIMP GetCurrentPosition(QWORD* position) override;
  STDMETHODIMP SetCurrentPosition(QWORD position) override;
  STDMETHODIMP IsEndOfStream(BOOL* endOfStream) override;
  // Stores the low 32 bits of the stream's result, so a failed stream read
  // arrives as its negative count's bit pattern together with S_OK.
  STDMETHODIMP Read(BYTE* buffer, ULONG count, ULONG* bytesRead) override;
  STDMETHODIMP BeginRead(BYTE* buffer, ULONG count, IMFAsyncCallback* callback, IUnknown* state) override;
  STDMETHODIMP EndRead(IMFAsyncResult* result, ULONG* bytesRead) override;
  STDMETHODIMP Write(const BYTE* buffer, ULONG count, ULONG* written) override;
  STDMETHODIMP BeginWrite(const BYTE* buffer, ULONG count, IMFAsyncCallback* callback,
                          IUnknown* state) override;
  STDMETHODIMP EndWrite(IMFAsyncResult* result, ULONG* written) override;
  // Origins other than msoBegin and msoCurrent give E_FAIL, but the position
  // is still written. Pending reads are never cancelled.
  STDMETHODIMP Seek(MFBYTESTREAM_SEEK_ORIGIN origin, LONGLONG offset, DWORD flags,
                    QWORD* position) override;
  STDMETHODIMP Flush() override;
  // Closes the stream and lets go of it; later calls that need it give E_POINTER.
  STDMETHODIMP Close() override;

  // IMFAsyncCallback: performs a read queued by BeginRead. When the stream
  // was closed meanwhile, the caller's callback is not invoked.
  STDMETHODIMP GetParameters(DWORD* flags, DWORD* queue) override;
  STDMETHODIMP Invoke(IMFAsyncResult* workResult) override;

 protected:
  // Closes the stream as Close does.
  virtual ~MFByteStream();

 private:
  explicit MFByteStream(std::shared_ptr<StreamInterface> stream);

  // A copy of the stream field that keeps the stream alive for one call,
  // empty after Close.
  std::shared_ptr<StreamInterface> LockStream() const;

  std::shared_ptr<StreamInterface> stream_;
  std::atomic<ULONG> refCount_{1};
};

}  // namespace windowsmediafoundation
