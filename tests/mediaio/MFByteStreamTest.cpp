#include "MFByteStream.h"

#include <gtest/gtest.h>
#include <mfapi.h>
#include <mferror.h>
#include <wrl/client.h>

#include <atomic>
#include <memory>
#include <numeric>
#include <vector>

#include "ComAdopt.h"
#include "TestStreams.h"

namespace windowsmediafoundation {
namespace {

using aurivox_test::MemoryStream;
using Microsoft::WRL::ComPtr;

std::vector<std::uint8_t> CountingBytes(std::size_t size) {
  std::vector<std::uint8_t> bytes(size);
  std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
  return bytes;
}

ULONG References(IUnknown* object) {
  object->AddRef();
  return object->Release();
}

class MFByteStreamTest : public ::testing::Test {
 protected:
  void SetUp() override {
    stream = std::make_shared<MemoryStream>(CountingBytes(100));
    ASSERT_EQ(MFByteStream::CreateInstance(stream, &byteStream), S_OK);
  }

  std::shared_ptr<MemoryStream> stream;
  ComPtr<IMFByteStream> byteStream;
};

TEST(MFByteStreamCreate, RefusesNullArguments) {
  auto stream = std::make_shared<MemoryStream>(CountingBytes(4));
  EXPECT_EQ(MFByteStream::CreateInstance(stream, nullptr), E_POINTER);
  ComPtr<IMFByteStream> byteStream;
  EXPECT_EQ(MFByteStream::CreateInstance(nullptr, &byteStream), E_POINTER);
  EXPECT_EQ(byteStream, nullptr);
  EXPECT_EQ(stream.use_count(), 1);
}

TEST_F(MFByteStreamTest, LengthPositionAndEndAreTheStreams) {
  QWORD value = 0;
  ASSERT_EQ(byteStream->GetLength(&value), S_OK);
  EXPECT_EQ(value, 100u);
  ASSERT_EQ(byteStream->SetCurrentPosition(40), S_OK);
  EXPECT_EQ(stream->GetPosition(), 40u);
  ASSERT_EQ(byteStream->GetCurrentPosition(&value), S_OK);
  EXPECT_EQ(value, 40u);
  BOOL end = TRUE;
  ASSERT_EQ(byteStream->IsEndOfStream(&end), S_OK);
  EXPECT_EQ(end, FALSE);
  // A position past the end is not refused.
  ASSERT_EQ(byteStream->SetCurrentPosition(500), S_OK);
  ASSERT_EQ(byteStream->IsEndOfStream(&end), S_OK);
  EXPECT_EQ(end, TRUE);

  EXPECT_EQ(byteStream->GetLength(nullptr), E_POINTER);
  EXPECT_EQ(byteStream->GetCurrentPosition(nullptr), E_POINTER);
  EXPECT_EQ(byteStream->IsEndOfStream(nullptr), E_POINTER);
}

TEST_F(MFByteStreamTest, ReadsDeliverFewerBytesNearTheEndAndNoneAtIt) {
  std::vector<BYTE> buffer(64, 0xEE);
  ULONG read = 0;
  ASSERT_EQ(byteStream->Read(buffer.data(), 10, &read), S_OK);
  EXPECT_EQ(read, 10u);
  EXPECT_EQ(buffer[9], 9);
  ASSERT_EQ(byteStream->SetCurrentPosition(90), S_OK);
  ASSERT_EQ(byteStream->Read(buffer.data(), 64, &read), S_OK);
  EXPECT_EQ(read, 10u);
  EXPECT_EQ(buffer[0], 90);
  EXPECT_EQ(buffer[9], 99);
  ASSERT_EQ(byteStream->Read(buffer.data(), 64, &read), S_OK);
  EXPECT_EQ(read, 0u);
}

TEST_F(MFByteStreamTest, AFailedStreamReadArrivesAsItsBitPatternWithSuccess) {
  stream->FailReadsWith(-1);
  BYTE buffer[8];
  ULONG read = 0;
  EXPECT_EQ(byteStream->Read(buffer, 8, &read), S_OK);
  EXPECT_EQ(read, 0xFFFFFFFFu);
}

TEST_F(MFByteStreamTest, SeekFromTheBeginningAndFromTheCurrentPosition) {
  QWORD position = 0;
  ASSERT_EQ(byteStream->Seek(msoBegin, 30, 0, &position), S_OK);
  EXPECT_EQ(position, 30u);
  ASSERT_EQ(byteStream->Seek(msoCurrent, 25, MFBYTESTREAM_SEEK_FLAG_CANCEL_PENDING_IO, &position), S_OK);
  EXPECT_EQ(position, 55u);
  ASSERT_EQ(byteStream->Seek(msoCurrent, -50, 0, &position), S_OK);
  EXPECT_EQ(position, 5u);
  EXPECT_EQ(stream->GetPosition(), 5u);
}

TEST_F(MFByteStreamTest, SeekWithAnUnknownOriginFailsButReportsThePosition) {
  ASSERT_EQ(byteStream->SetCurrentPosition(12), S_OK);
  QWORD position = 0;
  EXPECT_EQ(byteStream->Seek(static_cast<MFBYTESTREAM_SEEK_ORIGIN>(2), 40, 0, &position), E_FAIL);
  EXPECT_EQ(position, 12u);
  EXPECT_EQ(stream->GetPosition(), 12u);
  EXPECT_EQ(byteStream->Seek(msoBegin, 0, 0, nullptr), E_POINTER);
}

TEST_F(MFByteStreamTest, CloseClosesTheStreamOnceAndLetsGoOfIt) {
  EXPECT_EQ(byteStream->Close(), S_OK);
  EXPECT_EQ(stream->closeCount(), 1);
  EXPECT_EQ(stream.use_count(), 1);
  EXPECT_EQ(byteStream->Close(), S_OK);
  EXPECT_EQ(stream->closeCount(), 1);

  BYTE buffer[4];
  ULONG read = 0;
  QWORD value = 0;
  BOOL end = FALSE;
  EXPECT_EQ(byteStream->Read(buffer, 4, &read), E_POINTER);
  EXPECT_EQ(byteStream->GetLength(&value), E_POINTER);
  EXPECT_EQ(byteStream->GetCurrentPosition(&value), E_POINTER);
  EXPECT_EQ(byteStream->SetCurrentPosition(1), E_POINTER);
  EXPECT_EQ(byteStream->IsEndOfStream(&end), E_POINTER);
  EXPECT_EQ(byteStream->Seek(msoBegin, 0, 0, &value), E_POINTER);

  byteStream.Reset();
  EXPECT_EQ(stream->closeCount(), 1) << "destruction after Close closes nothing more";
}

TEST_F(MFByteStreamTest, ReleasingTheLastReferenceClosesTheStreamOnce) {
  ComPtr<IMFAsyncCallback> second;
  ASSERT_EQ(byteStream.As(&second), S_OK);
  byteStream.Reset();
  EXPECT_EQ(stream->closeCount(), 0);
  second.Reset();
  EXPECT_EQ(stream->closeCount(), 1);
  EXPECT_EQ(stream.use_count(), 1);
}

// A caller of BeginRead: its Invoke finishes the read with EndRead and
// signals the test.
class ReadCallback : public IMFAsyncCallback {
 public:
  static ComPtr<ReadCallback> Create(IMFByteStream* byteStream, bool keepResult = false) {
    return AdoptComObject(new ReadCallback(byteStream, keepResult));
  }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, __uuidof(IMFAsyncCallback))) {
      *object = static_cast<IMFAsyncCallback*>(this);
      AddRef();
      return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++refCount_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG count = --refCount_;
    if (count == 0) delete this;
    return count;
  }
  STDMETHODIMP GetParameters(DWORD*, DWORD*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(IMFAsyncResult* result) override {
    ComPtr<IUnknown> state;
    result->GetState(&state);
    state_ = state.Get();  // compared only, never used
    // Keeping the result would keep this callback alive through it, so only
    // the test that needs it asks for it.
    if (keepResult_) lastResult_ = result;
    endReadHr_ = byteStream_->EndRead(result, &bytesRead_);
    thread_ = GetCurrentThreadId();
    ++invocations_;
    SetEvent(done_);
    return S_OK;
  }

  bool WaitFor(DWORD milliseconds) { return WaitForSingleObject(done_, milliseconds) == WAIT_OBJECT_0; }
  bool Wait() { return WaitFor(10000); }
  void Rearm() { ResetEvent(done_); }

  int invocations() const { return invocations_; }
  HRESULT endReadHr() const { return endReadHr_; }
  ULONG bytesRead() const { return bytesRead_; }
  IUnknown* state() const { return state_; }
  DWORD thread() const { return thread_; }
  ComPtr<IMFAsyncResult> TakeLastResult() { return std::move(lastResult_); }
  ULONG refCount() const { return refCount_; }

 private:
  ReadCallback(IMFByteStream* byteStream, bool keepResult) : byteStream_(byteStream), keepResult_(keepResult) {
    done_ = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  }
  virtual ~ReadCallback() { CloseHandle(done_); }

  IMFByteStream* byteStream_;
  bool keepResult_;
  HANDLE done_;
  std::atomic<ULONG> refCount_{1};
  std::atomic<int> invocations_{0};
  HRESULT endReadHr_ = E_FAIL;
  ULONG bytesRead_ = 0;
  IUnknown* state_ = nullptr;
  DWORD thread_ = 0;
  ComPtr<IMFAsyncResult> lastResult_;
};

TEST_F(MFByteStreamTest, BeginReadRefusesNullBufferOrCallback) {
  auto callback = ReadCallback::Create(byteStream.Get());
  BYTE buffer[4];
  EXPECT_EQ(byteStream->BeginRead(buffer, 4, nullptr, nullptr), E_POINTER);
  EXPECT_EQ(byteStream->BeginRead(nullptr, 4, callback.Get(), nullptr), E_POINTER);
  EXPECT_EQ(callback->refCount(), 1u) << "nothing was queued";
}

TEST_F(MFByteStreamTest, AsynchronousReadRunsOnTheWorkQueueAndEndsWithEndRead) {
  auto callback = ReadCallback::Create(byteStream.Get());
  ComPtr<IMFAttributes> state;
  ASSERT_EQ(MFCreateAttributes(&state, 0), S_OK);
  ASSERT_EQ(byteStream->SetCurrentPosition(20), S_OK);
  std::vector<BYTE> buffer(30, 0xEE);

  ASSERT_EQ(byteStream->BeginRead(buffer.data(), 30, callback.Get(), state.Get()), S_OK);
  ASSERT_TRUE(callback->Wait());
  EXPECT_EQ(callback->invocations(), 1);
  EXPECT_NE(callback->thread(), GetCurrentThreadId()) << "the read ran on the caller's thread";
  EXPECT_EQ(callback->endReadHr(), S_OK);
  EXPECT_EQ(callback->bytesRead(), 30u);
  EXPECT_EQ(buffer.front(), 20);
  EXPECT_EQ(buffer.back(), 49);
  EXPECT_EQ(callback->state(), static_cast<IUnknown*>(state.Get())) << "the caller's state comes back";
  EXPECT_EQ(stream->GetPosition(), 50u);

  // The queue lets go of the work item after Invoke returns; then nothing
  // holds the caller's result, its state or its callback any more.
  for (int wait = 0; wait < 200 && (References(state.Get()) > 1 || callback->refCount() > 1); ++wait) Sleep(10);
  EXPECT_EQ(References(state.Get()), 1u);
  EXPECT_EQ(callback->refCount(), 1u);
  EXPECT_EQ(References(byteStream.Get()), 1u);
}

TEST_F(MFByteStreamTest, EndReadPassesOnAFailedStatusWithoutACount) {
  ComPtr<IMFAsyncResult> result;
  ASSERT_EQ(MFCreateAsyncResult(nullptr, nullptr, nullptr, &result), S_OK);
  result->SetStatus(MF_E_INVALID_STREAM_DATA);
  ULONG read = 1234;
  EXPECT_EQ(byteStream->EndRead(result.Get(), &read), MF_E_INVALID_STREAM_DATA);
  EXPECT_EQ(read, 1234u);
}

}  // namespace
}  // namespace windowsmediafoundation
