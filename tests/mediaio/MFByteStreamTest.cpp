#include "MFByteStream.h"

#include <gtest/gtest.h>
#include <wrl/client.h>

#include <memory>
#include <numeric>
#include <vector>

#include "TestStreams.h"

namespace windowsmediafoundation {
namespace {

using Microsoft::WRL::ComPtr;

class MFByteStreamTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::vector<std::uint8_t> bytes(100);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
    stream = std::make_shared<aurivox_test::MemoryStream>(bytes);
    ASSERT_EQ(MFByteStream::CreateInstance(stream, &byteStream), S_OK);
  }

  std::shared_ptr<aurivox_test::MemoryStream> stream;
  ComPtr<IMFByteStream> byteStream;
};

TEST_F(MFByteStreamTest, RefusesNullArgumentsAndClosesTheStreamOnce) {
  ComPtr<IMFByteStream> other;
  EXPECT_EQ(MFByteStream::CreateInstance(stream, nullptr), E_POINTER);
  EXPECT_EQ(MFByteStream::CreateInstance(nullptr, &other), E_POINTER);
  EXPECT_EQ(stream.use_count(), 2) << "only the byte stream made in SetUp keeps the stream";
  BYTE buffer[4];
  EXPECT_EQ(byteStream->BeginRead(buffer, 4, nullptr, nullptr), E_POINTER);

  // Without Close, the last reference closes the stream.
  ASSERT_EQ(MFByteStream::CreateInstance(stream, &other), S_OK);
  ComPtr<IMFAsyncCallback> second;
  ASSERT_EQ(other.As(&second), S_OK);
  other.Reset();
  EXPECT_EQ(stream->closeCount.load(), 0);
  second.Reset();
  EXPECT_EQ(stream->closeCount.load(), 1);

  // Close closes once and lets go of the stream; every call after it fails.
  EXPECT_EQ(byteStream->Close(), S_OK);
  EXPECT_EQ(byteStream->Close(), S_OK);
  EXPECT_EQ(stream->closeCount.load(), 2);
  EXPECT_EQ(stream.use_count(), 1);
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
  EXPECT_EQ(stream->closeCount.load(), 2) << "destruction after Close closes nothing more";
}

TEST_F(MFByteStreamTest, ReadsAndSeeksMoveTheStreamsPosition) {
  std::vector<BYTE> buffer(64, 0xEE);
  ULONG read = 0;
  QWORD position = 0;
  BOOL end = TRUE;
  ASSERT_EQ(byteStream->Seek(msoBegin, 60, 0, &position), S_OK);
  ASSERT_EQ(byteStream->Seek(msoCurrent, 25, MFBYTESTREAM_SEEK_FLAG_CANCEL_PENDING_IO, &position), S_OK);
  ASSERT_EQ(byteStream->Seek(msoCurrent, -5, 0, &position), S_OK);
  EXPECT_EQ(position, 80u);
  // An unknown origin fails but reports where the stream stands.
  EXPECT_EQ(byteStream->Seek(static_cast<MFBYTESTREAM_SEEK_ORIGIN>(2), 40, 0, &position), E_FAIL);
  EXPECT_EQ(position, 80u);
  ASSERT_EQ(byteStream->IsEndOfStream(&end), S_OK);
  EXPECT_EQ(end, FALSE);
  // Fewer bytes near the end.
  ASSERT_EQ(byteStream->Read(buffer.data(), 64, &read), S_OK);
  EXPECT_EQ(read, 20u);
  EXPECT_EQ(buffer[19], 99);
  ASSERT_EQ(byteStream->GetCurrentPosition(&position), S_OK);
  EXPECT_EQ(position, 100u);
  ASSERT_EQ(byteStream->IsEndOfStream(&end), S_OK);
  EXPECT_EQ(end, TRUE);
  ASSERT_EQ(byteStream->SetCurrentPosition(40), S_OK);
  EXPECT_EQ(stream->GetPosition(), 40u);
  // A failed stream read arrives as its bit pattern, with success.
  stream->readFailure = -1;
  ASSERT_EQ(byteStream->Read(buffer.data(), 8, &read), S_OK);
  EXPECT_EQ(read, 0xFFFFFFFFu);
}

}  // namespace
}  // namespace windowsmediafoundation
